#include "nmea/nmea_sentence_type.h"

#include "nmea/nmea_sentence.h"

#include <cstdint>
#include <cstring>

namespace {

constexpr int kLettersAt = 3;
constexpr std::size_t kLetters = 3;
constexpr std::size_t kChains = 128;

// Filled while static objects are still being constructed: both need no constructor of their own.
constinit CNMEASentenceType* chains[kChains] = {}; ///< by the hash of the three letters
constinit CNMEASentenceType* others = nullptr;     ///< types with another kind of identifier

std::size_t HashOf(const char* letters)
{
    const auto code = [letters](int i) { return static_cast<std::uint32_t>(static_cast<unsigned char>(letters[i])); };
    return ((code(0) * 31 + code(1)) * 31 + code(2)) % kChains;
}

/// Whether the text goes on far enough to hold three letters behind the talker.
bool HasLetters(const char* text)
{
    return std::memchr(text, 0, kLettersAt + kLetters) == nullptr;
}

CNMEASentenceType* FirstMatch(CNMEASentenceType* type, CNMEASentenceType* CNMEASentenceType::*link, const char* text)
{
    while (type != nullptr && !type->Matches(text)) type = type->*link;
    return type;
}

/// Takes the type out of the list that is linked by `link`.
void Unlink(CNMEASentenceType** head, CNMEASentenceType* CNMEASentenceType::*link, CNMEASentenceType* type)
{
    while (*head != type) head = &((*head)->*link);
    *head = type->*link;
}

} // namespace

constinit CNMEASentenceType* CNMEASentenceType::list = nullptr;

CNMEASentenceType::CNMEASentenceType(int offset, const char* identifier, CDataSource** listeners)
    : next(list), id_offset(offset), id(identifier), source(listeners)
{
    list = this;
    next_in_chain = *Chain();
    *Chain() = this;
}

CNMEASentenceType::~CNMEASentenceType()
{
    FreePool();
    Unlink(&list, &CNMEASentenceType::next, this);
    Unlink(Chain(), &CNMEASentenceType::next_in_chain, this);
}

CNMEASentenceType** CNMEASentenceType::Chain() const
{
    return id_offset == kLettersAt && std::strlen(id) == kLetters ? &chains[HashOf(id)] : &others;
}

CNMEASentence* CNMEASentenceType::GetInstance()
{
    CNMEASentence* sentence = pool;
    if (sentence == nullptr) {
        sentence = NewInstance();
        sentence->type = this;
    } else {
        pool = sentence->pool_next;
    }
    sentence->pool_next = nullptr;
    return sentence;
}

void CNMEASentenceType::FreePool()
{
    while (pool != nullptr) {
        CNMEASentence* sentence = pool;
        pool = sentence->pool_next;
        delete sentence;
    }
}

bool CNMEASentenceType::Matches(const char* text) const
{
    for (int i = 0; i < id_offset; ++i)
        if (text[i] == 0) return *id == 0;
    text += id_offset;
    const char* wanted = id;
    while (*wanted != 0 && *wanted == *text) {
        ++wanted;
        ++text;
    }
    return *wanted == 0;
}

CNMEASentenceType* CNMEASentenceType::FindType(const char* text)
{
    if (HasLetters(text)) {
        CNMEASentenceType* type = chains[HashOf(text + kLettersAt)];
        type = FirstMatch(type, &CNMEASentenceType::next_in_chain, text);
        if (type != nullptr) return type;
    }
    return FirstMatch(others, &CNMEASentenceType::next_in_chain, text);
}
