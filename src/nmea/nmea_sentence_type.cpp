#include "nmea/nmea_sentence_type.h"

#include "nmea/nmea_sentence.h"

#include <cstdint>
#include <cstring>

namespace {

constexpr int kLettersAt = 3;
constexpr std::size_t kLetters = 3;
constexpr unsigned kChainBits = 7;

// Filled while static objects are still being constructed: both need no constructor of their own.
constinit CNMEASentenceType* chains[1U << kChainBits] = {}; ///< by the hash of the three letters
constinit CNMEASentenceType* others = nullptr;              ///< types with another kind of identifier

/// Three characters as one number.
unsigned LettersAt(const char* text)
{
    std::uint16_t first = 0;
    std::memcpy(&first, text, sizeof first);
    return first | unsigned{static_cast<unsigned char>(text[2])} << 16;
}

/// The identifier, when it is the three characters behind a talker; else 0.
unsigned LettersOfIdentifier(int offset, const char* id)
{
    return offset == kLettersAt && std::strlen(id) == kLetters ? LettersAt(id) : 0;
}

/// Where the list of the types with such an identifier begins.
CNMEASentenceType** ChainOf(unsigned letters)
{
    constexpr unsigned kSpread = 0x9E3779B1; // the golden ratio, for Fibonacci hashing
    return letters == 0 ? &others : &chains[letters * kSpread >> (32 - kChainBits)];
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
    : next(list)
    , id_offset(offset)
    , id(identifier)
    , source(listeners)
    , letters(LettersOfIdentifier(offset, identifier))
    , next_in_chain(*ChainOf(letters))
{
    list = this;
    *ChainOf(letters) = this;
}

CNMEASentenceType::~CNMEASentenceType()
{
    FreePool();
    Unlink(&list, &CNMEASentenceType::next, this);
    Unlink(ChainOf(letters), &CNMEASentenceType::next_in_chain, this);
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

bool CNMEASentenceType::Matches(std::string_view text) const
{
    const auto offset = static_cast<std::size_t>(id_offset);
    return text.size() < offset ? *id == 0 : text.substr(offset).starts_with(id);
}

CNMEASentenceType* CNMEASentenceType::FindOther(std::string_view text)
{
    CNMEASentenceType* type = others;
    while (type != nullptr && !type->Matches(text)) type = type->next_in_chain;
    return type;
}

CNMEASentenceType* CNMEASentenceType::FindType(std::string_view text)
{
    if (text.size() >= kLettersAt + kLetters) {
        const unsigned wanted = LettersAt(text.data() + kLettersAt);
        CNMEASentenceType* type = *ChainOf(wanted);
        while (type != nullptr && type->letters != wanted) type = type->next_in_chain;
        if (type != nullptr) return type;
    }
    return FindOther(text);
}
