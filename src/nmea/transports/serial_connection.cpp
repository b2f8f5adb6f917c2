#include "nmea/transports/serial_connection.h"

#include "core/file_names.h"
#include "core/message_sink.h"
#include "core/persistant_data.h"
#include "core/text.h"
#include "nmea/transports/serial_setup.h"

#include <algorithm>
#include <cstring>

std::string CSerialConnection::last_device;
int CSerialConnection::last_baud = 0;

class CSerialConnection::Persistant : public PersistantData {
public:
    Persistant() : PersistantData("CSerialConnection") {}

    void DeclareData() override
    {
        Declare("device", last_device);
        Declare("baud", last_baud);
    }
};

namespace {

constexpr int kPortBufferSize = 10000;
constexpr int kLinesPerTick = 100; ///< what a tick takes of sentences that somebody listens for

CSerialConnection::Persistant serial_persistor;

} // namespace

CSerialConnection::CSerialConnection() : Counter(1)
{
    debuggable = true;
    Setup(last_device, last_baud);
    // Queued: the port must not be closed while it tells of its error. Until it is closed it tells without end.
    QObject::connect(
        &port, &QSerialPort::errorOccurred, &port, [this](QSerialPort::SerialPortError error) { OnPortError(error); },
        Qt::QueuedConnection);
}

CSerialConnection::~CSerialConnection() = default;

void CSerialConnection::Remember(const std::string& device_path, int baud_rate)
{
    last_device = device_path;
    last_baud = baud_rate;
    serial_persistor.SetModified();
    PersistantData::SaveAll();
}

bool CSerialConnection::Setup(const std::string& device_path, int baud_rate)
{
    m_device = device_path;
    label = filename(device_path);
    m_baud = baud_rate;
    return true;
}

void CSerialConnection::Configure(ZT_HWND view, const std::function<void(bool)>& done)
{
    CDlg_serial_setup::show_dialog(view, this, done);
}

bool CSerialConnection::Open()
{
    closed = false;
    assembler.Reset();
    read_position = read_end = 0;
    is_open = OpenPort();
    if (is_open) port.clear(QSerialPort::AllDirections);
    return is_open;
}

bool CSerialConnection::OpenPort()
{
    if (m_baud > 0) port.setBaudRate(m_baud);
    port.setReadBufferSize(kPortBufferSize);
    port.setDataBits(QSerialPort::Data8);
    port.setParity(QSerialPort::NoParity);
    port.setStopBits(QSerialPort::OneStop);
    port.setFlowControl(QSerialPort::NoFlowControl);
    port.setPortName(QString::fromStdString(m_device));
    if (port.open(QIODevice::ReadWrite)) return true;
    if (port.open(QIODevice::ReadOnly)) {
        status = stringprintf("Opened %s read-only\n", m_device.c_str());
        return true;
    }
    status = stringprintf("Open serial port %s, Failed, errno: %d\n", m_device.c_str(), static_cast<int>(port.error()));
    return false;
}

void CSerialConnection::Close()
{
    if (is_open) port.close();
    is_open = false;
    closed = true;
}

bool CSerialConnection::Output(const char* text)
{
    return is_open && port.write(text, static_cast<qint64>(std::strlen(text))) > 0;
}

void CSerialConnection::OnHeartbeat()
{
    if (is_open) ReadLines();
}

void CSerialConnection::OnPortError(QSerialPort::SerialPortError error)
{
    if (!is_open || (error != QSerialPort::ResourceError && error != QSerialPort::ReadError)) return;
    ReadLines();
    LosePort();
}

bool CSerialConnection::RefillBuffer()
{
    read_position = read_end = 0;
    if (port.bytesAvailable() <= 0) return false;
    read_end = static_cast<int>(std::max<qint64>(0, port.read(read_buffer, kReadSize)));
    return read_end > 0;
}

void CSerialConnection::ReadLines()
{
    int taken = 0;
    while (read_position < read_end || RefillBuffer()) {
        const CLineAssembler::Result result = assembler.Add(read_buffer[read_position++], *this);
        if (result == CLineAssembler::kOverflow) return;
        if (result == CLineAssembler::kLineTaken && ++taken == kLinesPerTick) {
            read_position = read_end = 0;
            DebugLog("Error: too many sentences - discarding the input buffer");
            return;
        }
    }
}

void CSerialConnection::LosePort()
{
    port.close();
    is_open = false;
    assembler.Reset();
    read_position = read_end = 0;
    status = "Serial port " + m_device + " was unplugged";
    SetStatusMessage(status);
}
