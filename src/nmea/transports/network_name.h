#pragma once

#include <string>

/// The name of the network that the computer has joined; empty where the platform does not tell, as here. A TCP or UDP
/// connection that was set up in a named network opens only in that one.
std::string getCurrentNetworkName();
