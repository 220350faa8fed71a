#include "demo_session.h"

#include <iostream>
#include <string>

#include "launched_process.h"
#include "ludax_window.h"
#include "message_box_reader.h"
#include "screen_capture.h"
#include "text.h"
#include "window_finder.h"

int RunDemoSession()
{
    LaunchedProcess ludax(LudaxExePath());
    if (!ludax.Started()) {
        std::cout << "failed: Ludax.exe could not be started" << std::endl;
        return 1;
    }
    HWND window = WaitForWindow(ludax, [](HWND candidate) {
        return ClassOf(candidate) == L"Ludax" || ClassOf(candidate) == L"#32770";
    });
    if (!window) {
        std::cout << "failed: no window appeared" << std::endl;
        return 1;
    }
    if (ClassOf(window) == L"#32770") {
        MessageBoxContent box = ReadMessageBox(window);
        std::cout << "failed: message box \"" << Narrow(box.caption) << "\": " << Narrow(box.text)
                  << std::endl;
        PressButton(window, IDOK);
        ludax.WaitForExit(defaultTimeoutMs);
        return 1;
    }
    RECT rect;
    GetWindowRect(window, &rect);
    Pixels logo = LoadLogoReference();
    RECT band{rect.left, rect.top, rect.left + 350, rect.top + 150};
    // The fade takes about 2.5 s; a screenshot before its end would show a yellow band.
    WaitUntil([&] { return !logo.colours.empty() && LogoMismatches(CaptureScreen(band), logo) == 0; },
              6000);
    std::cout << "ready " << rect.left << " " << rect.top << " " << rect.right - rect.left << " "
              << rect.bottom - rect.top << std::endl;
    std::string line;
    std::getline(std::cin, line);
    ClickClient(window, rect.right - rect.left - 5, 5);
    auto code = ludax.WaitForExit(defaultTimeoutMs);
    return code ? static_cast<int>(*code) : 1;
}
