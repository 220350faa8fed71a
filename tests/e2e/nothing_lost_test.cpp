// Nothing of the player's lost, nothing of ours left behind, driven through the real program:
// a second copy of the program, the game left open, another copy's install or uninstall
// meanwhile. (An install that cannot go on:
// fatal_box_test.cpp.)

#include <gtest/gtest.h>

#include "ludax_session.h"
#include "player_pc.h"

namespace {
const char account[] = "ludaxplayer";
}

TEST(NothingLost, ASecondStartBringsTheRunningWindowToTheFrontAndEnds)
{
    SteamFolder steam;
    steam.AddAccount(account, cs16Game);
    steam.Register();
    LudaxSession first;
    ASSERT_NE(first.window, nullptr) << first.failure;
    // The player had minimised it, and starts the program again.
    ShowWindow(first.window, SW_MINIMIZE);
    ASSERT_TRUE(WaitUntil([&] { return IsIconic(first.window) != FALSE; }, 2000));
    LaunchedProcess second(LudaxExePath());
    EXPECT_EQ(second.WaitForExit(defaultTimeoutMs), std::optional<DWORD>(0));
    EXPECT_TRUE(WaitUntil([&] { return !IsIconic(first.window) && GetForegroundWindow() == first.window; }, 2000));

    // Another program's window covers it, active in front: a third start brings it forward again.
    RECT under{};
    GetWindowRect(first.window, &under);
    HWND cover = CreateWindowExW(0, L"STATIC", L"another program", WS_POPUP | WS_VISIBLE, under.left - 20, under.top - 20,
                                 under.right - under.left + 40, under.bottom - under.top + 40, nullptr, nullptr, nullptr,
                                 nullptr);
    ASSERT_NE(cover, nullptr);
    SetForegroundWindow(cover);
    ASSERT_TRUE(WaitUntil([&] { return GetForegroundWindow() == cover; }, 2000));
    LaunchedProcess third(LudaxExePath());
    EXPECT_EQ(third.WaitForExit(defaultTimeoutMs), std::optional<DWORD>(0));
    EXPECT_TRUE(WaitUntil([&] { return GetForegroundWindow() == first.window; }, 2000)) << "it stayed behind";
    // In front of the other window, not only active: the point at its middle shows it.
    const POINT middle{(under.left + under.right) / 2, (under.top + under.bottom) / 2};
    EXPECT_EQ(GetAncestor(WindowFromPoint(middle), GA_ROOT), first.window);
    DestroyWindow(cover);
    first.Close();
}

// What the buttons look at before they act: the game left open, and the installed state on the
// disk, which another copy of the program, or the player, may have changed meanwhile.
TEST(NothingLost, EachButtonWaitsForTheGameToCloseAndReadsTheInstalledStateFromTheDisk)
{
    SteamFolder steam;
    steam.AddAccount(account, cs16Game);
    const std::string archive = steam.Account(account) + "/cs16ludax.bak";
    const auto before = Snapshot(steam.Path());
    steam.Register();
    RunningGame game("HL.exe");
    ASSERT_TRUE(game.Running());
    LudaxSession ludax;
    ASSERT_NE(ludax.window, nullptr) << ludax.failure;
    const Box running{"Message", "Counter-Strike is running. Close the game, then press Retry.", {IDCANCEL, IDRETRY},
                      BoxIcon::warning, ludax.window};
    EXPECT_EQ(ludax.Click(cs16Install, IDCANCEL), running);
    EXPECT_EQ(Snapshot(steam.Path()), before) << "Cancel changed something";
    EXPECT_FALSE(ludax.Enabled()[cs16Uninstall]);

    // Installed meanwhile by another copy: once the game is closed, Retry goes on to the reinstall
    // question; while it still runs, Retry asks again.
    WriteFile(archive, archiveHeader);
    EXPECT_EQ(ludax.Click(cs16Install, IDRETRY), running);
    EXPECT_EQ(ludax.Answer(IDRETRY, [&] { game.Close(); }), running);
    EXPECT_EQ(ludax.Answer(IDNO), Question(cs16.question, ludax.window));
    EXPECT_TRUE(WaitUntil([&] { return ludax.Enabled()[cs16Uninstall]; }));

    // Uninstalled meanwhile by hand but for a file: the uninstall still does its part and says so.
    const std::string madeByIt = steam.Account(account) + "/counter-strike/cstrike/ludax.cfg";
    WriteFile(madeByIt, "made by an install");
    WriteFile(steam.Account(account) + "/cs16ludax_1.bak", madeByIt + "\r\n");
    RemovePath(archive);
    EXPECT_EQ(ludax.Click(cs16Uninstall), Message(cs16.uninstalled, ludax.window));
    EXPECT_EQ(Snapshot(steam.Path()), before);
    EXPECT_FALSE(ludax.Enabled()[cs16Uninstall]);
    ludax.Close();
}
