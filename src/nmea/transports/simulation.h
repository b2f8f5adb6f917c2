#pragma once

#include "core/heartbeat.h"
#include "navdata/data_gps_position.h"
#include "nmea/data_connection.h"

#include <cstddef>
#include <cstdio>
#include <string>

/// Plays a recorded file of sentences, over and over. The positions in it set the pace: one a second, whatever stands
/// between them, and 30 lines a second when there are none. Each time through becomes a track of its own.
class CNMEASimulation : public CDataConnection, protected CHeartbeat::Counter, protected Listener<CDataGPSPosition> {
public:
    class Persistant;
    static std::string filename; ///< setting

    CNMEASimulation();
    ~CNMEASimulation() override;

    /// Asks for the file; `done` gets whether it is there.
    void Configure(ZT_HWND view, const std::function<void(bool)>& done) override;
    /// Keeps the path as the setting; true when the file is there.
    static bool Setup(const std::string& path);
    bool Open() override;
    void Close() override;

    using CDataConnection::OnUpdate;
    void OnUpdate(CDataGPSPosition& position) override;

protected:
    void OnHeartbeat() override;

private:
    static constexpr std::size_t kMostCharacters = 200;
    enum ReadResult { kLine, kFileEnded, kNotYet };

    ReadResult read_line();
    void StartAgain();

    FILE* file = nullptr; ///< null: not open
    bool got_position = false;
    int bytes_left = 0; ///< to be looked at in this second
    char line[kMostCharacters + 1];
};
