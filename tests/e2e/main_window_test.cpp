// The main window as the person meets it: a borderless pop-up centred on the 1024x768 screen,
// the logo band that drags the window, its fade-in, and the close corner.

#include <gtest/gtest.h>

#include <algorithm>

#include "ludax_window.h"
#include "running_ludax.h"
#include "screen_capture.h"
#include "steam_folder.h"
#include "window_finder.h"

namespace {

class MainWindow : public testing::Test {
protected:
    void SetUp() override
    {
        steam.AddAccount("ludaxplayer", cs16Game | cssGame);
        steam.Register();
    }

    SteamFolder steam;
};

std::string Describe(const RECT& rect)
{
    return "(" + std::to_string(rect.left) + "," + std::to_string(rect.top) + ")-(" +
           std::to_string(rect.right) + "," + std::to_string(rect.bottom) + ")";
}

}  // namespace

TEST_F(MainWindow, IsABorderlessPopUpCentredWithTheControlsStackedBelowTheLogo)
{
    RunningLudax ludax;
    ASSERT_NE(ludax.window, nullptr) << ludax.failure;
    HWND window = ludax.window;

    EXPECT_EQ(TextOf(window), L"Ludax config.");
    EXPECT_EQ(ClassOf(window), L"Ludax");
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
    EXPECT_EQ(Describe(rect), Describe(RECT{337, 244, 687, 524}));
    EXPECT_EQ(Describe(client), Describe(RECT{0, 0, 350, 280}));

    struct Expected {
        const wchar_t* className;
        const wchar_t* label;  // nullptr: not compared (the chooser shows the account)
        RECT rect;
    };
    const Expected expected[] = {
        {L"ComboBox", nullptr, {0, 152, 350, 176}},
        {L"Button", L"Counter Strike LuDAX config install", {0, 178, 350, 202}},
        {L"Button", L"Counter Strike LuDAX config uninstall", {0, 204, 350, 228}},
        {L"Button", L"Counter Strike Source LuDAX config install", {0, 230, 350, 254}},
        {L"Button", L"Counter Strike Source LuDAX config uninstall", {0, 256, 350, 280}},
    };
    std::vector<HWND> children = ChildrenTopToBottom(window);
    ASSERT_EQ(children.size(), std::size(expected));
    for (std::size_t i = 0; i < children.size(); ++i) {
        SCOPED_TRACE("control " + std::to_string(i) + " from the top");
        EXPECT_EQ(ClassOf(children[i]), expected[i].className);
        if (expected[i].label) {
            EXPECT_EQ(TextOf(children[i]), expected[i].label);
        }
        EXPECT_EQ(Describe(RectInParent(children[i])), Describe(expected[i].rect));
        EXPECT_TRUE(IsWindowVisible(children[i]));
    }
}

TEST_F(MainWindow, LogoBandDragsTheWindowExceptInTheCloseCorner)
{
    RunningLudax ludax;
    ASSERT_NE(ludax.window, nullptr) << ludax.failure;
    RECT rect;
    GetWindowRect(ludax.window, &rect);

    struct Probe {
        int x, y;
        LRESULT expected;
    };
    const Probe probes[] = {
        {0, 0, HTCAPTION},     {339, 0, HTCAPTION},   {349, 11, HTCAPTION}, {0, 150, HTCAPTION},
        {349, 150, HTCAPTION}, {175, 75, HTCAPTION},  {340, 0, HTCLIENT},   {349, 10, HTCLIENT},
        {340, 10, HTCLIENT},   {345, 5, HTCLIENT},    {0, 151, HTCLIENT},   {175, 200, HTCLIENT},
    };
    for (const Probe& probe : probes) {
        LRESULT hit = SendMessageW(ludax.window, WM_NCHITTEST, 0,
                                   MAKELPARAM(rect.left + probe.x, rect.top + probe.y));
        EXPECT_EQ(hit, probe.expected) << "at window point (" << probe.x << "," << probe.y << ")";
    }
}

