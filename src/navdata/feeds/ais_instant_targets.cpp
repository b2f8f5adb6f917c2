#include "core/files.h"
#include "core/xml_document.h"
#include "navdata/feeds/ais_target_manager.h"

#include <algorithm>

// The list of a Vesper unit: <Watchmate> with <Target> children, whose own children hold one text each.

namespace {

constexpr std::int64_t kLargestList = 16 << 20;
constexpr std::size_t kLongestText = 64; ///< bytes

CXMLnode FindList(const CXMLdocument& document)
{
    CXMLnode node = document.Root();
    while (node && !node.Is("Watchmate")) node = node.NextInDocument();
    return node;
}

std::uint32_t MmsiOf(CXMLnode listed)
{
    std::string digits;
    listed.FindChildGetContents("MMSI", digits);
    return static_cast<std::uint32_t>(std::max(0, CNMEASentence::GetWhole(digits.c_str())));
}

std::string TextOf(CXMLnode listed, const char* name)
{
    std::string text;
    listed.FindChildGetContents(name, text);
    if (text.size() > kLongestText) text.resize(kLongestText);
    return text;
}

} // namespace

bool CAISTargetManager::ReadInstantTargets(const std::string& path)
{
    std::string text;
    CXMLdocument document;
    if (!read_whole_file(path, text, kLargestList) || !document.ParseText(std::move(text))) return false;
    const CXMLnode list = FindList(document);
    if (!list) return false;
    const double now = CHeartbeat::TheHeartbeat.Timestamp();
    for (CXMLnode listed = list.FindChild("Target"); listed; listed = listed.FindNext("Target")) {
        const std::uint32_t mmsi = MmsiOf(listed);
        CAISTarget* target = mmsi != 0 ? Hear(mmsi, now) : nullptr;
        if (target == nullptr) continue;
        target->TakeListed(TextOf(listed, "Name"), TextOf(listed, "VesselTypeString"), TextOf(listed, "CallSign"));
    }
    return true;
}
