#pragma once

#include <QString>

/// The private folder for the lock and the socket of the single instance: "zentara" under the user's runtime folder,
/// made with mode 0700. Empty when no folder can be had that belongs to this user and that nobody else can enter.
QString PrivateRuntimeFolder();
