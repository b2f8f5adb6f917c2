#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

/// Reads little-endian fields from bytes that came from outside. Knows its end: a read past it gives 0 and sets
/// Failed(), which is asked once at the end.
class CByteCursor {
public:
    explicit CByteCursor(std::span<const std::uint8_t> bytes) : rest(bytes) {}

    std::uint8_t U8() { return Take<std::uint8_t>(); }
    std::uint16_t U16() { return Take<std::uint16_t>(); }
    std::uint32_t U32() { return Take<std::uint32_t>(); }
    std::int32_t I32() { return Take<std::int32_t>(); }
    std::uint64_t U64() { return Take<std::uint64_t>(); }
    double F64() { return Take<double>(); }
    /// The next `count` bytes; an empty span and Failed() when fewer are left.
    std::span<const std::uint8_t> Bytes(std::size_t count)
    {
        if (rest.size() < count) {
            Fail();
            return {};
        }
        const auto taken = rest.first(count);
        rest = rest.subspan(count);
        return taken;
    }
    void Skip(std::size_t count) { Bytes(count); }
    std::size_t Left() const { return rest.size(); }
    bool Failed() const { return failed; }

private:
    template <class T>
    T Take()
    {
        T value{};
        const auto bytes = Bytes(sizeof(T));
        if (!bytes.empty()) std::memcpy(&value, bytes.data(), sizeof(T));
        return value;
    }
    void Fail()
    {
        failed = true;
        rest = {};
    }

    std::span<const std::uint8_t> rest;
    bool failed = false;
};

static_assert(std::endian::native == std::endian::little, "file fields are read as they stand in memory");
