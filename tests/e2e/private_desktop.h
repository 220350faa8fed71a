#pragma once
// A Wine/Windows desktop of the test run's own, so that the program under test gets a
// desktop window on the test's display whatever state the prefix's default desktop is in
// (a default desktop started earlier without a display cannot create windows).

#include <string>

// Creates the desktop and moves the calling thread onto it; call before any window exists.
// Returns false when either step fails.
bool EnterPrivateDesktop();

// The "WinSta0\<name>" string for STARTUPINFO.lpDesktop of the processes the tests start.
const std::wstring& PrivateDesktopName();
