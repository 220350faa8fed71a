#include "ludax_window.h"

#include <algorithm>

#include "text.h"
#include "window_finder.h"

std::vector<HWND> ChildrenTopToBottom(HWND window)
{
    std::vector<HWND> children;
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        children.push_back(child);
    std::stable_sort(children.begin(), children.end(),
                     [](HWND a, HWND b) { return RectInParent(a).top < RectInParent(b).top; });
    return children;
}

RECT RectInParent(HWND child)
{
    RECT rect;
    GetWindowRect(child, &rect);
    MapWindowPoints(nullptr, GetParent(child), reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

LudaxControls FindControls(HWND window)
{
    const char* labels[] = {"Counter Strike LuDAX config install", "Counter Strike LuDAX config uninstall",
                            "Counter Strike Source LuDAX config install",
                            "Counter Strike Source LuDAX config uninstall"};
    LudaxControls controls;
    for (HWND child : ChildrenTopToBottom(window)) {
        if (ClassOf(child) == L"ComboBox")
            controls.chooser = child;
        for (int button = 0; button < 4; ++button)
            if (ClassOf(child) == L"Button" && TextOf(child) == labels[button])
                controls.buttons[button] = child;
    }
    return controls;
}

EnabledButtons EnabledButtonsOf(const LudaxControls& controls)
{
    EnabledButtons enabled{};
    for (int button = 0; button < 4; ++button)
        enabled[button] = controls.buttons[button] && IsWindowEnabled(controls.buttons[button]);
    return enabled;
}

std::vector<std::string> ChooserEntries(HWND chooser)
{
    std::vector<std::string> entries;
    for (LRESULT i = 0, count = SendMessageW(chooser, CB_GETCOUNT, 0, 0); i < count; ++i) {
        std::wstring text(std::max<LRESULT>(SendMessageW(chooser, CB_GETLBTEXTLEN, i, 0), 0) + 1, L'\0');
        text.resize(std::max<LRESULT>(SendMessageW(chooser, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(text.data())), 0));
        entries.push_back(Utf8(text));
    }
    return entries;
}

int ChooserSelection(HWND chooser) { return static_cast<int>(SendMessageW(chooser, CB_GETCURSEL, 0, 0)); }

void ChooseEntry(HWND chooser, int index)
{
    SendMessageW(chooser, CB_SETCURSEL, index, 0);
    SendMessageW(GetParent(chooser), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(chooser), CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(chooser));
}

void ClickClient(HWND window, int x, int y)
{
    PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
    PostMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
}

HWND FocusOf(HWND window)
{
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    if (!GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info))
        return nullptr;
    return info.hwndFocus;
}

void TypeKey(HWND window, WORD key, Held held)
{
    SetForegroundWindow(window);
    const WORD modifier = held == Held::shift ? VK_SHIFT : held == Held::alt ? VK_MENU : 0;
    std::vector<INPUT> inputs;
    for (auto [virtualKey, up] : {std::pair{modifier, false}, {key, false}, {key, true}, {modifier, true}})
        if (virtualKey) {
            INPUT input{};
            input.type = INPUT_KEYBOARD;
            input.ki.wVk = virtualKey;
            input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(virtualKey, MAPVK_VK_TO_VSC));
            input.ki.dwFlags = up ? KEYEVENTF_KEYUP : 0;
            inputs.push_back(input);
        }
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}
