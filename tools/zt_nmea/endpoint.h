#pragma once

#include <string>

/// "HOST:PORT", with an address in brackets where it has colons of its own. False unless the port is 0 to 65535.
bool SplitHostPort(const std::string& text, std::string& host, int& port);
/// The same of the port alone.
bool ParsePort(const std::string& text, int& port);
/// A socket connected to the host, `type` SOCK_STREAM or SOCK_DGRAM; -1 and `fault_text` on failure.
int ConnectSocket(const std::string& host, int port, int type, std::string& fault_text);
/// An IPv4 socket bound to the port on all interfaces, 0 for a free one; -1 and errno on failure.
int BindSocket(int port, int type);
/// The port that the socket is bound to.
int BoundPort(int socket_handle);
