// ludax_bare_window: the yardstick of Ludax.exe's launch. A borderless window of the same size
// with the same manifest and the same five controls, and nothing else: no registry, no folders,
// no logo, no payload. It closes on WM_CLOSE like Ludax.exe.
#include <windows.h>

#include <cstdint>

namespace {

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_DESTROY) {
        PostQuitMessage(0);
        return 0;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

HWND Control(HWND parent, DWORD exStyle, const char* className, const char* label, DWORD style, int y, int height,
             int id)
{
    HWND control = CreateWindowExA(exStyle, className, label, WS_CHILD | WS_VISIBLE | WS_TABSTOP | style, 0, y, 350,
                                   height, parent, reinterpret_cast<HMENU>(static_cast<std::intptr_t>(id)),
                                   GetModuleHandleA(nullptr), nullptr);
    SendMessageA(control, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
    return control;
}

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int)
{
    WNDCLASSEXA windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = Procedure;
    windowClass.hInstance = instance;
    windowClass.hCursor = LoadCursor(nullptr, IDC_ARROW);
    windowClass.hbrBackground = CreateSolidBrush(RGB(255, 255, 0));
    windowClass.lpszClassName = "LudaxBareWindow";
    if (RegisterClassExA(&windowClass) == 0)
        return 1;
    HWND window = CreateWindowExA(0, windowClass.lpszClassName, "Ludax config.", WS_POPUP | WS_CLIPCHILDREN, 337,
                                  244, 350, 280, nullptr, nullptr, instance, nullptr);
    if (window == nullptr)
        return 1;
    Control(window, WS_EX_CLIENTEDGE, "COMBOBOX", "", CBS_DROPDOWNLIST | WS_VSCROLL, 152, 200, 101);
    Control(window, 0, "BUTTON", "Counter Strike LuDAX config install", BS_PUSHBUTTON, 178, 24, 102);
    Control(window, 0, "BUTTON", "Counter Strike LuDAX config uninstall", BS_PUSHBUTTON, 204, 24, 103);
    Control(window, 0, "BUTTON", "Counter Strike Source LuDAX config install", BS_PUSHBUTTON, 230, 24, 104);
    Control(window, 0, "BUTTON", "Counter Strike Source LuDAX config uninstall", BS_PUSHBUTTON, 256, 24, 105);
    ShowWindow(window, SW_SHOW);
    UpdateWindow(window);
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    return 0;
}
