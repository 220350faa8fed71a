// The program's one window: creation, the window procedure, painting, the logo's fade,
// hit-testing (the logo band is the title bar), the close box and the keyboard focus.
#include "ludax.h"

#include <windowsx.h>

#include <cstdlib>

#include "resources.h"
#include "steam_path.h"
#include "texts.h"
#include "wide_text.h"

namespace {

// The fade's periodic timer: 10 ms, id 1.
constexpr UINT_PTR fadeTimerId = 1;
constexpr UINT fadeInterval = 10;

// The close box drawn into the logo's top-right corner. The hit test leaves this corner of the
// logo band to the client area; the rest of the band is title bar.
constexpr SIZE closeCorner{10, 11};
// A click within this area, measured from the logo's top-right corner, closes the window. It is
// larger than the corner, so the whole box counts; in practice only the corner's clicks reach it.
constexpr SIZE closeClickArea{42, 29};

}  // namespace

void Ludax::EndWithMessage(const std::string& text, const char* caption, UINT style, const std::string& what)
{
    if (!text.empty())
        MessageBoxW(nullptr, Wide(text).c_str(), Wide(caption).c_str(), style);
    if (log)
        log->End(-1, what);
    std::exit(-1);
}

Ludax::Ludax(const SteamPath& steam, std::optional<std::vector<SteamAccount>> found, RunLog* log)
    : log(log), actions(log ? log->Actions() : ActionLog())
{
    if (HDC screen = GetDC(nullptr)) {
        dpi = GetDeviceCaps(screen, LOGPIXELSY) > 0 ? GetDeviceCaps(screen, LOGPIXELSY) : 96;
        ReleaseDC(nullptr, screen);
    }
    CreateNativeWindow();
    if (steam.read == sys::RegistryRead::keyMissing)
        EndWithMessage(texts::registryFailed, texts::errorCaption, MB_OK, texts::summary::steamNotFound);
    if (steam.read == sys::RegistryRead::valueUnreadable)
        EndWithMessage(texts::registryFailed, texts::hibaExclamationCaption, MB_OK, texts::summary::steamNotFound);
    steamappsPath = steam.steamappsPath;
    logo = LudaxImage::LudaxLogo();  // a private copy: the fade rewrites its alpha
    SetAlpha(logo, fadeLevel);       // invisible until the fade brings it in
    SetWindowTextW(window, Wide(texts::windowTitle).c_str());
    CreateControls();
    FindGames(std::move(found));
    SelectAccount();
    Centre();
    ConnectButtons();
    ShowWindow(window, SW_SHOW);
    UpdateWindow(window);
    SetTimer(window, fadeTimerId, fadeInterval, nullptr);
}

Ludax::~Ludax()
{
    if (window != nullptr)
        DestroyWindow(window);
    while (!accounts.empty())
        accounts.pop_back();  // last first
}

void Ludax::Run()
{
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        // The dialog manager's keyboard handling: Tab and Shift+Tab between the chooser and the
        // enabled buttons, Enter on the focused button.
        if (window != nullptr && IsDialogMessageW(window, &message))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

// The window is laid out in pixels at 100 % (96 pixels per inch); on a screen set larger every
// size grows with it, so that the text, drawn at the screen's resolution, keeps its room.
int Ludax::Scaled(int pixels) const { return MulDiv(pixels, dpi, 96); }

// The logo band's size on the screen: the logo's own size at 100 %.
SIZE Ludax::Band() const { return SIZE{Scaled(logo.width), Scaled(logo.height)}; }

void Ludax::CreateNativeWindow()
{
    HINSTANCE instance = GetModuleHandleW(nullptr);
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.style = CS_SAVEBITS;
    windowClass.lpfnWndProc = WindowProcedure;
    windowClass.hInstance = instance;
    windowClass.hCursor = LoadCursor(nullptr, IDC_ARROW);
    // The shell shows the large icon in Alt+Tab, the small one on the taskbar.
    windowClass.hIcon = static_cast<HICON>(LoadImageW(instance, MAKEINTRESOURCEW(LUDAX_ICON), IMAGE_ICON,
                                                      GetSystemMetrics(SM_CXICON), GetSystemMetrics(SM_CYICON), 0));
    windowClass.hIconSm = static_cast<HICON>(LoadImageW(instance, MAKEINTRESOURCEW(LUDAX_ICON), IMAGE_ICON,
                                                        GetSystemMetrics(SM_CXSMICON),
                                                        GetSystemMetrics(SM_CYSMICON), 0));
    windowClass.lpszClassName = ludaxWindowClass;
    if (RegisterClassExW(&windowClass) == 0)
        EndWithMessage(std::string(), nullptr, 0, texts::summary::windowFailed);  // a program without its window has nothing to offer
    // Borderless and captionless; hidden until the constructor has laid it out and centred it.
    if (CreateWindowExW(0, ludaxWindowClass, L"", WS_POPUP | WS_CLIPCHILDREN, 0, 0, 0, 0, nullptr, nullptr,
                        instance, this) == nullptr)
        EndWithMessage(std::string(), nullptr, 0, texts::summary::windowFailed);  // a program without its window has nothing to offer
}

LRESULT CALLBACK Ludax::WindowProcedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCCREATE) {
        auto* self = static_cast<Ludax*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
        self->window = hwnd;
        SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    }
    auto* self = reinterpret_cast<Ludax*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
    if (self == nullptr)
        return DefWindowProcW(hwnd, message, wParam, lParam);
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(hwnd, GWLP_USERDATA, 0);
        self->window = nullptr;
        return DefWindowProcW(hwnd, message, wParam, lParam);
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
    case DM_GETDEFID:
        return DefaultButton();
    case WM_ACTIVATE:
        Activate(LOWORD(wParam) != WA_INACTIVE);
        return 0;
    case WM_CLOSE:  // Alt+F4, and whoever else asks the window to close
        Close();
        return 0;
    case WM_DESTROY:
        PostQuitMessage(0);
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

