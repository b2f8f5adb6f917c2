#pragma once

#include <cstdint>
#include <vector>

#include <QByteArray>

/// Cuts a stream of bytes from another process into messages: each is a 32-bit little-endian length and that many
/// bytes.
class CMessageFrames {
public:
    static constexpr std::uint32_t kMaxMessage = 1 << 20;

    /// Takes bytes that have arrived and appends the messages that are complete now. False when the stream is none of
    /// ours, since a length exceeds kMaxMessage; nothing is taken from then on.
    bool Feed(const QByteArray& bytes, std::vector<QByteArray>& messages);
    /// A message as it travels.
    static QByteArray Framed(const QByteArray& message);

private:
    QByteArray received;
    bool foreign = false;
};
