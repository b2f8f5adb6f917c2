#include "core/files.h"
#include "navdata/feeds/ais_target_manager.h"

#include <algorithm>
#include <vector>

#include <QXmlStreamReader>

// The list of a Vesper unit: <Watchmate> with <Target> children, whose own children hold one text each.

namespace {

constexpr std::int64_t kLargestList = 16 << 20;
constexpr qsizetype kLongestText = 64; ///< characters

struct CListedTarget {
    std::uint32_t mmsi = 0;
    std::string name;
    std::string type;
    std::string call_sign;
};

bool IsNamed(const QXmlStreamReader& xml, const char* name)
{
    return xml.name().compare(QLatin1String(name), Qt::CaseInsensitive) == 0;
}

CListedTarget ReadTarget(QXmlStreamReader& xml)
{
    CListedTarget target;
    while (xml.readNextStartElement()) {
        const bool is_mmsi = IsNamed(xml, "MMSI");
        std::string* text = IsNamed(xml, "Name")               ? &target.name
                            : IsNamed(xml, "VesselTypeString") ? &target.type
                            : IsNamed(xml, "CallSign")         ? &target.call_sign
                                                               : nullptr;
        if (!is_mmsi && text == nullptr) {
            xml.skipCurrentElement();
            continue;
        }
        const QString content = xml.readElementText(QXmlStreamReader::SkipChildElements).trimmed();
        if (is_mmsi)
            target.mmsi =
                static_cast<std::uint32_t>(std::max(0, CNMEASentence::GetWhole(content.toLatin1().constData())));
        else
            *text = content.left(kLongestText).toStdString();
    }
    return target;
}

/// Whether the reader stands on the list's element, after as much reading as that takes.
bool FindList(QXmlStreamReader& xml)
{
    while (!xml.atEnd())
        if (xml.readNext() == QXmlStreamReader::StartElement && IsNamed(xml, "Watchmate")) return true;
    return false;
}

bool ReadList(const std::string& text, std::vector<CListedTarget>& list)
{
    QXmlStreamReader xml(QByteArray::fromRawData(text.data(), static_cast<qsizetype>(text.size())));
    if (!FindList(xml)) return false;
    while (xml.readNextStartElement()) {
        if (IsNamed(xml, "Target") && list.size() < CAISTargetManager::kMostTargets)
            list.push_back(ReadTarget(xml));
        else
            xml.skipCurrentElement();
    }
    while (!xml.atEnd()) xml.readNext(); // damage behind the list counts too
    return !xml.hasError();
}

} // namespace

bool CAISTargetManager::ReadInstantTargets(const std::string& path)
{
    std::string text;
    std::vector<CListedTarget> list;
    if (!read_whole_file(path, text, kLargestList) || !ReadList(text, list)) return false;
    const double now = CHeartbeat::TheHeartbeat.Timestamp();
    for (const CListedTarget& listed : list) {
        if (listed.mmsi == 0) continue;
        CAISTarget* target = Hear(listed.mmsi, now);
        if (target != nullptr) target->TakeListed(listed.name, listed.type, listed.call_sign);
    }
    return true;
}
