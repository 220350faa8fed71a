#include "control_placement.h"

#include <cstdint>

HWND CreateChildControl(HWND parent, DWORD exStyle, const char* className, const char* label,
                        DWORD style, int x, int y, int width, int height, int id)
{
    HWND control = CreateWindowExA(exStyle, className, label, WS_CHILD | WS_VISIBLE | WS_TABSTOP | style,
                                   x, y, width, height, parent,
                                   reinterpret_cast<HMENU>(static_cast<std::intptr_t>(id)),
                                   GetModuleHandleA(nullptr), nullptr);
    SendMessageA(control, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
    return control;
}

RECT ClientRectOf(HWND control)
{
    RECT rect{};
    GetWindowRect(control, &rect);
    MapWindowPoints(HWND_DESKTOP, GetParent(control), reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

int PlaceControl(HWND control, int x, int y, int width)
{
    RECT rect = ClientRectOf(control);
    SetWindowPos(control, nullptr, x, y, width, rect.bottom - rect.top, SWP_NOZORDER | SWP_NOACTIVATE);
    return ClientRectOf(control).bottom;
}
