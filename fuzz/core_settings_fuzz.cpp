#include "built_seeds.h"
#include "core/persistant_data.h"

#include <cmath>

namespace {

class CFuzzedGroup : public PersistantData {
public:
    explicit CFuzzedGroup(const char* name) : PersistantData(name) {}
    int number = 5;
    bool flag = true;
    std::string text = "default";
    GraphicsColor color;
    float real = 1.5F;
    double precise = 2.5;
    unsigned char bytes[3] = {};
    std::list<std::string> list;
    std::set<std::string> set;

    void DeclareData() override
    {
        Declare("n", number);
        Declare("b", flag);
        Declare("s", text);
        Declare("c", color);
        Declare("f", real);
        Declare("d", precise);
        Declare("r", bytes, sizeof bytes);
        Declare("l", list);
        Declare("S", set);
    }
};

CFuzzedGroup fuzzed_group("G");
CFuzzedGroup fuzzed_sort_group("CSortedPointer");

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    CAttributes map;
    for (const char* key : {"n", "b", "s", "c", "f", "d", "r"}) {
        std::string value;
        PersistantData::GetValue(std::string("G:") + key, value);
        map.Set(std::string("G:") + key, value);
    }
    map.AddString("G:l:n=2&G:l[0]=a&G:l[1]=%26b&G:S:n=1&G:S[0]=x&CChartOutline::CSortedPointer:n=1&G:d=1.5");
    AddBuiltSeeds(argc, argv, {map.ToLines(), map.ToString()});
    return 0;
}

/// The settings file, line by line, into groups with every type of variable.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CAttributes map;
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        map.AddString(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    CAttributes again;
    again.AddString(map.ToString());
    PersistantData::LoadFrom(map);
    if (!std::isfinite(fuzzed_group.real) || !std::isfinite(fuzzed_group.precise)) __builtin_trap();
    for (const auto& [key, value] : again.Pairs())
        if (map.Get(key) != value) __builtin_trap();
    return 0;
}
