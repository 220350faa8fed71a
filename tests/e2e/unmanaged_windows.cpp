#include "unmanaged_windows.h"

#include <windows.h>

namespace {
const char driverKey[] = "Software\\Wine\\X11 Driver";

void SetManaged(const std::string& value)
{
    HKEY key;
    if (RegCreateKeyExA(HKEY_CURRENT_USER, driverKey, 0, nullptr, 0, KEY_SET_VALUE, nullptr, &key,
                        nullptr) != ERROR_SUCCESS)
        return;
    RegSetValueExA(key, "Managed", 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                   static_cast<DWORD>(value.size() + 1));
    RegCloseKey(key);
}
}  // namespace

UnmanagedWindows::UnmanagedWindows()
{
    char value[64] = {};
    DWORD size = sizeof value - 1;
    if (RegGetValueA(HKEY_CURRENT_USER, driverKey, "Managed", RRF_RT_REG_SZ, nullptr, value, &size) ==
        ERROR_SUCCESS)
        previous = value;
    SetManaged("N");
}

UnmanagedWindows::~UnmanagedWindows()
{
    if (previous) {
        SetManaged(*previous);
        return;
    }
    HKEY key;
    if (RegOpenKeyExA(HKEY_CURRENT_USER, driverKey, 0, KEY_SET_VALUE, &key) == ERROR_SUCCESS) {
        RegDeleteValueA(key, "Managed");
        RegCloseKey(key);
    }
}
