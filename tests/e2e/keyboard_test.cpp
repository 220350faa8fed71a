// The window driven from the keyboard alone, with real key presses: the arrows in the chooser,
// Tab and Shift+Tab between the chooser and the enabled buttons, Space and Enter on a button,
// Alt+F4. And the other side of the coin: a grey button does nothing, however it is asked.

#include <gtest/gtest.h>

#include <map>

#include "ludax_session.h"
#include "player_pc.h"
#include "screen_capture.h"

namespace {

// Waits until `control` has the keyboard focus in the program.
testing::AssertionResult GetsFocus(HWND window, HWND control)
{
    if (WaitUntil([&] { return FocusOf(window) == control; }, 3000))
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "the focus is on " << FocusOf(window) << ", not on " << control;
}

}  // namespace

TEST(Keyboard, TheArrowsChangeThePlaceAndTabWalksTheChooserAndTheEnabledButtons)
{
    SteamFolder steam;
    steam.AddAccount("anna", cs16Game | cssGame);
    steam.AddAccount("zoltan", cssGame | cssBackup);
    steam.Register();
    const std::map<std::string, EnabledButtons> expected{{"anna", {true, false, true, false}},
                                                         {"zoltan", {false, false, true, true}}};
    LudaxSession ludax;
    ASSERT_NE(ludax.window, nullptr) << ludax.failure;
    HWND chooser = ludax.controls.chooser;
    // The places in the order the file system lists them, whatever their names.
    const std::vector<std::string> entries = ChooserEntries(chooser);
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_TRUE(IsWindowEnabled(chooser));
    ASSERT_TRUE(GetsFocus(ludax.window, chooser)) << "the chooser does not start with the focus";
    EXPECT_EQ(ludax.Enabled(), expected.at(entries[0]));

    TypeKey(ludax.window, VK_DOWN);
    EXPECT_TRUE(WaitUntil([&] { return ChooserSelection(chooser) == 1; }, 3000));
    EXPECT_EQ(ludax.Enabled(), expected.at(entries[1]));
    TypeKey(ludax.window, VK_UP);
    EXPECT_TRUE(WaitUntil([&] { return ChooserSelection(chooser) == 0; }, 3000));
    EXPECT_EQ(ludax.Enabled(), expected.at(entries[0]));
    EXPECT_TRUE(GetsFocus(ludax.window, chooser));

    // Tab passes over the grey buttons and wraps round to the chooser; Shift+Tab goes back.
    std::vector<HWND> enabled;
    for (int button = 0; button < 4; ++button)
        if (expected.at(entries[0])[button])
            enabled.push_back(ludax.controls.buttons[button]);
    auto shown = [](HWND control) {
        RECT rect;
        GetWindowRect(control, &rect);
        return CaptureScreen(rect).colours;
    };
    const auto unfocused = shown(enabled.front());
    for (HWND button : enabled) {
        TypeKey(ludax.window, VK_TAB);
        EXPECT_TRUE(GetsFocus(ludax.window, button));
        if (button == enabled.front()) {
            // The focus shows: the button looks different once it has it.
            EXPECT_TRUE(WaitUntil([&] { return shown(button) != unfocused; }, 2000))
                << "the focused button looks the same as before";
            EXPECT_FALSE(SendMessageW(button, WM_QUERYUISTATE, 0, 0) & UISF_HIDEFOCUS);
        }
    }
    TypeKey(ludax.window, VK_TAB);
    EXPECT_TRUE(GetsFocus(ludax.window, chooser)) << "Tab does not wrap round to the top";
    TypeKey(ludax.window, VK_TAB, Held::shift);
    EXPECT_TRUE(GetsFocus(ludax.window, enabled.back()));
    TypeKey(ludax.window, VK_TAB, Held::shift);
    EXPECT_TRUE(GetsFocus(ludax.window, enabled.front()));
}

TEST(Keyboard, SpaceAndEnterPressTheFocusedButtonClicksOnGreyOnesDoNothingAndAltF4Closes)
{
    SteamFolder steam;
    steam.AddAccount("ludaxplayer", cs16Game);
    steam.Register();
    const auto before = Snapshot(steam.Path());
    LudaxSession ludax;
    ASSERT_NE(ludax.window, nullptr) << ludax.failure;
    const LudaxControls& controls = ludax.controls;
    // One place: the chooser shows it, greyed; the first enabled button has the focus.
    EXPECT_FALSE(IsWindowEnabled(controls.chooser));
    EXPECT_EQ(ChooserEntries(controls.chooser), std::vector<std::string>{"ludaxplayer"});
    EXPECT_EQ(ChooserSelection(controls.chooser), 0);
    ASSERT_EQ(ludax.Enabled(), (EnabledButtons{true, false, false, false}));
    ASSERT_TRUE(GetsFocus(ludax.window, controls.buttons[cs16Install]));

    // As an automation or accessibility tool clicks: a posted BM_CLICK on each grey button.
    for (Button grey : {cs16Uninstall, cssInstall, cssUninstall})
        PostMessageW(controls.buttons[grey], BM_CLICK, 0, 0);
    EXPECT_EQ(WaitForMessageBox(ludax.process, 1500), nullptr) << "a grey button started its action";
    EXPECT_EQ(Snapshot(steam.Path()), before) << "a grey button changed the Steam folder";

    TypeKey(ludax.window, VK_SPACE);
    EXPECT_EQ(ludax.Answer(IDOK).text, cs16.installed);
    EXPECT_EQ(ludax.Enabled(), (EnabledButtons{true, true, false, false}));
    // Back from the box, the button keeps the focus.
    EXPECT_TRUE(GetsFocus(ludax.window, controls.buttons[cs16Install]));
    TypeKey(ludax.window, VK_TAB);
    ASSERT_TRUE(GetsFocus(ludax.window, controls.buttons[cs16Uninstall]));
    TypeKey(ludax.window, VK_RETURN);
    EXPECT_EQ(ludax.Answer(IDOK).text, cs16.uninstalled);
    EXPECT_EQ(ludax.Enabled(), (EnabledButtons{true, false, false, false}));
    EXPECT_EQ(Snapshot(steam.Path()), before);
    // The uninstall button went grey under the focus: the focus moves on to an enabled one.
    EXPECT_TRUE(GetsFocus(ludax.window, controls.buttons[cs16Install]));

    TypeKey(ludax.window, VK_F4, Held::alt);
    EXPECT_EQ(ludax.process.WaitForExit(defaultTimeoutMs), std::optional<DWORD>(0));
}
