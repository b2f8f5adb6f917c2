#include "nmea/line_assembler.h"

#include "nmea/data_connection.h"
#include "nmea/nmea_sentence.h"

CLineAssembler::Result CLineAssembler::Add(char byte, CDataConnection& connection)
{
    if (byte == '\r') return kLineOpen;
    if (byte == '\n') {
        buffer[position] = 0;
        position = 0;
        CDataConnection::DebugLog(buffer);
        return CNMEASentence::DispatchSentence(buffer, &connection) != 0 ? kLineTaken : kLineRejected;
    }
    if (position == kSize - 1) {
        CDataConnection::DebugLog("Error: Data not NMEA format.");
        position = 0;
        return kOverflow;
    }
    buffer[position++] = byte;
    return kLineOpen;
}
