#include "private_desktop.h"

#include <windows.h>

namespace {
const wchar_t desktopName[] = L"LudaxE2E";
}

bool EnterPrivateDesktop()
{
    HDESK desktop = CreateDesktopW(desktopName, nullptr, nullptr, 0, GENERIC_ALL, nullptr);
    return desktop && SetThreadDesktop(desktop);
}

const std::wstring& PrivateDesktopName()
{
    static const std::wstring name = std::wstring(L"WinSta0\\") + desktopName;
    return name;
}
