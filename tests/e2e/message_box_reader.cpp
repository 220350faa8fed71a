#include "message_box_reader.h"

#include <algorithm>

#include "screen_capture.h"
#include "window_finder.h"

namespace {

std::vector<HWND> ChildrenOf(HWND parent)
{
    std::vector<HWND> children;
    EnumChildWindows(
        parent,
        [](HWND child, LPARAM list) {
            reinterpret_cast<std::vector<HWND>*>(list)->push_back(child);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&children));
    return children;
}

bool IsIconStatic(HWND control)
{
    return ClassOf(control) == L"Static" &&
           (GetWindowLongW(control, GWL_STYLE) & SS_TYPEMASK) == SS_ICON;
}

// True when the screen shows `expected` in `shown` wherever the icon is opaque (the pixels
// that come out the same on a black and on a white background).
bool ShowsIcon(const Pixels& shown, LPCWSTR systemIcon)
{
    HICON icon = LoadIconW(nullptr, systemIcon);
    int size = shown.width < shown.height ? shown.width : shown.height;
    if (!icon || size <= 0)
        return false;
    Pixels onBlack = RenderIcon(icon, size, RGB(0, 0, 0));
    Pixels onWhite = RenderIcon(icon, size, RGB(255, 255, 255));
    if (onBlack.width != size || onWhite.width != size)
        return false;
    int opaque = 0, matching = 0;
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x) {
            if (onBlack.At(x, y) != onWhite.At(x, y))
                continue;
            ++opaque;
            if (Near(shown.At(x, y), onBlack.At(x, y), 8))
                ++matching;
        }
    return opaque >= size * size / 4 && matching == opaque;
}

BoxIcon RecogniseIcon(HWND iconControl)
{
    if (!iconControl || !IsWindowVisible(iconControl) ||
        !SendMessageW(iconControl, STM_GETICON, 0, 0))
        return BoxIcon::none;
    // The system icons' resource ids: IDI_HAND, IDI_QUESTION, IDI_EXCLAMATION, IDI_ASTERISK.
    const std::pair<LPCWSTR, BoxIcon> candidates[] = {{MAKEINTRESOURCEW(32513), BoxIcon::error},
                                                      {MAKEINTRESOURCEW(32514), BoxIcon::question},
                                                      {MAKEINTRESOURCEW(32515), BoxIcon::warning},
                                                      {MAKEINTRESOURCEW(32516), BoxIcon::information}};
    BoxIcon seen = BoxIcon::unrecognised;
    // The box may not have painted yet: look again until one icon matches.
    WaitUntil(
        [&] {
            RECT area;
            GetWindowRect(iconControl, &area);
            Pixels shown = CaptureScreen(area);
            for (const auto& candidate : candidates)
                if (ShowsIcon(shown, candidate.first)) {
                    seen = candidate.second;
                    return true;
                }
            return false;
        },
        3000);
    return seen;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, BoxIcon icon)
{
    switch (icon) {
    case BoxIcon::none: return out << "no icon";
    case BoxIcon::error: return out << "error icon";
    case BoxIcon::question: return out << "question icon";
    case BoxIcon::warning: return out << "warning icon";
    case BoxIcon::information: return out << "information icon";
    case BoxIcon::unrecognised: break;
    }
    return out << "unrecognised icon";
}

HWND WaitForMessageBox(const LaunchedProcess& process, DWORD timeoutMs)
{
    return WaitForWindowOfClass(process, L"#32770", timeoutMs);
}

MessageBoxContent ReadMessageBox(HWND box)
{
    MessageBoxContent content;
    content.caption = TextOf(box);
    content.owner = GetWindow(box, GW_OWNER);
    HWND iconControl = nullptr;
    for (HWND child : ChildrenOf(box)) {
        if (!IsWindowVisible(child))
            continue;
        std::wstring className = ClassOf(child);
        if (className == L"Button") {
            content.buttons.push_back(GetDlgCtrlID(child));
        } else if (IsIconStatic(child)) {
            iconControl = child;
        } else if (className == L"Static") {
            // The message itself: the one static control with text (its id differs by system).
            std::wstring text = TextOf(child);
            if (text.size() > content.text.size())
                content.text = text;
        }
    }
    std::sort(content.buttons.begin(), content.buttons.end());
    content.icon = RecogniseIcon(iconControl);
    return content;
}

bool PressButton(HWND box, int id)
{
    HWND button = GetDlgItem(box, id);
    return button && PostMessageW(button, BM_CLICK, 0, 0);
}
