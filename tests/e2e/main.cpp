// End-to-end tests of Ludax.exe: each test starts the real program on a desktop of the test
// run's own and drives it from outside with window messages, as UI automation does.

#include <gtest/gtest.h>
#include <windows.h>

#include <iostream>

#include "player_pc.h"
#include "private_desktop.h"
#include "unmanaged_windows.h"
#include "window_finder.h"

int main(int argc, char** argv)
{
    // A copy of this program under another name (a game's "hl.exe") stands for that game running.
    wchar_t self[MAX_PATH] = {};
    const std::wstring path(self, GetModuleFileNameW(nullptr, self, MAX_PATH));
    if (lstrcmpiW(path.substr(path.find_last_of(L"\\/") + 1).c_str(), L"ludax_e2e_tests.exe") != 0)
        Sleep(INFINITE);
    if (!EnterPrivateDesktop()) {
        std::cerr << "cannot create the tests' desktop" << std::endl;
        return 1;
    }
    UnmanagedWindows unmanaged;
    WarmUpWine();
    testing::InitGoogleTest(&argc, argv);
    int status = RUN_ALL_TESTS();
    // The tests point Steam at their own folders; leave no such value behind.
    SteamFolder::RemoveKey();
    return status;
}