// The logo band is the title bar: dragging it moves the window. Its top-right corner (the
// close box) stays client area so that a click there reaches LeftDown. The row just below the
// logo still counts as band.
LRESULT Ludax::HitTest(LPARAM screenPoint)
{
    RECT rect{};
    GetWindowRect(window, &rect);
    int dx = GET_X_LPARAM(screenPoint) - rect.left;
    int dy = GET_Y_LPARAM(screenPoint) - rect.top;
    SIZE band = Band();
    bool inCloseCorner = dx >= band.cx - Scaled(closeCorner.cx) && dy < Scaled(closeCorner.cy);
    if (dy <= band.cy && !inCloseCorner)
        return HTCAPTION;
    return DefWindowProcW(window, WM_NCHITTEST, 0, screenPoint);
}

void Ludax::LeftDown(POINT p)
{
    if (p.y < Scaled(closeClickArea.cy) && p.x >= Band().cx - Scaled(closeClickArea.cx))
        Close();
}

// The close box, Alt+F4 and a WM_CLOSE all end Run() the same way: exit status 0.
void Ludax::Close() { DestroyWindow(window); }

void Ludax::Paint()
{
    PAINTSTRUCT paint;
    HDC dc = BeginPaint(window, &paint);
    RECT client{};
    GetClientRect(window, &client);
    HBRUSH yellow = CreateSolidBrush(backgroundYellow);
    FillRect(dc, &client, yellow);
    DeleteObject(yellow);
    DrawLogoBand(dc, logo, Band());
    EndPaint(window, &paint);
}

void Ludax::FadeStep()
{
    fadeLevel = static_cast<std::uint8_t>(fadeUp ? fadeLevel + 1 : fadeLevel - 1);
    if (fadeLevel == 255)
        fadeUp = false;
    if (fadeLevel == 0)
        fadeUp = true;
    SetAlpha(logo, fadeLevel);

    // Straight onto the window, outside the paint cycle: only the logo band changes.
    HDC dc = GetDC(window);
    DrawLogoBand(dc, logo, Band());
    ReleaseDC(window, dc);

    // The fade ends at full opacity; it never runs back down.
    if (fadeLevel == 255)
        KillTimer(window, fadeTimerId);
}

// Leaving the window, it remembers which control had the focus; coming back (after a message
// box, or from another program) that control gets it again, or the next one still enabled.
void Ludax::Activate(bool active)
{
    if (!active) {
        HWND current = GetFocus();
        if (current != nullptr && IsChild(window, current))
            focus = current;
        return;
    }
    KeepFocusUsable();
}

// Enables or disables a control. Disabling the focused control takes the focus away from it,
// so it is noted first: KeepFocusUsable then passes the focus on to the next control.
void Ludax::Enable(HWND control, bool enabled)
{
    if (GetFocus() == control)
        focus = control;
    EnableWindow(control, enabled);
}

// Keeps the keyboard focus on a control that can take it: the remembered one while it is
// enabled, else the next enabled one in the tab order, else the window itself (so that Alt+F4
// still works when no control is enabled).
void Ludax::KeepFocusUsable()
{
    HWND current = GetFocus();
    if (current != nullptr && IsChild(window, current))
        focus = current;
    if (focus != nullptr && !IsWindowEnabled(focus))
        focus = GetNextDlgTabItem(window, focus, FALSE);
    if (focus == nullptr)
        focus = GetNextDlgTabItem(window, nullptr, FALSE);
    if (focus != nullptr && !IsWindowEnabled(focus))
        focus = nullptr;
    if (GetActiveWindow() == window)
        SetFocus(focus != nullptr ? focus : window);
}
