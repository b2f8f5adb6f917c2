#pragma once

class CDataConnection;

/// Makes lines of the bytes of a stream and gives each to the debug log and to CNMEASentence::DispatchSentence. A line
/// may arrive in several pieces. One of 200 characters or more is dropped with a note in the log, and its next byte
/// starts a new line. Main thread only.
class CLineAssembler {
public:
    static constexpr int kSize = 200; ///< a line has at most 199 characters

    enum Result {
        kLineOpen,     ///< the byte was taken; the line goes on
        kLineRejected, ///< a line ended and DispatchSentence returned 0
        kLineTaken,    ///< a line ended and DispatchSentence returned something else
        kOverflow      ///< the line was full: it is dropped, and so is this byte; the read should end for this time
    };

    Result Add(char byte, CDataConnection& connection);
    void Reset() { position = 0; }

private:
    char buffer[kSize];
    int position = 0;
};
