// End-to-end tests of Ludax.exe: each test starts the real program on a desktop of the test
// run's own and drives it from outside with window messages, as UI automation does.

#include <gtest/gtest.h>

#include <cstring>
#include <iostream>

#include "demo_session.h"
#include "launched_process.h"
#include "private_desktop.h"
#include "steam_folder.h"
#include "unmanaged_windows.h"
#include "window_finder.h"

namespace {

// A fresh Wine prefix takes many seconds to show its first window (it builds its font cache):
// pay for that once here instead of inside the first test's time limit.
void WarmUpWine()
{
    LaunchedProcess ludax(LudaxExePath());
    WaitForWindow(ludax, [](HWND) { return true; }, 120000);
}

}  // namespace

int main(int argc, char** argv)
{
    if (!EnterPrivateDesktop()) {
        std::cerr << "cannot create the tests' desktop" << std::endl;
        return 1;
    }
    UnmanagedWindows unmanaged;
    WarmUpWine();
    if (argc == 2 && std::strcmp(argv[1], "--demo-session") == 0)
        return RunDemoSession();
    testing::InitGoogleTest(&argc, argv);
    int status = RUN_ALL_TESTS();
    // The tests point Steam at their own folders; leave no such value behind.
    RemoveSteamKey();
    return status;
}
