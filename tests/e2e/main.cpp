// End-to-end tests of Ludax.exe: each test starts the real program on a desktop of the test
// run's own and drives it from outside with window messages, as UI automation does.

#include <gtest/gtest.h>
#include <windows.h>

#include <iostream>

#include "player_pc.h"
#include "private_desktop.h"
#include "test_registry.h"
#include "unmanaged_windows.h"
#include "window_finder.h"

int main(int argc, char** argv)
{
    // A copy of this program under another name (a game's "hl.exe") stands for that game running.
    wchar_t self[MAX_PATH] = {};
    const std::wstring path(self, GetModuleFileNameW(nullptr, self, MAX_PATH));
    const std::wstring name = path.substr(path.find_last_of(L"\\/") + 1);
    // A copy named "explorer.exe" stands for Explorer: with no console, it starts the program its
    // command line names (the rest of the line as that program's) and ends with its status.
    if (lstrcmpiW(name.c_str(), L"explorer.exe") == 0) {
        FreeConsole();
        for (DWORD which : {STD_INPUT_HANDLE, STD_OUTPUT_HANDLE, STD_ERROR_HANDLE})
            SetStdHandle(which, nullptr);
        std::wstring rest = GetCommandLineW();
        rest = rest.substr(rest.find(L" \"") + 1);
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION started{};
        if (!CreateProcessW(nullptr, rest.data(), nullptr, nullptr, FALSE, DETACHED_PROCESS, nullptr, nullptr, &startup,
                            &started))
            return 255;
        DWORD status = 255;
        WaitForSingleObject(started.hProcess, INFINITE);
        GetExitCodeProcess(started.hProcess, &status);
        return static_cast<int>(status);
    }
    if (lstrcmpiW(name.c_str(), L"ludax_e2e_tests.exe") != 0)
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
    for (RegistryHive view : {RegistryHive::machine32, RegistryHive::machine64})
        DeleteRegistryKey(view, "SOFTWARE\\Valve\\Steam");
    return status;
}
