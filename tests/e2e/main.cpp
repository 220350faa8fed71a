// End-to-end tests of Ludax.exe: each test starts the real program on a desktop of the test
// run's own and drives it from outside with window messages, as UI automation does.

#include <gtest/gtest.h>

#include <iostream>

#include "private_desktop.h"
#include "steam_folder.h"
#include "unmanaged_windows.h"
#include "window_finder.h"

int main(int argc, char** argv)
{
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
