// The main window as the person meets it: a borderless pop-up centred on the 1024x768 screen
// with the controls below the logo, the logo band that drags the window, the close corner, the
// same at 150 %; and the logo's fade-in.

#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>

#include <algorithm>

#include "ludax_session.h"
#include "player_pc.h"
#include "screen_capture.h"

namespace {

std::string Describe(const RECT& rect)
{
    return "(" + std::to_string(rect.left) + "," + std::to_string(rect.top) + ")-(" + std::to_string(rect.right) + "," +
           std::to_string(rect.bottom) + ")";
}

// The display set to a scale for the programs started while it lives (Wine reads the setting
// when a program starts); back to the default afterwards.
class DisplayScale {
public:
    explicit DisplayScale(DWORD dotsPerInch)
    {
        RegSetKeyValueW(HKEY_CURRENT_USER, L"Control Panel\\Desktop", L"LogPixels", REG_DWORD, &dotsPerInch,
                        sizeof dotsPerInch);
    }
    ~DisplayScale() { RegDeleteKeyValueW(HKEY_CURRENT_USER, L"Control Panel\\Desktop", L"LogPixels"); }
    DisplayScale(const DisplayScale&) = delete;
    DisplayScale& operator=(const DisplayScale&) = delete;
};

struct Scale {
    const char* name;
    DWORD dotsPerInch;
    RECT window;                // on the screen
    std::vector<RECT> controls;  // the chooser and the four buttons, top to bottom, in the window
    std::vector<std::pair<POINT, LRESULT>> hits;  // window points and what WM_NCHITTEST says there
    std::vector<POINT> idleClicks;                // client points where a click does nothing
    POINT closeClick;                             // one that closes
};

void PrintTo(const Scale& scale, std::ostream* out) { *out << scale.name; }

const Scale scales[] = {
    {"At100Percent", 96, {337, 244, 687, 524},
     {{0, 152, 350, 176}, {0, 178, 350, 202}, {0, 204, 350, 228}, {0, 230, 350, 254}, {0, 256, 350, 280}},
     // The band down to its last row drags the window, except the 10 x 11 close corner.
     {{{0, 0}, HTCAPTION}, {{339, 0}, HTCAPTION}, {{349, 11}, HTCAPTION}, {{0, 150}, HTCAPTION},
      {{349, 150}, HTCAPTION}, {{175, 75}, HTCAPTION}, {{340, 0}, HTCLIENT}, {{349, 10}, HTCLIENT},
      {{340, 10}, HTCLIENT}, {{345, 5}, HTCLIENT}, {{0, 151}, HTCLIENT}, {{175, 200}, HTCLIENT}},
     // The close area ends at 42 columns from the right and 29 rows from the top.
     {{300, 100}, {175, 200}, {307, 28}, {308, 29}}, {308, 28}},
    {"At150Percent", 144, {249, 174, 774, 594},
     // Below the 225-pixel band: 3-pixel gaps and 36-pixel controls.
     {{0, 228, 525, 264}, {0, 267, 525, 303}, {0, 306, 525, 342}, {0, 345, 525, 381}, {0, 384, 525, 420}},
     {{{0, 0}, HTCAPTION}, {{262, 112}, HTCAPTION}, {{509, 0}, HTCAPTION}, {{524, 225}, HTCAPTION},
      {{511, 14}, HTCLIENT}},
     {{262, 112}, {262, 300}}, {511, 14}},
};

class MainWindow : public testing::TestWithParam<Scale> {};

}  // namespace

