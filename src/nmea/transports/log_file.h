#pragma once

#include "nmea/data_connection.h"

#include <cstdio>
#include <string>

/// A connection that only takes: what its output filter allows is written to a file. It notes the end of the program
/// there. Nothing of the menu makes one.
class CNMEALogfile : public CDataConnection, protected Listener<ShutDown> {
public:
    CNMEALogfile();
    ~CNMEALogfile() override;

    /// Stores the path; false when it cannot be written. An existing file is emptied.
    bool Setup(const std::string& log_path);
    /// Empties the file.
    bool Open() override;
    void Close() override;
    bool Output(const char* text) override;

    using CDataConnection::OnUpdate;
    void OnUpdate(ShutDown& data) override;

private:
    std::string path;
    FILE* file = nullptr; ///< null: not open
};
