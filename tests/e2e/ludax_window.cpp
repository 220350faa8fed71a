#include "ludax_window.h"

#include <algorithm>

#include "window_finder.h"

std::vector<HWND> ChildrenTopToBottom(HWND window)
{
    std::vector<HWND> children;
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        children.push_back(child);
    std::stable_sort(children.begin(), children.end(), [](HWND a, HWND b) {
        return RectInParent(a).top < RectInParent(b).top;
    });
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
    LudaxControls controls;
    for (HWND child : ChildrenTopToBottom(window)) {
        std::wstring className = ClassOf(child);
        std::wstring label = TextOf(child);
        if (className == L"ComboBox")
            controls.chooser = child;
        else if (className != L"Button")
            continue;
        else if (label == L"Counter Strike LuDAX config install")
            controls.cs16Install = child;
        else if (label == L"Counter Strike LuDAX config uninstall")
            controls.cs16Uninstall = child;
        else if (label == L"Counter Strike Source LuDAX config install")
            controls.cssInstall = child;
        else if (label == L"Counter Strike Source LuDAX config uninstall")
            controls.cssUninstall = child;
    }
    return controls;
}

bool EnabledButtons::operator==(const EnabledButtons& other) const
{
    return cs16Install == other.cs16Install && cs16Uninstall == other.cs16Uninstall &&
           cssInstall == other.cssInstall && cssUninstall == other.cssUninstall;
}

std::ostream& operator<<(std::ostream& out, const EnabledButtons& buttons)
{
    return out << "{cs16 install " << buttons.cs16Install << ", cs16 uninstall "
               << buttons.cs16Uninstall << ", css install " << buttons.cssInstall
               << ", css uninstall " << buttons.cssUninstall << "}";
}

EnabledButtons EnabledButtonsOf(const LudaxControls& controls)
{
    auto enabled = [](HWND button) { return button && IsWindowEnabled(button) != FALSE; };
    return {enabled(controls.cs16Install), enabled(controls.cs16Uninstall),
            enabled(controls.cssInstall), enabled(controls.cssUninstall)};
}

std::vector<std::wstring> ChooserEntries(HWND chooser)
{
    std::vector<std::wstring> entries;
    LRESULT count = SendMessageW(chooser, CB_GETCOUNT, 0, 0);
    for (LRESULT i = 0; i < count; ++i) {
        LRESULT length = SendMessageW(chooser, CB_GETLBTEXTLEN, i, 0);
        std::wstring text(length > 0 ? length + 1 : 1, L'\0');
        LRESULT copied = SendMessageW(chooser, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(text.data()));
        text.resize(copied > 0 ? copied : 0);
        entries.push_back(text);
    }
    return entries;
}

int ChooserSelection(HWND chooser)
{
    return static_cast<int>(SendMessageW(chooser, CB_GETCURSEL, 0, 0));
}

std::wstring ChooserText(HWND chooser)
{
    LRESULT length = SendMessageW(chooser, WM_GETTEXTLENGTH, 0, 0);
    std::wstring text(length > 0 ? length + 1 : 1, L'\0');
    LRESULT copied = SendMessageW(chooser, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    text.resize(copied > 0 ? copied : 0);
    return text;
}

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

void PostButtonClick(HWND button) { PostMessageW(button, BM_CLICK, 0, 0); }

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
    WORD modifier = held == Held::shift ? VK_SHIFT : held == Held::alt ? VK_MENU : 0;
    std::vector<INPUT> inputs;
    auto add = [&](WORD virtualKey, bool up) {
        INPUT input{};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = virtualKey;
        input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(virtualKey, MAPVK_VK_TO_VSC));
        input.ki.dwFlags = up ? KEYEVENTF_KEYUP : 0;
        inputs.push_back(input);
    };
    if (modifier)
        add(modifier, false);
    add(key, false);
    add(key, true);
    if (modifier)
        add(modifier, true);
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}