TEST_P(MainWindow, IsABorderlessPopUpCentredWithTheControlsBelowTheLogoThatDragsItAndClosesIt)
{
    const Scale& scale = GetParam();
    DisplayScale dpi(scale.dotsPerInch);
    SteamFolder steam;
    steam.AddAccount("ludaxplayer", cs16Game | cssGame);
    steam.Register();
    LudaxSession ludax;
    ASSERT_NE(ludax.window, nullptr) << ludax.failure;
    HWND window = ludax.window;

    EXPECT_EQ(TextOf(window), "Ludax config.");
    LONG style = GetWindowLongW(window, GWL_STYLE);
    EXPECT_TRUE(style & WS_POPUP);
    EXPECT_FALSE(style & (WS_CAPTION | WS_BORDER | WS_DLGFRAME | WS_THICKFRAME | WS_SYSMENU));
    EXPECT_FALSE(GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_TOPMOST);
    DWORD classStyle = GetClassLongW(window, GCL_STYLE);
    EXPECT_TRUE(classStyle & CS_SAVEBITS);
    EXPECT_FALSE(classStyle & CS_DROPSHADOW);
    EXPECT_EQ(GetWindow(window, GW_OWNER), nullptr);

    RECT rect, client;
    GetWindowRect(window, &rect);
    GetClientRect(window, &client);
    EXPECT_EQ(Describe(rect), Describe(scale.window));
    EXPECT_EQ(Describe(client), Describe({0, 0, scale.window.right - scale.window.left, scale.window.bottom - scale.window.top}));
    // The chooser, then the buttons found by their labels, in this order on the screen.
    const std::vector<HWND> children = ChildrenTopToBottom(window);
    const LudaxControls& controls = ludax.controls;
    EXPECT_EQ(children, (std::vector<HWND>{controls.chooser, controls.buttons[cs16Install], controls.buttons[cs16Uninstall],
                                           controls.buttons[cssInstall], controls.buttons[cssUninstall]}));
    for (std::size_t i = 0; i < children.size() && i < scale.controls.size(); ++i) {
        EXPECT_EQ(Describe(RectInParent(children[i])), Describe(scale.controls[i])) << "control " << i << " from the top";
        EXPECT_TRUE(IsWindowVisible(children[i]));
    }
    // The manifest brings Common Controls 6: only its combo box knows CB_GETMINVISIBLE (30
    // entries unless set otherwise); the old one answers 0.
    EXPECT_EQ(SendMessageW(controls.chooser, CB_GETMINVISIBLE, 0, 0), 30);

    for (const auto& [point, expected] : scale.hits)
        EXPECT_EQ(SendMessageW(window, WM_NCHITTEST, 0, MAKELPARAM(rect.left + point.x, rect.top + point.y)), expected)
            << "at window point (" << point.x << "," << point.y << ")";
    for (POINT click : scale.idleClicks)
        ClickClient(window, click.x, click.y);
    // A click is handled in an instant; a second is ample to see nothing happen.
    EXPECT_EQ(ludax.process.WaitForExit(1000), std::nullopt);
    EXPECT_TRUE(IsWindowVisible(window));
    ClickClient(window, scale.closeClick.x, scale.closeClick.y);
    EXPECT_EQ(ludax.process.WaitForExit(defaultTimeoutMs), std::optional<DWORD>(0));
}

INSTANTIATE_TEST_SUITE_P(Scales, MainWindow, testing::ValuesIn(scales),
                         [](const testing::TestParamInfo<Scale>& info) { return info.param.name; });

TEST(MainWindowLogo, FadesInFromYellowToTheOpaqueArtworkAndStays)
{
    Pixels logo = LoadLogoReference();
    ASSERT_FALSE(logo.colours.empty()) << "ludax_logo.ppm missing beside the test program";
    SteamFolder steam;
    steam.AddAccount("ludaxplayer", cs16Game);
    steam.Register();
    LudaxSession ludax;
    ASSERT_NE(ludax.window, nullptr) << ludax.failure;
    DWORD shownAt = GetTickCount();
    RECT rect;
    GetWindowRect(ludax.window, &rect);
    RECT band{rect.left, rect.top, rect.left + 350, rect.top + 150};

    // Every frame seen: the level at which the band shows the artwork over yellow.
    std::vector<int> levels;
    DWORD opaqueAt = 0;
    WaitUntil(
        [&] {
            int level = ShownFadeLevel(CaptureScreen(band), logo);
            if (level >= 0 && (levels.empty() || levels.back() != level))
                levels.push_back(level);  // not below 0: not painted yet, or torn mid-paint
            if (level < 255 || levels.size() < 2)
                return false;
            opaqueAt = GetTickCount();
            return true;
        },
        6000);
    ASSERT_FALSE(levels.empty()) << "the band never showed the logo over yellow";
    EXPECT_LT(levels.front(), 128) << "the band was not yellow when the window appeared";
    EXPECT_TRUE(std::is_sorted(levels.begin(), levels.end())) << "the fade went back: " << testing::PrintToString(levels);
    EXPECT_GE(levels.size(), 5u) << "the logo jumped instead of fading: " << testing::PrintToString(levels);
    ASSERT_NE(opaqueAt, 0u) << "the logo did not become opaque within 6 s: " << testing::PrintToString(levels);
    // 255 ticks of 10 ms: not much sooner than 2.5 s after the window appeared.
    EXPECT_GE(opaqueAt - shownAt, 1500u);

    // Once opaque, the band is the artwork itself and stays so through a full repaint.
    EXPECT_EQ(LogoMismatches(CaptureScreen(band), logo), 0);
    RedrawWindow(ludax.window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    EXPECT_TRUE(WaitUntil([&] { return LogoMismatches(CaptureScreen(band), logo) == 0; }, 2000));
    // The yellow background shows through the 2-pixel gaps below the logo and between controls.
    Pixels window = CaptureScreen(rect);
    for (int y : {150, 151, 176, 177, 202, 203, 228, 229, 254, 255})
        for (int x : {0, 175, 349})
            EXPECT_EQ(window.At(x, y), RGB(255, 255, 0)) << "gap pixel (" << x << "," << y << ")";
    // The version label: orange text in the top-left corner.
    int orange = 0;
    for (int y = 0; y < 24; ++y)
        for (int x = 0; x < 96; ++x)
            orange += Near(window.At(x, y), RGB(245, 116, 32), 24);
    EXPECT_GE(orange, 10) << "no orange version label in the top-left corner";
}
