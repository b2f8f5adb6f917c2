#include "nmea/line_assembler.h"

#include "nmea/data_connection.h"
#include "nmea/nmea_sentence.h"

#include <utility>

CLineAssembler::Result CLineAssembler::Add(char byte, CDataConnection& connection)
{
    if (byte == '\r') return kLineOpen;
    if (byte == '\n') {
        buffer[position] = 0;
        const auto length = static_cast<std::size_t>(std::exchange(position, 0));
        CDataConnection::DebugLog(buffer);
        return CNMEASentence::DispatchSentence(buffer, length, &connection) != 0 ? kLineTaken : kLineRejected;
    }
    if (position == kSize - 1) {
        CDataConnection::DebugLog("Error: Data not NMEA format.");
        position = 0;
        return kOverflow;
    }
    buffer[position++] = byte;
    return kLineOpen;
}
