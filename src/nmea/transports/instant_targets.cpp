#include "nmea/transports/instant_targets.h"

#include "core/files.h"
#include "core/folders.h"
#include "core/text.h"

#include <cstdio>

namespace {

constexpr std::int64_t kMostBytes = 16 << 20;
constexpr const char* kListPath = "/targets/getTargets";

} // namespace

void (*CInstantTargets::ReadInstantTargets)(const std::string& path) = nullptr;
int CInstantTargets::list_port = CInstantTargets::kListPort;

CInstantTargets::CInstantTargets() : web({}, false, 0)
{
    web.size_limit = kMostBytes;
}

CInstantTargets::~CInstantTargets()
{
    Cancel();
}

void CInstantTargets::Prepare()
{
    path = getTmpDirectory(stringprintf("targets%p.txt", static_cast<void*>(this)).c_str());
    std::remove(path.c_str());
}

void CInstantTargets::Cancel()
{
    path.clear();
    web.Cancel();
}

void CInstantTargets::Fetch(const std::string& host)
{
    if (path.empty()) return;
    web.SetServer(host, false, list_port);
    web.GetFile(kListPath, path, [this](int) { OnFetched(); });
}

void CInstantTargets::OnFetched()
{
    if (isRegularFile(path)) {
        if (ReadInstantTargets != nullptr) ReadInstantTargets(path);
        std::remove(path.c_str());
    }
    path.clear();
}
