#include "built_seeds.h"
#include "core/tree_outline_node.h"
#include "support/every_field.h"

namespace {
const CEveryField::cType fuzzed_type;
}

/// The section layer: any bytes into an object with every kind of field, or into a tree. What was read whole must be
/// written and read back as the same.
template <class T>
static void ReadTwice(std::string_view bytes)
{
    T first;
    if (!first.ReadMemory(bytes, 0)) return;
    const std::string written = first.WriteMemory(0);
    T second;
    if (!second.ReadMemory(written, 0) || second.WriteMemory(0) != written) __builtin_trap();
}

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    CEveryField object;
    object.text = "text";
    object.points.resize(2);
    object.items = {new CEveryField::CItem, new CEveryField::CItem};
    object.children.push_back(std::make_unique<CEveryField>());
    TreeOutlineNode tree("root");
    tree.children = {new TreeOutlineNode("a"), new TreeOutlineNode("b")};
    AddBuiltSeeds(argc, argv, {"0" + object.WriteMemory(0).substr(4), "1" + tree.WriteMemory(0).substr(4)});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0) return 0;
    // The signature is given, so that no run is lost on it.
    thread_local std::string bytes;
    const std::uint32_t signature = CSerializable::kSignature;
    bytes.assign(reinterpret_cast<const char*>(&signature), sizeof signature);
    bytes.append(reinterpret_cast<const char*>(data + 1), size - 1);
    if (data[0] % 2 == 0)
        ReadTwice<CEveryField>(bytes);
    else
        ReadTwice<TreeOutlineNode>(bytes);
    return 0;
}
