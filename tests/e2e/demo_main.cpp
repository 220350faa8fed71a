// ludax_demo_session: the `make run` demo's remote control on a display without a person at
// it (see demo_session.h). Built apart from the tests, so that the demo needs no test framework.
#include <iostream>

#include "demo_session.h"
#include "private_desktop.h"
#include "unmanaged_windows.h"
#include "window_finder.h"

int main()
{
    if (!EnterPrivateDesktop()) {
        std::cout << "failed: cannot create the demo's desktop" << std::endl;
        return 1;
    }
    UnmanagedWindows unmanaged;
    WarmUpWine();
    return RunDemoSession();
}
