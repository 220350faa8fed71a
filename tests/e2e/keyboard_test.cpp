// The window driven from the keyboard alone, with real key presses: Tab and Shift+Tab between
// the chooser and the enabled buttons, arrows in the chooser, Space and Enter on a button,
// Alt+F4. And the other side of the coin: a disabled button does nothing, however it is asked.

#include <gtest/gtest.h>

#include <map>

#include "ludax_window.h"
#include "message_box_reader.h"
#include "running_ludax.h"
#include "screen_capture.h"
#include "steam_folder.h"
#include "window_finder.h"

namespace {

// Waits until `control` has the keyboard focus in the program.
::testing::AssertionResult GetsFocus(HWND window, HWND control)
{
    if (WaitUntil([&] { return FocusOf(window) == control; }, 3000))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "the focus is on " << FocusOf(window) << ", not on " << control;
}

Pixels Shown(HWND control)
{
    RECT rect;
    GetWindowRect(control, &rect);
    return CaptureScreen(rect);
}

// Presses the key that brings up a message box, checks its text and presses OK.
void ExpectBoxAfterKey(RunningLudax& ludax, WORD key, const std::wstring& text)
{
    TypeKey(ludax.window, key);
    HWND box = WaitForMessageBox(ludax.process);
    ASSERT_NE(box, nullptr) << "no message box";
    EXPECT_EQ(ReadMessageBox(box).text, text);
    ASSERT_TRUE(PressButton(box, IDOK));
    ASSERT_TRUE(WaitUntil([&] { return !IsWindow(box); }));
}

}  // namespace

TEST(Keyboard, TabAndShiftTabVisitTheChooserAndTheEnabledButtonsTopToBottom)
{
    SteamFolder steam;
    steam.AddAccount("anna", cs16Game | cssGame);
    steam.AddAccount("zoltan", cs16Game | cssGame);
    steam.Register();
    RunningLudax ludax;
    ASSERT_NE(ludax.window, nullptr) << ludax.failure;
    LudaxControls controls = FindControls(ludax.window);
    ASSERT_EQ(EnabledButtonsOf(controls), (EnabledButtons{true, false, true, false}));

    // The chooser starts with the focus; the disabled uninstall buttons are passed over.
    EXPECT_TRUE(GetsFocus(ludax.window, controls.chooser));
    Pixels unfocused = Shown(controls.cs16Install);
    TypeKey(ludax.window, VK_TAB);
    EXPECT_TRUE(GetsFocus(ludax.window, controls.cs16Install));
    // The focus shows: the button looks different once it has it.
    EXPECT_TRUE(WaitUntil([&] { return Shown(controls.cs16Install).colours != unfocused.colours; }, 2000))
        << "the focused button looks the same as before";
    EXPECT_FALSE(SendMessageW(controls.cs16Install, WM_QUERYUISTATE, 0, 0) & UISF_HIDEFOCUS);
    TypeKey(ludax.window, VK_TAB);
    EXPECT_TRUE(GetsFocus(ludax.window, controls.cssInstall));
    TypeKey(ludax.window, VK_TAB);
    EXPECT_TRUE(GetsFocus(ludax.window, controls.chooser)) << "Tab does not wrap round to the top";
    TypeKey(ludax.window, VK_TAB, Held::shift);
    EXPECT_TRUE(GetsFocus(ludax.window, controls.cssInstall));
    TypeKey(ludax.window, VK_TAB, Held::shift);
    EXPECT_TRUE(GetsFocus(ludax.window, controls.cs16Install));
    EXPECT_TRUE(ludax.process.Running());
}

