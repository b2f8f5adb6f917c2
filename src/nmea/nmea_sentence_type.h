#pragma once

#include "core/listener.h"

#include <string_view>

class CNMEASentence;

/// The registry entry and the factory of one sentence class: a static object beside the class. A sentence is parsed
/// only while somebody listens for its class. Main thread only.
class CNMEASentenceType {
public:
    /// `id` is compared at index `id_offset` of the sentence text. `source` is &Listener<T>::pDatasource of the class
    /// T.
    CNMEASentenceType(int id_offset, const char* id, CDataSource** source);
    CNMEASentenceType(const CNMEASentenceType&) = delete;
    CNMEASentenceType& operator=(const CNMEASentenceType&) = delete;
    virtual ~CNMEASentenceType();
    virtual CNMEASentence* NewInstance() = 0;

    /// A pooled object, or a new one when the pool is empty.
    CNMEASentence* GetInstance();
    void FreePool();
    /// Plain prefix comparison at id_offset: a longer identifier with the same beginning matches.
    bool Matches(std::string_view text) const;
    /// The type of a sentence text, which begins at its "$" or "!"; null when none matches.
    static CNMEASentenceType* FindType(std::string_view text);

    CNMEASentenceType* next;
    const int id_offset;
    const char* const id;
    CNMEASentence* pool = nullptr;
    CDataSource** const source;

    static CNMEASentenceType* list;

private:
    /// Among the types whose identifier is not three letters behind the talker.
    [[gnu::noinline]] static CNMEASentenceType* FindOther(std::string_view text);

    const unsigned letters;           ///< the identifier as three letters behind the talker; 0: it is of another kind
    CNMEASentenceType* next_in_chain; ///< among the types that FindType meets together
};

/// The registry entry of the class T. Its identifier is nearly always the three letters behind the talker.
template <class T>
class CNMEASentenceTypeOf : public CNMEASentenceType {
public:
    explicit CNMEASentenceTypeOf(const char* identifier, int offset = 3)
        : CNMEASentenceType(offset, identifier, &Listener<T>::pDatasource)
    {}
    CNMEASentence* NewInstance() override { return new T; }
};
