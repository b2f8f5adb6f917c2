// The bytes that another process sends to the single instance: cut into messages, split, and read as paths. The way the
// bytes are cut into reads must not matter.
#include "app/command_line.h"
#include "app/message_frames.h"
#include "core/text.h"

#include <cstdlib>

namespace {

std::vector<QByteArray> MessagesIn(const QByteArray& stream, int piece)
{
    CMessageFrames frames;
    std::vector<QByteArray> messages;
    for (int at = 0; at < stream.size(); at += piece) {
        if (!frames.Feed(stream.mid(at, piece), messages)) break;
    }
    return messages;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto stream = QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size));
    const std::vector<QByteArray> messages = MessagesIn(stream, int(size) + 1);
    if (messages != MessagesIn(stream, 3)) std::abort();
    for (const QByteArray& message : messages) {
        std::vector<std::string> pieces;
        break_string_args(message.toStdString(), ' ', pieces);
        for (const std::string& piece : pieces) LocalPath(piece);
    }
    return 0;
}
