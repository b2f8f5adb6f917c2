#include "chart/rastelle3.h"

#include "core/file_names.h"
#include "core/files.h"

#include <cstring>

int CRastelle3::ReadBlock(int, int, int level, unsigned char* out, ThreadDataForRead*)
{
    std::memset(out, 0, static_cast<std::size_t>(kTilePixels >> level));
    return 1;
}

bool CRastelle3::OnOpen()
{
    return false;
}

std::string CRastelle3::ChunkPath(const std::string& chart_path)
{
    for (const char* ending : {"RL3", "rl3"}) {
        std::string path = filename_with_extension(chart_path, ending);
        if (isRegularFile(path) || isDirectory(path)) return path;
    }
    return {};
}
