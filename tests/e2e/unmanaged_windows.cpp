#include "unmanaged_windows.h"

#include <windows.h>

namespace {
const wchar_t driverKey[] = L"Software\\Wine\\X11 Driver";
}

UnmanagedWindows::UnmanagedWindows()
{
    RegSetKeyValueW(HKEY_CURRENT_USER, driverKey, L"Managed", REG_SZ, L"N", 2 * sizeof(wchar_t));
}

UnmanagedWindows::~UnmanagedWindows() { RegDeleteKeyValueW(HKEY_CURRENT_USER, driverKey, L"Managed"); }
