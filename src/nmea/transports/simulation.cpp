#include "nmea/transports/simulation.h"

#include "core/files.h"
#include "core/persistant_data.h"
#include "nmea/nmea_sentence.h"
#include "overlays/gps_position.h"
#include "overlays/track_manager.h"
#include "ui/file_dialogs.h"

std::string CNMEASimulation::filename;

class CNMEASimulation::Persistant : public PersistantData {
public:
    Persistant() : PersistantData("CNMEASimulation") {}

    void DeclareData() override { Declare("filename", filename); }
};

namespace {

constexpr int kTicksPerSecond = 1000 / CHeartbeat::kTickMilliseconds;
constexpr int kLinesPerSecond = 30;
/// Far above what 30 lines hold: a large file without a sentence must not hold up the program.
constexpr int kBytesPerSecond = 1 << 18;

CNMEASimulation::Persistant simulation_persistor;

} // namespace

CNMEASimulation::CNMEASimulation() : Counter(kTicksPerSecond)
{
    simulated = true;
}

CNMEASimulation::~CNMEASimulation()
{
    if (file != nullptr) std::fclose(file);
}

void CNMEASimulation::Configure(ZT_HWND view, const std::function<void(bool)>& done)
{
    ImportFile(view, "Simulation File", "text/plain", "txt", [done](const std::optional<std::string>& path) {
        const bool found = path && Setup(*path);
        done(found);
    });
}

bool CNMEASimulation::Setup(const std::string& path)
{
    filename = path;
    simulation_persistor.SetModified();
    PersistantData::SaveAll();
    return isRegularFile(path);
}

bool CNMEASimulation::Open()
{
    StartAgain();
    file = openRegularFile(filename, "r");
    if (file == nullptr) {
        status = "Simulation file error";
        return false;
    }
    Listener<CDataGPSPosition>::Connect();
    closed = false;
    return true;
}

void CNMEASimulation::StartAgain()
{
    COverlayGPSPosition::theLatestPosition.reset_history();
    g_track_manager.StartSimulation();
}

void CNMEASimulation::Close()
{
    if (file == nullptr) return;
    Listener<CDataGPSPosition>::Disconnect();
    COverlayGPSPosition::theLatestPosition.reset_history();
    g_track_manager.EndSimulation();
    std::fclose(file);
    file = nullptr;
    closed = true;
}

void CNMEASimulation::OnUpdate(CDataGPSPosition&)
{
    got_position = true;
}

void CNMEASimulation::OnHeartbeat()
{
    got_position = false;
    bytes_left = kBytesPerSecond;
    for (int i = 0; i < kLinesPerSecond && file != nullptr && !got_position; ++i) {
        switch (read_line()) {
        case kLine:
            CNMEASentence::DispatchSentence(line, this);
            break;
        case kFileEnded:
            std::rewind(file);
            StartAgain();
            break;
        case kNotYet:
            return;
        }
    }
}

CNMEASimulation::ReadResult CNMEASimulation::read_line()
{
    int character = std::getc(file);
    while (character != '$' && character != '!') {
        if (character == EOF) return kFileEnded;
        if (--bytes_left <= 0) return kNotYet;
        character = std::getc(file);
    }
    std::size_t length = 0;
    while (character != EOF && character != '\n' && character != '\r') {
        line[length++] = static_cast<char>(character);
        if (length == kMostCharacters) break;
        character = std::getc(file);
    }
    line[length] = '\0';
    return kLine;
}
