#pragma once

#include "nmea/data_connection.h"

/// The user wants no data.
class CNoConnection : public CDataConnection {
public:
    bool Open() override;
    void Close() override {}
};
