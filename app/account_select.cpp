#include "account_select.h"

#include "control_placement.h"

namespace {

// Entries the open list shows before it scrolls.
constexpr int visibleEntries = 8;

int ClosedHeight(HWND chooser)
{
    RECT rect{};
    GetWindowRect(chooser, &rect);
    return rect.bottom - rect.top;
}

// The selection field's item height sets the closed height; how much the frame adds differs
// between Windows versions (and Wine), so measure and correct until it fits.
void SetClosedHeight(HWND chooser, int height)
{
    int field = static_cast<int>(SendMessageA(chooser, CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0));
    for (int attempt = 0; attempt < 4 && ClosedHeight(chooser) != height; ++attempt) {
        field -= ClosedHeight(chooser) - height;
        SendMessageA(chooser, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), field);
    }
}

}  // namespace

HWND CreateAccountSelect(HWND parent, int x, int width, int y, int height, int id)
{
    HWND chooser = CreateChildControl(parent, WS_EX_CLIENTEDGE, "COMBOBOX", "",
                                      CBS_DROPDOWNLIST | WS_VSCROLL, x, y, width, height, id);
    SetClosedHeight(chooser, height);
    return chooser;
}

int PlaceAccountSelect(HWND chooser, int x, int y, int width)
{
    // A drop-down list's window height is that of its open list; the closed field keeps its own.
    int closed = ClosedHeight(chooser);
    int entry = static_cast<int>(SendMessageA(chooser, CB_GETITEMHEIGHT, 0, 0));
    SetWindowPos(chooser, nullptr, x, y, width, closed + visibleEntries * entry + 2,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    return ClientRectOf(chooser).bottom;
}
