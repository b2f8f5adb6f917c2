#pragma once

#include <map>
#include <string>
#include <string_view>

/// A map of texts, sorted by key bytes: the settings file, query strings, what is exchanged with the server. A key or
/// value without characters counts as absent when the map is written or merged. Numbers do not depend on the locale.
class CAttributes {
public:
    bool empty() const { return pairs.empty(); }
    std::size_t size() const { return pairs.size(); }
    const std::map<std::string, std::string>& Pairs() const { return pairs; }

    void Set(const std::string& key, std::string value) { pairs[key] = std::move(value); }
    void Clear(const std::string& key) { pairs.erase(key); }
    /// True when present and not empty.
    bool Has(const std::string& key) const;
    std::string Get(const std::string& key) const { return GetStr(key, {}); }
    std::string GetStr(const std::string& key, const std::string& fallback) const;
    /// False clears `out`.
    bool GetIfPresent(const std::string& key, std::string& out) const;

    /// Decimal, 0x hexadecimal or leading-0 octal; the fallback when absent or no number.
    int GetInt(const std::string& key, int fallback) const;
    /// As "0x%x".
    void SetInt(const std::string& key, int value);
    /// As a decimal number.
    void SetIntD(const std::string& key, int value);
    /// Whether the value begins with "T", "t" or "1".
    bool GetBool(const std::string& key) const;
    /// The fallback when absent, no number or not finite.
    double GetDecimal(const std::string& key, double fallback) const;
    /// As "%#.10g"; a number that is not finite is not stored.
    void SetDecimal(const std::string& key, double value);

    /// The key is followed by "[n]".
    int GetNumberedInt(const std::string& key, int n) const;
    void SetNumberedInt(const std::string& key, int n, int value);
    std::string GetNumbered(const std::string& key, int n) const;
    void SetNumbered(const std::string& key, int n, const std::string& value);
    static std::string NumberedKey(const std::string& key, int n);

    /// Raw bytes as pairs of hexadecimal digits. GetData gives the number of bytes stored into the buffer, at most
    /// `capacity`; it does not check the digits, and a last single one makes a byte of its own.
    int GetData(const std::string& key, void* buffer, int capacity) const;
    void SetData(const std::string& key, const void* data, int size);

    /// Copies all pairs that are not empty.
    void Add(const CAttributes& other);
    void TrimAllSpaces();

    /// Adds the pairs of "key=value&key=value", values escaped; spaces around keys and values do not count.
    void AddString(std::string_view text);
    /// Adds every line of a settings file, leaving out blank ones and comments. False when there is no regular file to
    /// be read, and then nothing has changed. `damaged` tells whether bytes stand in it that no settings file has.
    bool AddFile(const std::string& path, bool* damaged = nullptr);
    /// Pairs joined by "&", values escaped.
    std::string ToString() const;
    /// Pairs joined by line ends, for display; nothing is escaped.
    std::string ToText() const;
    /// One pair a line, values escaped: what AddFile reads.
    std::string ToLines() const;
    /// Replaces the file safely with ToLines().
    bool ToFile(const std::string& path) const;

private:
    std::map<std::string, std::string> pairs;
};

/// ASCII letters, digits and "$-_.!*'()" stay, a space becomes "+", any other byte "%" and two hexadecimal digits.
std::string escape_string(std::string_view text);
/// The reverse. A "%" without two hexadecimal digits behind it stays, with those two characters; within the last two
/// positions it ends the text.
std::string unescape_string(std::string_view text);
/// Unescapes until the text no longer changes.
std::string unescape_multiple(std::string text);
