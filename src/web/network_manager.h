#pragma once

class QNetworkAccessManager;

/// The one manager behind all of the program's requests, made at first use; it goes with the application object. A
/// transfer that sees no bytes for 4 seconds fails. Main thread only.
QNetworkAccessManager* getGlobalNetworkAccessManager();
/// Replaces the manager, for tests; null brings the program's own back. The manager must outlive its use.
void SetGlobalNetworkAccessManager(QNetworkAccessManager* manager);
