#pragma once

#include "core/zt_hwnd.h"

#include <string>

/// Opens a link of the user's in the program that the desktop has for it. Only web and mail links (http, https, mailto)
/// are opened; of any other the user is told that it is none. Without a scheme, a web link is meant.
void OpenUserLink(ZT_HWND parent, const std::string& link);

/// Replaces what opens a link, for tests: null brings the desktop back.
using link_opener = void (*)(const std::string& url);
void SetLinkOpener(link_opener opener);
