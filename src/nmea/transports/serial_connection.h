#pragma once

#include "core/heartbeat.h"
#include "nmea/data_connection.h"
#include "nmea/line_assembler.h"

#include <string>

#include <QSerialPort>

/// Sentences from a serial port, read at every tick. A port that cannot be written to is opened for reading alone; one
/// that is unplugged is closed, and the status tells so. `closed` is cleared by Open even when it fails: resuming the
/// application then makes the connection anew.
class CSerialConnection : public CDataConnection, protected CHeartbeat::Counter {
public:
    class Persistant;
    static std::string last_device; ///< setting: path of the device
    static int last_baud;           ///< setting; 0: never set up

    CSerialConnection();
    ~CSerialConnection() override;

    /// Keeps both as the settings and uses them; the device's file name becomes the label.
    static void Remember(const std::string& device_path, int baud_rate);
    bool Setup(const std::string& device_path, int baud_rate);
    void Configure(ZT_HWND view, const std::function<void(bool)>& done) override;
    bool Open() override;
    void Close() override;
    /// True when at least one byte went out.
    bool Output(const char* text) override;

    using CDataConnection::OnUpdate;

    const std::string& device() const { return m_device; }
    int baud() const { return m_baud; }

protected:
    void OnHeartbeat() override;

private:
    static constexpr int kReadSize = 4000;

    bool OpenPort();
    bool RefillBuffer();
    void ReadLines();
    void OnPortError(QSerialPort::SerialPortError error);
    void LosePort();

    QSerialPort port;
    std::string m_device;
    int m_baud = 0;
    bool is_open = false;
    CLineAssembler assembler;
    char read_buffer[kReadSize];
    int read_position = 0;
    int read_end = 0;
};
