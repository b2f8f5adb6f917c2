#pragma once

#include "core/serializable.h"

#include <algorithm>
#include <array>
#include <memory>
#include <vector>

/// A typed-file object with one field of every kind, a list, an array with its count, and polymorphic children.
class CEveryField : public CSerializable {
public:
    struct CPoint {
        double lat = 0.0;
        double lon = 0.0;
        friend bool operator==(const CPoint&, const CPoint&) = default;
    };
    class CItem : public CSerializable {
    public:
        int value = 0;
        std::string text;
        bool Serialize(IOStream& stream) override
        {
            Section section(stream);
            return section.declare(value) && section.declare(text);
        }
    };

    double number = 0.0;
    int integer = 0;
    bool flag = false;
    float real = 0.0F;
    std::string text;
    std::string file_name;
    GraphicsColor color;
    std::array<std::uint8_t, 6> block{};
    std::vector<CPoint> points;
    std::list<CItem*> items;                              ///< owned
    std::vector<std::unique_ptr<CSerializable>> children; ///< of types 9001 (this class)

    CEveryField() = default;
    CEveryField(const CEveryField&) = delete;
    CEveryField& operator=(const CEveryField&) = delete;
    ~CEveryField() override
    {
        for (CItem* item : items) delete item;
    }

    static constexpr int kTypeId = 9001;
    int GetTypeId() const override { return kTypeId; }
    class cType : public Type {
    public:
        cType() : Type(kTypeId) {}
        CSerializable* Create() const override { return new CEveryField; }
    };

    bool Serialize(IOStream& stream) override
    {
        Section section(stream);
        return section.declare(number) && section.declare(integer) && section.declare(flag) && section.declare(real) &&
               section.declare(text) && section.declarefilename(file_name) && section.declarecolor(color) &&
               section.declare_vblock(block.data(), static_cast<int>(block.size())) && SerializePoints(section) &&
               CSerializableDeclareStatic(section, items) && SerializeChildren(section);
    }

private:
    bool SerializePoints(Section& section)
    {
        auto count = static_cast<std::uint32_t>(points.size());
        if (!section.declare_count(count, 100'000)) return false;
        points.resize(count);
        return count == 0 || section.declare_array(points.data(), sizeof(CPoint), static_cast<int>(count));
    }
    bool SerializeChildren(Section& section)
    {
        auto count = static_cast<std::uint32_t>(children.size());
        if (!section.declare_count(count, 1000)) return false;
        if (section.writing()) {
            return std::all_of(children.begin(), children.end(),
                               [&](const auto& child) { return child->WritePolymorphic(section.stream); });
        }
        children.clear();
        for (; count > 0 && !section.atEnd(); --count)
            if (CSerializable* child = ReadPolymorphic(section.stream)) children.emplace_back(child);
        return section.stream.ok();
    }
};