TEST_F(MainWindow, LogoFadesInFromYellowToTheOpaqueArtworkAndStays)
{
    Pixels logo = LoadLogoReference();
    ASSERT_FALSE(logo.colours.empty()) << "ludax_logo.ppm missing beside the test program";
    RunningLudax ludax;
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
            if (level < 0)
                return false;  // not painted yet, or torn mid-paint
            if (levels.empty() || levels.back() != level)
                levels.push_back(level);
            if (level < 255 || levels.size() < 2)
                return false;
            opaqueAt = GetTickCount();
            return true;
        },
        6000);

    ASSERT_FALSE(levels.empty()) << "the band never showed the logo over yellow";
    EXPECT_LT(levels.front(), 128) << "the band was not yellow when the window appeared";
    EXPECT_TRUE(std::is_sorted(levels.begin(), levels.end()))
        << "the fade went backwards: " << testing::PrintToString(levels);
    EXPECT_GE(levels.size(), 5u) << "the logo jumped instead of fading: "
                                 << testing::PrintToString(levels);
    ASSERT_NE(opaqueAt, 0u) << "the logo did not become opaque within 6 s: "
                            << testing::PrintToString(levels);
    // 255 ticks of 10 ms: not much sooner than 2.5 s after the window appeared.
    EXPECT_GE(opaqueAt - shownAt, 1500u);

    // Once opaque, the band is the artwork itself and stays so through a full repaint.
    EXPECT_EQ(LogoMismatches(CaptureScreen(band), logo), 0);
    RedrawWindow(ludax.window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    EXPECT_TRUE(WaitUntil([&] { return LogoMismatches(CaptureScreen(band), logo) == 0; }, 2000));
    // The yellow background shows through the 2-pixel gaps below the logo and between controls.
    Pixels window = CaptureScreen(rect);
    const COLORREF yellow = RGB(255, 255, 0);
    for (int y : {150, 151, 176, 177, 202, 203, 228, 229, 254, 255})
        for (int x : {0, 175, 349})
            EXPECT_EQ(window.At(x, y), yellow) << "gap pixel (" << x << "," << y << ")";
    // The version label: orange text in the top-left corner.
    Pixels shown = CaptureScreen(band);
    int orange = 0;
    for (int y = 0; y < 24; ++y)
        for (int x = 0; x < 96; ++x)
            if (Near(shown.At(x, y), RGB(245, 116, 32), 24))
                ++orange;
    EXPECT_GE(orange, 10) << "no orange version label in the top-left corner";
}

TEST_F(MainWindow, ClickInTheCloseCornerEndsTheProgramOtherClicksDoNothing)
{
    {
        SCOPED_TRACE("a click in the logo's close box");
        RunningLudax ludax;
        ASSERT_NE(ludax.window, nullptr) << ludax.failure;
        ClickClient(ludax.window, 300, 100);
        ClickClient(ludax.window, 175, 200);
        // A click is handled in an instant; a second is ample to see nothing happen.
        EXPECT_EQ(ludax.process.WaitForExit(1000), std::nullopt);
        EXPECT_TRUE(IsWindowVisible(ludax.window));
        ClickClient(ludax.window, 345, 5);
        EXPECT_EQ(ludax.process.WaitForExit(defaultTimeoutMs), std::optional<DWORD>(0));
    }
    {
        SCOPED_TRACE("the close area ends at 42 columns from the right and 29 rows from the top");
        RunningLudax ludax;
        ASSERT_NE(ludax.window, nullptr) << ludax.failure;
        ClickClient(ludax.window, 307, 28);
        ClickClient(ludax.window, 308, 29);
        EXPECT_EQ(ludax.process.WaitForExit(1000), std::nullopt);
        ClickClient(ludax.window, 308, 28);
        EXPECT_EQ(ludax.process.WaitForExit(defaultTimeoutMs), std::optional<DWORD>(0));
    }
}

namespace {

// The display set to another scale for the programs started while it lives (Wine reads the
// setting when a program starts); back to 100 % afterwards.
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

}  // namespace

TEST_F(MainWindow, At150PercentEverySizeGrowsByHalfAndTheCornerStillCloses)
{
    DisplayScale scale(144);
    RunningLudax ludax;
    ASSERT_NE(ludax.window, nullptr) << ludax.failure;
    RECT rect, client;
    GetWindowRect(ludax.window, &rect);
    GetClientRect(ludax.window, &client);
    // 350 x 280 becomes 525 x 420, centred on the 1024 x 768 screen.
    EXPECT_EQ(Describe(client), Describe(RECT{0, 0, 525, 420}));
    EXPECT_EQ(Describe(rect), Describe(RECT{249, 174, 774, 594}));
    // Below the 225-pixel logo band: 3-pixel gaps and 36-pixel controls.
    const RECT expected[] = {{0, 228, 525, 264}, {0, 267, 525, 303}, {0, 306, 525, 342},
                             {0, 345, 525, 381}, {0, 384, 525, 420}};
    std::vector<HWND> children = ChildrenTopToBottom(ludax.window);
    ASSERT_EQ(children.size(), std::size(expected));
    for (std::size_t i = 0; i < children.size(); ++i)
        EXPECT_EQ(Describe(RectInParent(children[i])), Describe(expected[i])) << "control " << i;

    // The band drags the window down to its last row; the close corner, now 15 wide, does not.
    for (POINT caption : {POINT{0, 0}, POINT{262, 112}, POINT{509, 0}, POINT{524, 225}})
        EXPECT_EQ(SendMessageW(ludax.window, WM_NCHITTEST, 0, MAKELPARAM(rect.left + caption.x, rect.top + caption.y)),
                  HTCAPTION)
            << "at (" << caption.x << "," << caption.y << ")";
    EXPECT_EQ(SendMessageW(ludax.window, WM_NCHITTEST, 0, MAKELPARAM(rect.left + 511, rect.top + 14)), HTCLIENT);
    ClickClient(ludax.window, 511, 14);
    EXPECT_EQ(ludax.process.WaitForExit(defaultTimeoutMs), std::optional<DWORD>(0));
}
