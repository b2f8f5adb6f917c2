#include "tools/basemap/world_data.h"

#include <cstdlib>
#include <cstring>

#include <zlib.h>

namespace {

bool Unpack(const std::string& path, std::string& text)
{
    gzFile file = gzopen(path.c_str(), "rb");
    if (file == nullptr) return false;
    char buffer[65536];
    int got = 0;
    while ((got = gzread(file, buffer, sizeof buffer)) > 0) text.append(buffer, static_cast<std::size_t>(got));
    return gzclose(file) == Z_OK && got == 0;
}

/// The words of a vector file, one after the other.
class CWords {
public:
    explicit CWords(const std::string& text) : at(text.c_str())
    {
        while (*at == '#') SkipLine();
    }

    bool Take(const char* word)
    {
        SkipBlanks();
        const std::size_t length = std::strlen(word);
        if (std::strncmp(at, word, length) != 0 || static_cast<unsigned char>(at[length]) > ' ') return false;
        at += length;
        return true;
    }
    std::string Word()
    {
        SkipBlanks();
        const char* start = at;
        while (static_cast<unsigned char>(*at) > ' ') ++at;
        return {start, at};
    }
    long Integer() { return std::strtol(at, const_cast<char**>(&at), 10); }
    double Number() { return std::strtod(at, const_cast<char**>(&at)); }
    bool AtEnd()
    {
        SkipBlanks();
        return *at == '\0';
    }

private:
    void SkipBlanks()
    {
        while (*at == ' ' || *at == '\n') ++at;
    }
    void SkipLine()
    {
        while (*at != '\0' && *at++ != '\n') {
        }
    }

    const char* at;
};

bool ReadPart(CWords& words, double unit, CWorldShape& shape)
{
    if (!words.Take("part")) return false;
    const long count = words.Integer();
    if (count < 2) return false;
    std::vector<DblPoint>& points = shape.parts.emplace_back();
    long x = 0;
    long y = 0;
    for (long i = 0; i < count && !words.AtEnd(); ++i) {
        x += words.Integer();
        y += words.Integer();
        points.push_back({static_cast<double>(x) * unit, static_cast<double>(y) * unit});
        shape.bounds.add(points.back().y, points.back().x);
    }
    return points.size() == static_cast<std::size_t>(count);
}

bool ReadShape(CWords& words, double unit, CWorldShape& shape)
{
    if (!words.Take("shape")) return false;
    shape.min_zoom = static_cast<float>(words.Number());
    shape.antarctic = words.Word() == "antarctic";
    const long parts = words.Integer();
    for (long i = 0; i < parts; ++i) {
        if (!ReadPart(words, unit, shape)) return false;
    }
    return true;
}

std::vector<CWorldShape>* LayerNamed(CWorldData& data, const std::string& name)
{
    if (name == "land") return &data.land;
    if (name == "lakes") return &data.lakes;
    if (name == "ice") return &data.ice;
    if (name == "rivers") return &data.rivers;
    if (name == "borders") return &data.borders;
    return nullptr;
}

bool ReadLayer(CWords& words, double unit, CWorldData& data)
{
    std::vector<CWorldShape>* layer = LayerNamed(data, words.Word());
    if (layer == nullptr) return false;
    words.Word(); // area or line, which the layer's name settles
    const long shapes = words.Integer();
    for (long i = 0; i < shapes; ++i) {
        if (!ReadShape(words, unit, layer->emplace_back())) return false;
    }
    return true;
}

} // namespace

bool ReadWorldData(const std::string& path, CWorldData& out, std::string& error)
{
    std::string text;
    error = "cannot unpack " + path;
    if (!Unpack(path, text)) return false;
    CWords words(text);
    error = "damaged: " + path;
    if (!words.Take("world-vector") || words.Integer() != 1 || !words.Take("unit")) return false;
    const double unit = words.Number();
    while (!words.Take("end")) {
        if (!words.Take("layer") || !ReadLayer(words, unit, out)) return false;
    }
    error.clear();
    return true;
}
