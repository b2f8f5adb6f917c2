#include "app/message_frames.h"

#include <QtEndian>

namespace {

constexpr int kLengthSize = 4;

} // namespace

bool CMessageFrames::Feed(const QByteArray& bytes, std::vector<QByteArray>& messages)
{
    if (foreign) return false;
    received += bytes;
    qsizetype at = 0;
    while (received.size() - at >= kLengthSize) {
        const auto length = qFromLittleEndian<std::uint32_t>(received.constData() + at);
        foreign = length > kMaxMessage;
        if (foreign || received.size() - at - kLengthSize < qsizetype(length)) break;
        messages.push_back(received.mid(at + kLengthSize, qsizetype(length)));
        at += kLengthSize + qsizetype(length);
    }
    received.remove(0, at);
    return !foreign;
}

QByteArray CMessageFrames::Framed(const QByteArray& message)
{
    QByteArray length(kLengthSize, Qt::Uninitialized);
    qToLittleEndian(std::uint32_t(message.size()), length.data());
    return length + message;
}
