#pragma once

#include <windows.h>

#include <string>
#include <vector>

// What both the bare and the required calls of a row do. Each returns 0 or the error.

DWORD queryService(const std::wstring& name, SERVICE_STATUS& status);

/// The key names of all services and drivers. The system is asked for the size first, as the
/// library does.
DWORD listServices(std::vector<std::wstring>& names);

DWORD readVersion(const std::wstring& file, VS_FIXEDFILEINFO& info);

/// An account that holds none is no failure. The policy stays open then, as the library leaves it.
DWORD listRights(const std::string& account, std::vector<std::wstring>& rights);
