#include "nmea/data_connection.h"

#include "core/message_sink.h"
#include "core/persistant_data.h"
#include "nmea/connection_background.h"

CDataConnection* CDataConnection::theConnection = nullptr;
int CDataConnection::gps_connection_type = CDataConnection::kLocationService;
std::list<std::string> CDataConnection::output_filters;
CDataConnection::CConnectionType* CDataConnection::CConnectionType::first_type = nullptr;

namespace {

class DataConnectionPersistant : public PersistantData {
public:
    DataConnectionPersistant() : PersistantData("CDataConnection") {}

    void DeclareData() override
    {
        Declare("gps_connection_type", CDataConnection::gps_connection_type);
        Declare("output_filters", CDataConnection::output_filters);
    }
};

DataConnectionPersistant persistor;

void SetType(int type)
{
    CDataConnection::gps_connection_type = type;
    persistor.SetModified();
}

void DeleteConnection()
{
    CDataConnection* const connection = CDataConnection::theConnection;
    if (connection == nullptr) return;
    connection->Close();
    CDataConnection::theConnection = nullptr;
    delete connection;
}

} // namespace

CDataConnection::CConnectionType::CConnectionType(const char* type_name, int number, CDataConnection* (*create)())
    : name(type_name), id(number), factory(create), next(first_type)
{
    first_type = this;
}

CDataConnection::CDataConnection()
{
    Listener<CNMEA_Raw>::Connect();
}

CDataConnection::~CDataConnection() = default;

void CDataConnection::OnUpdate(CNMEA_Raw& raw)
{
    if (raw.source == this) return;
    bool verdict = false;
    output_filter.apply(raw.text, verdict);
    if (verdict) Output(raw.text);
}

void CDataConnection::Configure(ZT_HWND, const std::function<void(bool)>& done)
{
    done(true);
}

bool CDataConnection::Output(const char*)
{
    return false;
}

CDataConnection* CDataConnection::Create(int type)
{
    for (const CConnectionType* row = CConnectionType::first_type; row != nullptr; row = row->next) {
        if (row->id != type) continue;
        CDataConnection* connection = row->factory();
        connection->type = type;
        return connection;
    }
    return nullptr;
}

void CDataConnection::CreateConnection()
{
    DeleteConnection();
    theConnection = Create(gps_connection_type);
    if (theConnection == nullptr && gps_connection_type != kLocationService) {
        SetType(kLocationService);
        theConnection = Create(gps_connection_type);
    }
    if (theConnection == nullptr) {
        SetStatusMessage("The GPS Connection Type is not available");
        return;
    }
    theConnection->UseOutputFilters();
    theConnection->Open();
    SetStatusMessage(theConnection->status);
}

void CDataConnection::UseOutputFilters()
{
    if (output_filters.empty()) Listener<CNMEA_Raw>::Disconnect(); // the last one ends all copying of raw text
    for (const std::string& rule : output_filters) output_filter.add(rule.c_str());
}

void CDataConnection::onConnectionSelected(ZT_HWND view, CConnectionType* type, const std::function<void(bool)>& done)
{
    SetType(0); // a choice that is left half made is none
    DeleteConnection();
    theConnection = Create(type->id);
    if (theConnection == nullptr) {
        done(false);
        return;
    }
    CDataConnection* const selected = theConnection;
    selected->Configure(view, [selected, done](bool accepted) {
        const bool opened = accepted && selected == theConnection && selected->OpenAsSelected();
        done(opened);
    });
}

bool CDataConnection::OpenAsSelected()
{
    UseOutputFilters();
    const bool opened = Open();
    if (opened) {
        SetType(type);
        PersistantData::SaveAll();
    }
    SetStatusMessage(status);
    return opened;
}

void CDataConnection::AppWasPaused()
{
    if (theConnection == nullptr) return;
    if (!theConnection->closed && !IsConnectionNeededInBackground()) {
        DeleteConnection();
    } else {
        theConnection->ContinueWhilePaused();
    }
}

void CDataConnection::AppWasResumed()
{
    if (theConnection == nullptr) {
        CreateConnection();
    } else if (!theConnection->closed) {
        theConnection->resumeFromBackground();
    }
}

void CDataConnection::AppWasDestroyed()
{
    DeleteConnection();
}
