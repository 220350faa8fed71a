#include "window_finder.h"

namespace {

struct Search {
    DWORD processId;
    std::vector<HWND> found;
};

BOOL CALLBACK CollectVisible(HWND window, LPARAM context)
{
    auto* search = reinterpret_cast<Search*>(context);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner == search->processId && IsWindowVisible(window))
        search->found.push_back(window);
    return TRUE;
}

}  // namespace

std::wstring ClassOf(HWND window)
{
    wchar_t name[256] = {};
    int length = GetClassNameW(window, name, 256);
    return std::wstring(name, length > 0 ? length : 0);
}

std::wstring TextOf(HWND window)
{
    int length = GetWindowTextLengthW(window);
    std::wstring text(length + 1, L'\0');
    length = GetWindowTextW(window, text.data(), length + 1);
    text.resize(length > 0 ? length : 0);
    return text;
}

std::vector<HWND> VisibleWindowsOf(DWORD processId)
{
    Search search{processId, {}};
    EnumWindows(CollectVisible, reinterpret_cast<LPARAM>(&search));
    return search.found;
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

HWND WaitForWindowOfClass(const LaunchedProcess& process, const std::wstring& className,
                          DWORD timeoutMs)
{
    return WaitForWindow(process, [&](HWND window) { return ClassOf(window) == className; },
                         timeoutMs);
}

void WarmUpWine()
{
    LaunchedProcess ludax(LudaxExePath());
    WaitForWindow(ludax, [](HWND) { return true; }, 120000);
}
