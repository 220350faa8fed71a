// A first install that meets a player's file it cannot back up (another program holds it open
// with no sharing): the real program stops before that file with its box, and the next start
// offers the uninstall, which puts everything back.

#include <gtest/gtest.h>

#include "ludax_window.h"
#include "message_box_reader.h"
#include "payload_files.h"
#include "running_ludax.h"
#include "steam_folder.h"
#include "text.h"
#include "window_finder.h"

namespace {

const char account[] = "ludaxplayer";

TEST(InstallFatal, AFileThatCannotBeBackedUpIsNotOverwrittenAndNothingAfterIt)
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
        PostButtonClick(FindControls(ludax.window).cs16Install);
        HWND box = WaitForMessageBox(ludax.process);
        ASSERT_NE(box, nullptr);
        MessageBoxContent fatal = ReadMessageBox(box);
        EXPECT_EQ(fatal.text, L"Could not back up the file\n" + Widen(blocked) + L"\nNothing more was changed.");
        EXPECT_EQ(fatal.caption, L"Hiba:");
        EXPECT_EQ(fatal.buttons, std::vector<int>{IDOK});
        EXPECT_EQ(fatal.icon, BoxIcon::none);
        EXPECT_EQ(fatal.owner, nullptr);
        ASSERT_TRUE(PressButton(box, IDOK));
        EXPECT_EQ(ludax.process.WaitForExit(defaultTimeoutMs), std::optional<DWORD>(0xFFFFFFFF));
    }
    EXPECT_EQ(ReadFile(blocked), players);
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(ReadFile(content + records[i]), PayloadBytes("cs16", records[i])) << records[i];
    for (std::size_t i = 4; i < records.size(); ++i)
        EXPECT_FALSE(Exists(content + records[i])) << records[i];

    RunningLudax restarted;
    ASSERT_NE(restarted.window, nullptr) << restarted.failure;
    LudaxControls controls = FindControls(restarted.window);
    EXPECT_EQ(EnabledButtonsOf(controls), (EnabledButtons{true, true, false, false}));
    PostButtonClick(controls.cs16Uninstall);
    HWND done = WaitForMessageBox(restarted.process);
    ASSERT_NE(done, nullptr);
    EXPECT_EQ(ReadMessageBox(done).text, L"Counter Strike LUDAX config uninstalled!");
    ASSERT_TRUE(PressButton(done, IDOK));
    EXPECT_TRUE(WaitUntil([&] { return !IsWindow(done); }));
    EXPECT_EQ(Snapshot(steam.Account(account)), before);
}

}  // namespace
