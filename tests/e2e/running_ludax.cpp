#include "running_ludax.h"

#include "message_box_reader.h"
#include "text.h"
#include "window_finder.h"

RunningLudax::RunningLudax(const std::string& arguments) : process(LudaxExePath(), Widen(arguments))
{
    if (!process.Started()) {
        failure = "Ludax.exe could not be started";
        return;
    }
    // A fatal message box instead of the window ends the wait at once.
    HWND shown = WaitForWindow(process, [](HWND candidate) {
        return ClassOf(candidate) == L"Ludax" || ClassOf(candidate) == L"#32770";
    });
    if (!shown) {
        failure = process.Running() ? "no window within the time limit" : "the program ended";
    } else if (ClassOf(shown) == L"#32770") {
        MessageBoxContent box = ReadMessageBox(shown);
        failure = "message box \"" + Narrow(box.caption) + "\": " + Narrow(box.text);
    } else {
        window = shown;
    }
}
