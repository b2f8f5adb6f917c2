#pragma once

#include "nmea/line_assembler.h"

#include <cstddef>

/// Lines of a stream of bytes, cut as CLineAssembler cuts them: CR is left out, and a line that is too long ends where
/// the room ends, its next byte dropped.
class CLineSplitter {
public:
    enum Result { kLineOpen, kLine, kTooLong };

    /// After kLine the line stands in Text() until the next byte.
    Result Add(char byte)
    {
        if (byte == '\r') {
            had_return = true;
            return kLineOpen;
        }
        const bool ended = byte == '\n';
        if (!ended && length < CLineAssembler::kSize - 1) {
            buffer[length++] = byte;
            had_return = false;
            return kLineOpen;
        }
        return End(ended ? kLine : kTooLong);
    }
    /// To be called at the end of the stream: kLine when it does not end with a line feed.
    Result Finish() { return length == 0 ? kLineOpen : End(kLine); }
    /// NUL-terminated; may be overwritten.
    char* Text() { return buffer; }
    /// Whether the line ended with CR.
    bool EndedWithReturn() const { return had_return; }

private:
    Result End(Result result)
    {
        buffer[length] = 0;
        length = 0;
        return result;
    }

    char buffer[CLineAssembler::kSize];
    std::size_t length = 0;
    bool had_return = false;
};
