#pragma once

#include "web/web_server.h"

#include <string>

/// Fetches the list of targets that a Vesper AIS unit serves beside its sentences, so that targets show at once instead
/// of with their next reports. Main thread only.
class CInstantTargets {
public:
    static constexpr int kSentencePort = 39150; ///< of such a unit
    static constexpr int kListPort = 39151;     ///< of its list

    /// Reads a file with the list. The room that keeps the targets sets it; null until then.
    static void (*ReadInstantTargets)(const std::string& path);
    /// A second port for a test's server.
    static int list_port;

    CInstantTargets();
    ~CInstantTargets();
    /// Chooses the file of the next list, in the program's own temporary folder, and removes an old one of that name.
    void Prepare();
    /// No list is wanted.
    void Cancel();
    /// Whether a list is still to come.
    bool IsWanted() const { return !path.empty(); }
    /// Fetches the list from that host, if one is wanted. A list above 16 MiB is refused.
    void Fetch(const std::string& host);

private:
    void OnFetched();

    std::string path; ///< of the list; empty: none is wanted
    CWebServer_NB web;
};
