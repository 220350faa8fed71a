// The native window: its class, its window procedure and the mouse handling of the logo band.
#include <windowsx.h>

#include "ludax.h"

namespace {

constexpr char ludaxClassName[] = "Ludax";

}  // namespace

void Ludax::CreateNativeWindow()
{
    HINSTANCE instance = GetModuleHandleA(nullptr);
    WNDCLASSEXA windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.style = CS_SAVEBITS;
    windowClass.lpfnWndProc = WindowProcedure;
    windowClass.hInstance = instance;
    windowClass.hCursor = LoadCursor(nullptr, IDC_ARROW);
    windowClass.lpszClassName = ludaxClassName;
    RegisterClassExA(&windowClass);
    // Borderless and captionless; hidden until the constructor has laid it out and centred it.
    CreateWindowExA(0, ludaxClassName, "", WS_POPUP | WS_CLIPCHILDREN, 0, 0, 0, 0, nullptr, nullptr,
                    instance, this);
}

LRESULT CALLBACK Ludax::WindowProcedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCCREATE) {
        auto* self = static_cast<Ludax*>(reinterpret_cast<CREATESTRUCTA*>(lParam)->lpCreateParams);
        self->window = hwnd;
        SetWindowLongPtrA(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    }
    auto* self = reinterpret_cast<Ludax*>(GetWindowLongPtrA(hwnd, GWLP_USERDATA));
    if (self == nullptr)
        return DefWindowProcA(hwnd, message, wParam, lParam);
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrA(hwnd, GWLP_USERDATA, 0);
        self->window = nullptr;
        return DefWindowProcA(hwnd, message, wParam, lParam);
    }
    return self->WindowProc(message, wParam, lParam);
}

LRESULT Ludax::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_NCHITTEST:
        return HitTest(lParam);
    case WM_LBUTTONDOWN:
        LeftDown(POINT{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
        return 0;
    case WM_PAINT:
        Paint();
        return 0;
    case WM_TIMER:
        if (wParam == fadeTimerId)
            FadeStep();
        return 0;
    case WM_COMMAND:
        Command(wParam, lParam);
        return 0;
    case WM_DESTROY:
        PostQuitMessage(0);
        return 0;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

// The logo band is the title bar: dragging it moves the window. Its top-right corner (the
// close box) stays client area so that a click there reaches LeftDown.
LRESULT Ludax::HitTest(LPARAM screenPoint)
{
    RECT rect{};
    GetWindowRect(window, &rect);
    int dx = GET_X_LPARAM(screenPoint) - rect.left;
    int dy = GET_Y_LPARAM(screenPoint) - rect.top;
    if (dy <= logo.height && (dx < logo.width - 10 || dy > 10))
        return HTCAPTION;
    return DefWindowProcA(window, WM_NCHITTEST, 0, screenPoint);
}

void Ludax::LeftDown(POINT p)
{
    // Wider than the corner the hit test leaves to the client area, so the whole box counts.
    if (p.y <= 28 && p.x >= logo.width - 42)
        DestroyWindow(window);
}

void Ludax::Command(WPARAM wParam, LPARAM lParam)
{
    HWND control = reinterpret_cast<HWND>(lParam);
    for (const Connection& connection : connections)
        if (connection.control == control && connection.notification == HIWORD(wParam)) {
            (this->*connection.action)();
            return;
        }
}
