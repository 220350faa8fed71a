#include "message_box_reader.h"

#include <algorithm>

#include "screen_capture.h"

namespace {

// True when the screen shows the system icon in `shown` wherever the icon is opaque (the pixels
// that come out the same on a black and on a white background).
bool ShowsIcon(const Pixels& shown, LPCWSTR systemIcon)
{
    HICON icon = LoadIconW(nullptr, systemIcon);
    int size = std::min(shown.width, shown.height);
    if (!icon || size <= 0)
        return false;
    Pixels onBlack = RenderIcon(icon, size, RGB(0, 0, 0));
    Pixels onWhite = RenderIcon(icon, size, RGB(255, 255, 255));
    int opaque = 0, matching = 0;
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x)
            if (onBlack.At(x, y) == onWhite.At(x, y)) {
                ++opaque;
                matching += Near(shown.At(x, y), onBlack.At(x, y), 8);
            }
    return opaque >= size * size / 4 && matching == opaque;
}

BoxIcon RecogniseIcon(HWND iconControl)
{
    if (!iconControl || !SendMessageW(iconControl, STM_GETICON, 0, 0))
        return BoxIcon::none;
    // The system icons' resource ids: IDI_HAND, IDI_QUESTION, IDI_EXCLAMATION, IDI_ASTERISK.
    const BoxIcon icons[] = {BoxIcon::error, BoxIcon::question, BoxIcon::warning, BoxIcon::information};
    BoxIcon seen = BoxIcon::unrecognised;
    // The box may not have painted yet: look again until one icon matches.
    WaitUntil(
        [&] {
            RECT area;
            GetWindowRect(iconControl, &area);
            Pixels shown = CaptureScreen(area);
            for (int i = 0; i < 4 && seen == BoxIcon::unrecognised; ++i)
                if (ShowsIcon(shown, MAKEINTRESOURCEW(32513 + i)))
                    seen = icons[i];
            return seen != BoxIcon::unrecognised;
        },
        3000);
    return seen;
}

}  // namespace

bool Box::operator==(const Box& other) const
{
    return caption == other.caption && text == other.text && buttons == other.buttons && icon == other.icon &&
           owner == other.owner;
}

std::ostream& operator<<(std::ostream& out, const Box& box)
{
    const char* icons[] = {"no icon", "error icon", "question icon", "warning icon", "information icon", "unrecognised icon"};
    out << "\"" << box.caption << "\": \"" << box.text << "\", buttons";
    for (int id : box.buttons)
        out << " " << id;
    return out << ", " << icons[static_cast<int>(box.icon)] << ", owner " << box.owner;
}

HWND WaitForMessageBox(const LaunchedProcess& process, DWORD timeoutMs)
{
    return WaitForWindow(process, [](HWND window) { return ClassOf(window) == L"#32770"; }, timeoutMs);
}

Box ReadMessageBox(HWND box)
{
    Box content;
    content.caption = TextOf(box);
    content.owner = GetWindow(box, GW_OWNER);
    HWND iconControl = nullptr;
    for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        if (!IsWindowVisible(child))
            continue;
        if (ClassOf(child) == L"Button")
            content.buttons.push_back(GetDlgCtrlID(child));
        else if (ClassOf(child) == L"Static" && (GetWindowLongW(child, GWL_STYLE) & SS_TYPEMASK) == SS_ICON)
            iconControl = child;
        else if (ClassOf(child) == L"Static" && TextOf(child).size() > content.text.size())
            content.text = TextOf(child);  // the message itself: the static control with text
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
