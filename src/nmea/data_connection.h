#pragma once

#include "core/listener.h"
#include "core/zt_hwnd.h"
#include "nmea/nmea_filter.h"
#include "nmea/nmea_raw.h"

#include <functional>
#include <list>
#include <string>

/// The way by which position and instrument data arrive; at most one exists. Every failure is a text in `status`.
/// Main thread only.
class CDataConnection : protected Listener<CNMEA_Raw> {
public:
    /// A row of the registry of connection types: a plain static record.
    class CConnectionType;

    /// The numbers by which types are kept in the settings.
    enum Number : int {
        kNone = 70,
        kLocationService = 71,
        kTCP = 73,
        kSimulationFile = 74,
        kUDP = 79,
        kSerial = 83,
    };

    bool closed = true;      ///< until Open has succeeded
    std::string status;      ///< for the user's status line
    bool debuggable = false; ///< its lines can be logged
    bool simulated = false;  ///< its fixes count as simulated
    std::string label;       ///< a short name of the port in use
    CNMEA_filter input_filter;
    CNMEA_filter output_filter;
    int type = 0;

    CDataConnection();
    CDataConnection(const CDataConnection&) = delete;
    CDataConnection& operator=(const CDataConnection&) = delete;
    /// Transmits what came from elsewhere and passes the output filter.
    void OnUpdate(CNMEA_Raw& raw) override;
    virtual ~CDataConnection();
    /// Lets the user set the connection up; `done` tells whether he accepted, now or later.
    virtual void Configure(ZT_HWND view, const std::function<void(bool)>& done);
    virtual bool Open() = 0;
    virtual void Close() = 0;
    /// Transmits; false when nothing went out.
    virtual bool Output(const char* text);
    virtual void ContinueWhilePaused() {}
    virtual void resumeFromBackground() {}

    static CDataConnection* theConnection;        ///< owned; null when there is none
    static int gps_connection_type;               ///< setting; 0 while a choice is being set up
    static std::list<std::string> output_filters; ///< setting: one rule text each

    /// A closed connection of that type, with its settings; null for an unknown number.
    static CDataConnection* Create(int type);
    /// Replaces the connection by one of the type set, and opens it. Failures go to the status line.
    static void CreateConnection();
    /// Shows the menu of types; `done` tells whether a connection was opened. It is called once, and may be called when
    /// the view is gone already.
    static void SelectConnectionType(ZT_HWND view, const std::function<void(bool)>& done);
    static void onConnectionSelected(ZT_HWND view, CConnectionType* type, const std::function<void(bool)>& done);
    static void AppWasPaused();
    static void AppWasResumed();
    static void AppWasDestroyed();
    static void UpdatedBackgroundSettings() {}
    static bool usingDefaultType() { return gps_connection_type == kLocationService; }

    static void startDebug();
    /// Ends the log and, with a view, offers to save it.
    static void stopDebug(ZT_HWND view);
    static bool isDebugging();
    /// Writes the line to the debug log while it is open.
    static void DebugLog(const char* line);

private:
    /// Takes the setting over; without a rule the connection leaves the feed of raw sentences.
    void UseOutputFilters();
    /// Opens what the user has just set up, and keeps its type when that worked.
    bool OpenAsSelected();
};

class CDataConnection::CConnectionType {
public:
    CConnectionType(const char* type_name, int number, CDataConnection* (*create)());

    const char* const name;
    const int id;
    CDataConnection* (*const factory)();
    CConnectionType* next;

    static CConnectionType* first_type;
};
