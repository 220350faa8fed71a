#include "window_finder.h"

#include "text.h"

std::wstring ClassOf(HWND window)
{
    wchar_t name[256] = {};
    int length = GetClassNameW(window, name, 256);
    return std::wstring(name, length > 0 ? length : 0);
}

std::string TextOf(HWND window)
{
    int length = GetWindowTextLengthW(window);
    std::wstring text(length + 1, L'\0');
    length = GetWindowTextW(window, text.data(), length + 1);
    text.resize(length > 0 ? length : 0);
    return Utf8(text);
}

std::vector<HWND> VisibleWindowsOf(DWORD processId)
{
    std::vector<HWND> all, found;
    EnumWindows(
        [](HWND window, LPARAM list) {
            reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&all));
    for (HWND window : all) {
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        if (owner == processId && IsWindowVisible(window))
            found.push_back(window);
    }
    return found;
}

bool WaitUntil(const std::function<bool()>& condition, DWORD timeoutMs)
{
    DWORD start = GetTickCount();
    for (;;) {
        if (condition())
            return true;
        if (GetTickCount() - start >= timeoutMs)
            return false;
        Sleep(10);
    }
}

HWND WaitForWindow(const LaunchedProcess& process, const std::function<bool(HWND)>& accept,
                   DWORD timeoutMs)
{
    HWND result = nullptr;
    WaitUntil(
        [&] {
            for (HWND window : VisibleWindowsOf(process.Id()))
                if (accept(window)) {
                    result = window;
                    return true;
                }
            // A process that has ended will show nothing more: fail fast.
            return !process.Running();
        },
        timeoutMs);
    return result;
}

void WarmUpWine()
{
    LaunchedProcess ludax(LudaxExePath());
    WaitForWindow(ludax, [](HWND) { return true; }, 120000);
}
