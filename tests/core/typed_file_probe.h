#pragma once

#include "core/serializable.h"
#include "support/every_field.h"

#include <functional>

using CStream = CSerializable::IOStream;
using CSection = CSerializable::Section;

/// An object whose Serialize is the test's own.
class CProbe : public CSerializable {
public:
    explicit CProbe(std::function<bool(IOStream&)> body) : serialize(std::move(body)) {}
    std::function<bool(IOStream&)> serialize;
    bool skipped = false;
    bool damaged = false;
    bool Serialize(IOStream& stream) override
    {
        const bool done = serialize(stream);
        skipped = stream.skipped;
        damaged = stream.damaged;
        return done;
    }
};

template <class T>
inline std::string Bytes(T value)
{
    return {reinterpret_cast<const char*>(&value), sizeof value};
}

/// A section with a length of the test's choice, or the true one.
inline std::string Record(const std::string& content, std::uint32_t length = 0)
{
    return "\xBE" + Bytes(length != 0 ? length : static_cast<std::uint32_t>(content.size() + 5)) + content;
}

inline std::string Signed(const std::string& records)
{
    return Bytes(CSerializable::kSignature) + records;
}

inline void Fill(CEveryField& object, int depth)
{
    object.number = -1.5;
    object.integer = -7;
    object.flag = true;
    object.real = 2.5F;
    object.text = std::string("text\0with a zero", 16);
    object.color = GraphicsColor(1.0F, 0.5F, 0.25F, 0.0F);
    object.block = {1, 2, 3, 4, 5, 6};
    object.points = {{1.0, 2.0}, {3.0, 4.0}};
    for (int i = 0; i < 3; ++i) {
        object.items.push_back(new CEveryField::CItem);
        object.items.back()->value = i;
    }
    if (depth == 0) return;
    auto child = std::make_unique<CEveryField>();
    Fill(*child, depth - 1);
    object.children.push_back(std::move(child));
}

constexpr int kMagic = 0x12345678;
