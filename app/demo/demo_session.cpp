// ludax_demo_session: the `make run` demo's remote control on a display without a person at it.
// Built apart from the tests, so that the demo needs no test framework. Starts the program,
// waits until its window shows the opaque logo, prints "ready <left> <top> <width> <height>"
// (the window's screen rectangle) on stdout, waits for one line on stdin (the screenshot is
// taken meanwhile), then closes the window with a click in its close corner. Exits with the
// program's exit code, or 1 when no window came.
#include <iostream>
#include <string>

#include "ludax_window.h"
#include "message_box_reader.h"
#include "private_desktop.h"
#include "screen_capture.h"
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
    LaunchedProcess ludax(LudaxExePath());
    HWND window = WaitForWindow(ludax, [](HWND candidate) {
        return ClassOf(candidate) == L"Ludax" || ClassOf(candidate) == L"#32770";
    });
    if (!window || ClassOf(window) == L"#32770") {
        std::cout << "failed: " << (window ? "message box: " + ReadMessageBox(window).text : "no window appeared")
                  << std::endl;
        return 1;
    }
    RECT rect;
    GetWindowRect(window, &rect);
    Pixels logo = LoadLogoReference();
    RECT band{rect.left, rect.top, rect.left + 350, rect.top + 150};
    // The fade takes about 2.5 s; a screenshot before its end would show a yellow band.
    WaitUntil([&] { return !logo.colours.empty() && LogoMismatches(CaptureScreen(band), logo) == 0; }, 6000);
    std::cout << "ready " << rect.left << " " << rect.top << " " << rect.right - rect.left << " "
              << rect.bottom - rect.top << std::endl;
    std::string line;
    std::getline(std::cin, line);
    ClickClient(window, rect.right - rect.left - 5, 5);
    auto code = ludax.WaitForExit(defaultTimeoutMs);
    return code ? static_cast<int>(*code) : 1;
}
