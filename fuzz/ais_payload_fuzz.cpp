#include "built_seeds.h"
#include "nmea/ais_sentences.h"
#include "tools/voyage/ais_writer.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string_view>
#include <type_traits>

#include <sanitizer/asan_interface.h>

// Each line of the input is what follows "!AIVDM," or, after a "o", "!AIVDO,": counts, numbers and payloads of all
// kinds, up to sequences that make one message.

using namespace CNEMA_AIS;

namespace {

void Require(bool holds)
{
    if (!holds) __builtin_trap();
}

template <std::size_t Room>
void CheckText(const char (&text)[Room])
{
    Require(std::memchr(text, 0, Room) != nullptr);
}

void CheckBody(const CAIS_Sentence& sentence)
{
    std::visit(
        []<class Body>(const Body& body) {
            if constexpr (std::is_base_of_v<CPlace, Body>)
                Require(std::abs(body.latitude) < 112.0 && std::abs(body.longitude) < 224.0);
            if constexpr (std::is_base_of_v<CMotion, Body>) Require(body.sog >= 0.0F && body.sog <= 100.0F);
            if constexpr (std::is_same_v<Body, CPositionReport>) Require(std::abs(body.rate_of_turn) < 720.0F);
            if constexpr (requires { body.name; }) CheckText(body.name);
            if constexpr (requires { body.call_sign; }) CheckText(body.call_sign);
            if constexpr (requires { body.destination; }) CheckText(body.destination);
        },
        sentence.body);
    Require(std::strlen(sentence.description) <= 24);
    Require(CAIS_Sentence::bit_count >= 0 && CAIS_Sentence::bit_count <= CAIS_Sentence::kMostBits);
    Require(sentence.message_type == 0 || CAIS_Sentence::bit_count >= 38);
}

/// Room for one sentence, of which so much may be touched as the sentence takes: every byte read behind its end is
/// seen, without an allocation for each.
class CSentenceRoom {
public:
    char* Begin(std::string_view head, std::string_view line)
    {
        ASAN_UNPOISON_MEMORY_REGION(room, sizeof room);
        const std::size_t length = head.copy(room, head.size()) + line.copy(room + head.size(), kMostCharacters);
        room[length] = 0;
        ASAN_POISON_MEMORY_REGION(room + length + 1, sizeof room - length - 1);
        return room;
    }

private:
    static constexpr std::size_t kMostCharacters = 240; // more than kMostBits take
    alignas(16) char room[kMostCharacters + 32];
};

template <class Class>
void Read(std::string_view head, std::string_view line)
{
    static Class sentence;
    static CSentenceRoom room;
    if (sentence.Init(room.Begin(head, line))) CheckBody(sentence);
}

void ReadLine(std::string_view line)
{
    const bool own_ship = line.starts_with('o');
    if (own_ship) line.remove_prefix(1);
    if (own_ship)
        Read<VDO>("!AIVDO,", line);
    else
        Read<VDM>("!AIVDM,", line);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    // Every type, cut behind every tenth character; one message over several sentences.
    std::vector<std::string> seeds;
    for (std::uint32_t type = 1; type <= 27; ++type) {
        CAisBits bits;
        bits.Unsigned(type, 6);
        bits.Unsigned(0, 2);
        bits.Unsigned(211234560, 30);
        bits.Unsigned(type % 2, 2);
        for (int i = 0; i < 390; i += 13) bits.Unsigned(0x1555U * type, 13);
        const std::string payload = bits.Payload();
        for (std::size_t length = 7; length <= payload.size(); length += 10)
            seeds.push_back("1,1,,A," + payload.substr(0, length) + ",0\n");
        seeds.push_back("3,1,1,A," + payload + "\no3,2,1,A," + payload + "\n3,3,1,B," + payload + ",2*00\n");
    }
    AddBuiltSeeds(argc, argv, seeds, 256);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        const std::string_view line = rest.substr(0, end);
        ReadLine(line.substr(0, line.find('\0')));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return 0;
}
