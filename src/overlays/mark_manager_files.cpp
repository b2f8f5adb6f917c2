#include "core/folders.h"
#include "overlays/mark_manager.h"

#include <memory>

namespace {

constexpr const char* kMarksFile = "marks.zttf";
constexpr const char* kRoutesFile = "routes.zttf";
constexpr int kMarksMagic = static_cast<int>(0xCA2EAF82U);
constexpr int kRoutesMagic = static_cast<int>(0xDA2EAF93U);

/// Files a template behind the list. It is read beside the one in use, which stays as it is when the file has none or a
/// damaged one. `take` gets what was read whole.
template <class T, class Take>
bool SerializeTemplate(CSerializable::Section& section, T& in_use, Take take)
{
    if (section.writing()) return in_use.Serialize(section.stream);
    if (section.atEnd()) return section.declare_fblock(nullptr, 0); // false when the file is cut off here
    T read;
    if (!read.Serialize(section.stream)) return false;
    take(in_use, read);
    return true;
}

void TakeTemplate(COverlayMark& in_use, const COverlayMark& read)
{
    in_use.TakeLook(read);
    in_use.name = read.name;
    in_use.comment = read.comment;
    in_use.category = read.category;
    in_use.anchor_radius = read.anchor_radius;
    in_use.alarm_radius = read.alarm_radius;
}

void TakeTemplate(COverlayRoute& in_use, const COverlayRoute& read)
{
    static_cast<CLineAppearance&>(in_use) = read;
    in_use.name = read.name;
    in_use.comment = read.comment;
    in_use.category = read.category;
    in_use.do_not_sync = read.do_not_sync;
    if (!read.waypoints.empty() && !in_use.waypoints.empty())
        TakeTemplate(*in_use.waypoints.front(), *read.waypoints.front());
}

} // namespace

/// The manager does not hear of the objects while this lives: their reading is no change.
class CMarkManager::CListenerPause {
public:
    explicit CListenerPause(CMarkManager& paused) : manager(paused), listened(Channel().IsConnected())
    {
        Channel().Disconnect();
    }
    ~CListenerPause()
    {
        if (listened) Channel().Connect();
    }
    CListenerPause(const CListenerPause&) = delete;
    CListenerPause& operator=(const CListenerPause&) = delete;

private:
    Listener<COverlayObject>& Channel() { return manager; }

    CMarkManager& manager;
    bool listened;
};

bool CMarkManager::CMarksFile::Serialize(IOStream& stream)
{
    Section section(stream);
    return CSerializableDeclareStatic(section, manager.marks) &&
           SerializeTemplate(section, manager.default_mark,
                             [](COverlayMark& in_use, const COverlayMark& read) { TakeTemplate(in_use, read); });
}

bool CMarkManager::CRoutesFile::Serialize(IOStream& stream)
{
    Section section(stream);
    return CSerializableDeclareStatic(section, manager.routes) &&
           SerializeTemplate(section, manager.default_route,
                             [](COverlayRoute& in_use, const COverlayRoute& read) { TakeTemplate(in_use, read); });
}

bool CMarkManager::LoadFromFile()
{
    bool whole = false;
    {
        const CListenerPause pause(*this);
        DropRouteBeingEdited();
        ages = {};
        const bool whole_marks = marks_file.ReadFile(getAppDirectory(kMarksFile), {}, kMarksMagic);
        const bool whole_routes = routes_file.ReadFile(getAppDirectory(kRoutesFile), {}, kRoutesMagic);
        whole = whole_marks && whole_routes;
        FilesRead();
    }
    Listener<COverlayObject>::Connect();
    Listener<CDataGPSPosition>::Connect();
    return whole;
}

void CMarkManager::FilesRead()
{
    const CListenerPause pause(*this);
    for (COverlayMark* mark : marks)
        if (!mark->deleted) mark->Dispatch(COverlayObject::kChanged);
    for (COverlayRoute* route : routes)
        if (!route->deleted) route->Dispatch(COverlayObject::kChanged);
    RestoreNavigation();
    marks_modified = false;
    routes_modified = false;
}

/// Takes up the go-to or the route that was followed. What a file says comes into force only here, when all objects are
/// there to stay; a route goes before a mark.
void CMarkManager::RestoreNavigation()
{
    COverlayMark* target = nullptr;
    COverlayRoute* followed = nullptr;
    const auto take = [&target](COverlayMark& mark) {
        if (mark.goto_target && !mark.deleted) target = &mark;
        mark.goto_target = false;
    };
    for (COverlayMark* mark : marks) take(*mark);
    for (COverlayRoute* route : routes) {
        for (COverlayMark* waypoint : route->waypoints) take(*waypoint);
        if (route->following && !route->deleted) followed = route;
        route->following = false;
    }
    if (followed != nullptr) {
        SetFollowRoute(followed);
    } else if (target != nullptr) {
        SetGoto(target);
    } else {
        CancelNavigation();
    }
}

template <class T>
void CMarkManager::Prune(std::list<T*>& objects)
{
    const CListenerPause pause(*this);
    for (auto at = objects.begin(); at != objects.end();) {
        const T* const object = *at;
        if (!ages.IsSpent(*object)) {
            ++at;
            continue;
        }
        at = objects.erase(at);
        delete object;
    }
}

bool CMarkManager::SaveIfNeeded()
{
    if (marks_modified) {
        Prune(marks);
        marks_modified = !marks_file.WriteFile(getAppDirectory(kMarksFile), {}, kMarksMagic);
    }
    if (routes_modified) {
        Prune(routes);
        routes_modified = !routes_file.WriteFile(getAppDirectory(kRoutesFile), {}, kRoutesMagic);
    }
    return !marks_modified && !routes_modified;
}
