// Nothing of the player's lost, nothing of ours left behind, driven through the real program:
// a player's file held open by another program, a second copy of the program, the game left
// open, a game folder moved behind a link, and a disk that fills up.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <optional>

#include "box_actions.h"
#include "ludax_window.h"
#include "message_box_reader.h"
#include "payload_files.h"
#include "running_game.h"
#include "running_ludax.h"
#include "steam_folder.h"
#include "text.h"
#include "window_finder.h"

namespace {

const char account[] = "ludaxplayer";
const std::wstring installed = L"Counter Strike LUDAX config installed successfully!";
const std::wstring uninstalled = L"Counter Strike LUDAX config uninstalled!";
const std::wstring reinstall = L"Counter Strike LUDAX config already installed, do you want to reinstall?";

// Starts the program, clicks Counter-Strike 1.6's uninstall and expects it done.
void UninstallCs16(const char* when)
{
    RunningLudax ludax;
    ASSERT_NE(ludax.window, nullptr) << ludax.failure << " " << when;
    const LudaxControls controls = FindControls(ludax.window);
    ASSERT_TRUE(IsWindowEnabled(controls.cs16Uninstall)) << when;
    EXPECT_EQ(ClickAndAnswer(ludax, controls.cs16Uninstall, IDOK).text, uninstalled) << when;
    CloseThroughCloseCorner(ludax);
}

// Starts the program, clicks Counter-Strike 1.6's install, answers Yes to the reinstall
// question the archive left by an earlier install brings, and expects it done.
void InstallCs16Again(const char* when)
{
    RunningLudax ludax;
    ASSERT_NE(ludax.window, nullptr) << ludax.failure << " " << when;
    ReinstallAnsweringYes(ludax, FindControls(ludax.window).cs16Install, reinstall, installed);
    CloseThroughCloseCorner(ludax);
}

// Clicks Counter-Strike 1.6's install and expects the program to stop with a box naming what
// it could not do.
void ExpectInstallStops(RunningLudax& ludax, const std::wstring& text)
{
    PostButtonClick(FindControls(ludax.window).cs16Install);
    HWND box = WaitForMessageBox(ludax.process);
    ASSERT_NE(box, nullptr);
    const MessageBoxContent fatal = ReadMessageBox(box);
    if (text.empty()) {
        EXPECT_EQ(fatal.text.rfind(L"Could not ", 0), 0u) << Narrow(fatal.text);
    } else {
        EXPECT_EQ(fatal.text, text);
    }
    EXPECT_EQ(fatal.caption, L"Hiba:");
    EXPECT_EQ(fatal.buttons, std::vector<int>{IDOK});
    EXPECT_EQ(fatal.icon, BoxIcon::none);
    EXPECT_EQ(fatal.owner, nullptr);
    ASSERT_TRUE(PressButton(box, IDOK));
    EXPECT_EQ(ludax.process.WaitForExit(defaultTimeoutMs), std::optional<DWORD>(0xFFFFFFFF));
}

TEST(NothingLost, AFileHeldOpenStopsTheInstallBeforeItAndTheNextInstallFinishesTheJob)
{
    SteamFolder steam;
    steam.AddAccount(account, cs16Game);
    const std::string content = steam.Account(account) + "/counter-strike/cstrike/";
    const std::vector<std::string> records = ManifestNames("cs16");
    ASSERT_GE(records.size(), 4u);
    ASSERT_EQ(records[3], "config.cfg") << "the payload's order changed; pick another file";
    const std::string blocked = content + records[3];  // the account's own config.cfg
    const std::string players = ReadFile(blocked);
    const auto before = Snapshot(steam.Account(account));
    steam.Register();

    {
        LockedFile inUse(blocked);
        ASSERT_TRUE(inUse.Locked());
        RunningLudax ludax;
        ASSERT_NE(ludax.window, nullptr) << ludax.failure;
        ExpectInstallStops(ludax, L"Could not back up the file\n" + Widen(blocked) + L"\nNothing more was changed.");
    }
    EXPECT_EQ(ReadFile(blocked), players);
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(ReadFile(content + records[i]), PayloadBytes("cs16", records[i])) << records[i];
    for (std::size_t i = 4; i < records.size(); ++i)
        EXPECT_FALSE(Exists(content + records[i])) << records[i];

    // The next start offers the uninstall, and the install again: it backs up the file it
    // stopped at before it overwrites it.
    InstallCs16Again("after the stop");
    EXPECT_EQ(ReadFile(blocked), PayloadBytes("cs16", records[3]));
    UninstallCs16("after the second install");
    EXPECT_EQ(Snapshot(steam.Account(account)), before);
}

TEST(NothingLost, ASecondStartBringsTheRunningWindowToTheFrontAndEnds)
{
    SteamFolder steam;
    steam.AddAccount(account, cs16Game);
    steam.Register();
    RunningLudax first;
    ASSERT_NE(first.window, nullptr) << first.failure;
    LaunchedProcess second(LudaxExePath());
    ASSERT_TRUE(second.Started());
    EXPECT_EQ(second.WaitForExit(defaultTimeoutMs), std::optional<DWORD>(0));
    EXPECT_TRUE(WaitUntil([&] { return GetForegroundWindow() == first.window; }, 2000));
    EXPECT_TRUE(first.process.Running());
    CloseThroughCloseCorner(first);
}

TEST(NothingLost, EachButtonReadsTheInstalledStateFromTheDiskBeforeItActs)
{
    SteamFolder steam;
    steam.AddAccount(account, cs16Game);
    steam.Register();
    RunningLudax ludax;
    ASSERT_NE(ludax.window, nullptr) << ludax.failure;
    const LudaxControls controls = FindControls(ludax.window);
    ASSERT_FALSE(IsWindowEnabled(controls.cs16Uninstall));

    // Another copy installed meanwhile: this one's install now asks the reinstall question.
    WriteFile(steam.Account(account) + "/cs16ludax.bak", std::string("\x01\0\0\0", 4));
    EXPECT_EQ(ClickAndAnswer(ludax, controls.cs16Install, IDNO).text, reinstall);
    EXPECT_TRUE(WaitUntil([&] { return IsWindowEnabled(controls.cs16Uninstall) != 0; }));

    // And uninstalled again, by hand: the uninstall still does its part and says so.
    const std::string madeByIt = steam.Account(account) + "/counter-strike/cstrike/ludax.cfg";
    WriteFile(madeByIt, "made by an install");
    WriteFile(steam.Account(account) + "/cs16ludax_1.bak", madeByIt + "\r\n");
    std::filesystem::remove(steam.Account(account) + "/cs16ludax.bak");
    EXPECT_EQ(ClickAndAnswer(ludax, controls.cs16Uninstall, IDOK).text, uninstalled);
    EXPECT_FALSE(Exists(madeByIt));
    EXPECT_FALSE(Exists(steam.Account(account) + "/cs16ludax_1.bak"));
    EXPECT_TRUE(WaitUntil([&] { return !IsWindowEnabled(controls.cs16Uninstall); }));
    CloseThroughCloseCorner(ludax);
}

TEST(NothingLost, TheGameLeftOpenIsClosedFirstOrNothingChanges)
{
    SteamFolder steam;
    steam.AddAccount(account, cs16Game);
    const auto before = Snapshot(steam.Account(account));
    steam.Register();
    RunningGame game("HL.exe");
    ASSERT_TRUE(game.Running());

    RunningLudax ludax;
    ASSERT_NE(ludax.window, nullptr) << ludax.failure;
    const LudaxControls controls = FindControls(ludax.window);
    const std::wstring running = L"Counter-Strike is running. Close the game, then press Retry.";
    ExpectBox(ClickAndAnswer(ludax, controls.cs16Install, IDCANCEL), running, L"Message", {IDCANCEL, IDRETRY},
              BoxIcon::warning, ludax.window);
    EXPECT_EQ(Snapshot(steam.Account(account)), before) << "Cancel changed something";
    EXPECT_FALSE(IsWindowEnabled(controls.cs16Uninstall));

    // Retry while the game still runs asks again; once it is closed, Retry goes on.
    PostButtonClick(controls.cs16Install);
    HWND asked = WaitForMessageBox(ludax.process);
    ASSERT_NE(asked, nullptr);
    ASSERT_TRUE(PressButton(asked, IDRETRY));
    HWND again = nullptr;
    ASSERT_TRUE(WaitUntil([&] { return (again = WaitForMessageBox(ludax.process, 100)) && again != asked; }));
    EXPECT_EQ(ReadMessageBox(again).text, running);
    game.Close();
    ASSERT_TRUE(PressButton(again, IDRETRY));
    HWND done = nullptr;
    ASSERT_TRUE(WaitUntil([&] { return (done = WaitForMessageBox(ludax.process, 100)) && done != again; }));
    EXPECT_EQ(ReadMessageBox(done).text, installed);
    ASSERT_TRUE(PressButton(done, IDOK));
    EXPECT_TRUE(WaitUntil([&] { return IsWindowEnabled(controls.cs16Uninstall) != 0; }));
    CloseThroughCloseCorner(ludax);
}

TEST(NothingLost, AGameFolderMovedBehindALinkInstallsAndUninstallsLikeAnyOther)
{
    SteamFolder steam;
    steam.AddAccount(account, 0);
    TempFolder otherDrive;
    const std::string moved = otherDrive.Path() + "/counter-strike";
    WriteFile(moved + "/cstrike/config.cfg", "name \"moved\"\r\n");
    ASSERT_TRUE(MakeLink(moved, steam.Account(account) + "/counter-strike"));
    const auto before = Snapshot(otherDrive.Path());
    steam.Register();

    RunningLudax ludax;
    ASSERT_NE(ludax.window, nullptr) << ludax.failure;
    EXPECT_EQ(ClickAndAnswer(ludax, FindControls(ludax.window).cs16Install, IDOK).text, installed);
    CloseThroughCloseCorner(ludax);
    EXPECT_EQ(ReadFile(moved + "/cstrike/config.cfg"), PayloadBytes("cs16", "config.cfg"));
    UninstallCs16("behind the link");
    EXPECT_EQ(Snapshot(otherDrive.Path()), before);
}

// A Steam folder on the small disk that tests/with-small-disk mounts (a tmpfs as a Wine drive).
TEST(NothingLost, ADiskThatFillsUpStopsTheInstallAndTheNextInstallFinishesTheJob)
{
    const char* drive = std::getenv("LUDAX_SMALL_DISK");
    if (!drive)
        GTEST_SKIP() << "no small disk: tests/with-small-disk mounts one when run as root";
    const std::string steamPath = std::string(drive) + "/Steam";
    const std::string content = steamPath + "/steamapps/" + account + "/counter-strike/cstrike/";
    WriteFile(content + "config.cfg", "name \"full\"\r\n");
    WriteFile(content + "autobuy.txt", "the player's autobuy\r\n");
    const auto before = Snapshot(steamPath);
    SetSteamPath(steamPath);

    // Room for the backups and a part of the payload only.
    ULARGE_INTEGER free{};
    ASSERT_TRUE(GetDiskFreeSpaceExA((std::string(drive) + "\\").c_str(), &free, nullptr, nullptr));
    const std::string filler = std::string(drive) + "/filler";
    const std::uint64_t room = 600 * 1024;
    ASSERT_GT(free.QuadPart, room);
    WriteFile(filler, std::string(free.QuadPart - room, 'f'));  // written: a tmpfs keeps no room for holes
    {
        RunningLudax ludax;
        ASSERT_NE(ludax.window, nullptr) << ludax.failure;
        ExpectInstallStops(ludax, L"");
    }
    std::filesystem::remove(filler);

    InstallCs16Again("after the disk filled up");
    UninstallCs16("with room again");
    EXPECT_EQ(Snapshot(steamPath), before);
    std::error_code ignored;
    std::filesystem::remove_all(steamPath, ignored);
}

}  // namespace