TEST(Keyboard, ArrowsInTheChooserChangeTheAccountAndTheButtons)
{
    SteamFolder steam;
    steam.AddAccount("anna", cs16Game);
    steam.AddAccount("zoltan", cssGame | cssBackup);
    steam.Register();
    const std::map<std::wstring, EnabledButtons> expected{
        {L"anna", {true, false, false, false}}, {L"zoltan", {false, false, true, true}}};
    RunningLudax ludax;
    ASSERT_NE(ludax.window, nullptr) << ludax.failure;
    LudaxControls controls = FindControls(ludax.window);
    std::vector<std::wstring> entries = ChooserEntries(controls.chooser);
    ASSERT_EQ(entries.size(), 2u);
    ASSERT_TRUE(GetsFocus(ludax.window, controls.chooser));
    EXPECT_EQ(EnabledButtonsOf(controls), expected.at(entries[0]));

    TypeKey(ludax.window, VK_DOWN);
    EXPECT_TRUE(WaitUntil([&] { return ChooserSelection(controls.chooser) == 1; }, 3000));
    EXPECT_EQ(EnabledButtonsOf(controls), expected.at(entries[1]));
    EXPECT_EQ(ChooserText(controls.chooser), entries[1]);
    TypeKey(ludax.window, VK_UP);
    EXPECT_TRUE(WaitUntil([&] { return ChooserSelection(controls.chooser) == 0; }, 3000));
    EXPECT_EQ(EnabledButtonsOf(controls), expected.at(entries[0]));
    EXPECT_TRUE(GetsFocus(ludax.window, controls.chooser));
}

TEST(Keyboard, SpaceAndEnterPressTheFocusedButtonAndAltF4Closes)
{
    SteamFolder steam;
    steam.AddAccount("ludaxplayer", cs16Game);
    steam.Register();
    RunningLudax ludax;
    ASSERT_NE(ludax.window, nullptr) << ludax.failure;
    LudaxControls controls = FindControls(ludax.window);
    // With one account the chooser is disabled: the first enabled button has the focus.
    ASSERT_TRUE(GetsFocus(ludax.window, controls.cs16Install));

    ExpectBoxAfterKey(ludax, VK_SPACE, L"Counter Strike LUDAX config installed successfully!");
    EXPECT_EQ(EnabledButtonsOf(controls), (EnabledButtons{true, true, false, false}));
    // Back from the box, the button keeps the focus.
    EXPECT_TRUE(GetsFocus(ludax.window, controls.cs16Install));
    TypeKey(ludax.window, VK_TAB);
    ASSERT_TRUE(GetsFocus(ludax.window, controls.cs16Uninstall));
    ExpectBoxAfterKey(ludax, VK_RETURN, L"Counter Strike LUDAX config uninstalled!");
    EXPECT_EQ(EnabledButtonsOf(controls), (EnabledButtons{true, false, false, false}));
    EXPECT_FALSE(Exists(steam.Account("ludaxplayer") + "/cs16ludax.bak"));
    // The uninstall button went grey under the focus: the focus moves on to an enabled one.
    EXPECT_TRUE(GetsFocus(ludax.window, controls.cs16Install));

    TypeKey(ludax.window, VK_F4, Held::alt);
    EXPECT_EQ(ludax.process.WaitForExit(defaultTimeoutMs), std::optional<DWORD>(0));
}

TEST(DisabledButtons, AClickMessageToADisabledButtonRunsNothing)
{
    SteamFolder steam;
    steam.AddAccount("ludaxplayer", cs16Game);
    steam.Register();
    auto before = Snapshot(steam.Path());
    RunningLudax ludax;
    ASSERT_NE(ludax.window, nullptr) << ludax.failure;
    LudaxControls controls = FindControls(ludax.window);
    ASSERT_EQ(EnabledButtonsOf(controls), (EnabledButtons{true, false, false, false}));

    // As an automation or accessibility tool clicks: a posted BM_CLICK on each grey button.
    for (HWND button : {controls.cs16Uninstall, controls.cssInstall, controls.cssUninstall})
        PostButtonClick(button);
    EXPECT_EQ(WaitForMessageBox(ludax.process, 1500), nullptr) << "a disabled button started its action";
    EXPECT_EQ(Snapshot(steam.Path()), before) << "a disabled button changed the Steam folder";
    EXPECT_FALSE(Exists(steam.Account("ludaxplayer") + "/counter-strike source"));

    // The same message on the enabled button does act.
    PostButtonClick(controls.cs16Install);
    HWND box = WaitForMessageBox(ludax.process);
    ASSERT_NE(box, nullptr) << "the enabled button did not act on BM_CLICK";
    EXPECT_EQ(ReadMessageBox(box).text, L"Counter Strike LUDAX config installed successfully!");
    ASSERT_TRUE(PressButton(box, IDOK));
}
