// End-to-end tests of Ludax.exe: each test starts the real program on a desktop of the test
// run's own and drives it from outside with window messages, as UI automation does.

#include <gtest/gtest.h>
#include <windows.h>

#include <iostream>

#include "private_desktop.h"
#include "steam_folder.h"
#include "unmanaged_windows.h"
#include "window_finder.h"

namespace {

// A copy of this program under another name (a game's "hl.exe") stands for that game running.
bool StandsForAGame()
{
    wchar_t path[MAX_PATH] = {};
    const std::wstring self(path, GetModuleFileNameW(nullptr, path, MAX_PATH));
    const std::wstring name = self.substr(self.find_last_of(L"\\/") + 1);
    return lstrcmpiW(name.c_str(), L"ludax_e2e_tests.exe") != 0;
}

}  // namespace

int main(int argc, char** argv)
{
    if (StandsForAGame()) {
        Sleep(INFINITE);
        return 0;
    }
    if (!EnterPrivateDesktop()) {
        std::cerr << "cannot create the tests' desktop" << std::endl;
        return 1;
    }
    UnmanagedWindows unmanaged;
    WarmUpWine();
    testing::InitGoogleTest(&argc, argv);
    int status = RUN_ALL_TESTS();
    // The tests point Steam at their own folders; leave no such value behind.
    RemoveSteamKey();
    return status;
}
