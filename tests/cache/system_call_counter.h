#pragma once

/// Counts the file calls that the calling thread makes through the C library from its construction on: opening, asking,
/// reading, positioning, mapping and closing.
class CSystemCallCounter {
public:
    CSystemCallCounter();
    int Count() const;

private:
    int start;
};
