#pragma once

#include "core/bounds.h"
#include "core/serializable.h"
#include "core/simple_grid.h"

#include <cstdint>
#include <string>

/// What can be named, filed under a category and synchronised with the server: marks, routes, tracks. Main thread only.
class CSyncable : public CSerializable {
public:
    double modified; ///< last change, seconds since 1970 on the heartbeat's clock
    double created;  ///< seconds since 1970
    std::string name;
    std::string comment;  ///< the description
    std::string category; ///< folder path, "/"-separated
    bool visible = true;  ///< a local matter, not synchronised
    bool locked = false;
    bool do_not_sync = false;    ///< never sent to the server
    std::uint64_t object_id = 0; ///< the identity across devices; 0 until first asked for
    bool deleted = false;        ///< a tombstone

    /// Both times are now.
    CSyncable();

    /// Reads or writes what the server exchanges when it changed after `since` (seconds since 1970).
    virtual bool SyncObject(IOStream& stream, double since) = 0;
    /// Grows the bounds by the object's positions.
    virtual void getLonLatBounds(CBounds& bounds) const = 0;
    /// The second line of a list entry, for a reader at the grid's origin.
    virtual std::string getSubText(const CSimpleGrid& grid) const = 0;

    std::uint64_t GetObjectID();
    /// "ztid:" and the id in upper-case hexadecimal.
    std::string GetObjectIDstr();
    void SetObjectID(std::uint64_t id) { object_id = id; }
    /// The id behind the first "ztid:" of a text; 0 when there is none.
    static std::uint64_t ParseObjectID(const std::string& text);

    bool NeedsSyncToCloud(double since) const { return !do_not_sync && modified > since; }
    void SetModifiedNow();
    void DeleteSyncItem();
    void UndeleteSyncItem();
    /// These three do nothing on a deleted object; showing and hiding is not a modification.
    void setVisible(bool show);
    void setLocked(bool lock);
    void setDoNotSync(bool keep_here);
    void setCategory(const std::string& path);

    /// Whether the text, of any case, stands in the name or the comment.
    bool matches_search(const std::string& text) const;
    bool sameSyncableData(const CSyncable& other) const;
    /// Follows a renamed category: the prefix `old_path` becomes `new_path`.
    void changeCategoryPath(const std::string& new_path, const std::string& old_path);

protected:
    /// Files the sync block, one section. False when the stream failed.
    bool SerializeSyncable(IOStream& stream);
};
