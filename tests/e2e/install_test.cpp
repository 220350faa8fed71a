// Install and uninstall driven through the window's buttons, as a player does it: the message
// boxes and their answers, the buttons' states, and what ends up on disk.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "box_actions.h"
#include "ludax_window.h"
#include "message_box_reader.h"
#include "payload_files.h"
#include "running_ludax.h"
#include "steam_folder.h"
#include "text.h"
#include "window_finder.h"

namespace {

struct Game {
    const char* testName;
    const char* gameFolder;     // below the account folder
    const char* payload;        // payload/<payload>.manifest, payload/<payload>/
    const char* archive;        // backup archive, in the account folder
    const char* removalList;    // in the account folder
    HWND LudaxControls::*install;
    HWND LudaxControls::*uninstall;
    const wchar_t* question;
    const wchar_t* installed;
    const wchar_t* uninstalled;
    const char* existingTarget;  // a payload target the player already has (a backup is due)
    const char* playersOwnFile;  // a file the payload does not name
};

const Game games[] = {
    {"CounterStrike", "/counter-strike", "cs16", "/cs16ludax.bak", "/cs16ludax_1.bak",
     &LudaxControls::cs16Install, &LudaxControls::cs16Uninstall,
     L"Counter Strike LUDAX config already installed, do you want to reinstall?",
     L"Counter Strike LUDAX config installed successfully!",
     L"Counter Strike LUDAX config uninstalled!", "config.cfg", "maps/de_own.bsp"},
    {"CounterStrikeSource", "/counter-strike source", "css", "/cssludax.bak", "/cssludax_1.bak",
     &LudaxControls::cssInstall, &LudaxControls::cssUninstall,
     L"Counter Strike Source LUDAX config already installed, do you want to reinstall?",
     L"Counter Strike Source LUDAX config installed successfully!",
     L"Counter Strike Source LUDAX config uninstalled!", "cfg/valve.rc", "cfg/config.cfg"},
};

const char account[] = "ludaxplayer";

// Both install buttons stay enabled (the account has both games); the uninstall buttons
// follow the installed flags.
EnabledButtons Installed(bool cs16, bool css) { return {true, cs16, true, css}; }

class InstallUninstall : public testing::TestWithParam<Game> {
protected:
    void SetUp() override
    {
        steam.AddAccount(account, cs16Game | cssGame);
        std::string content = Content();
        WriteFile(content + GetParam().existingTarget, "// the player's own\r\nexec autoexec.cfg\r\n");
        WriteFile(content + GetParam().playersOwnFile, std::string("\x00\x01player\xFF", 10));
        steam.Register();
    }

    std::string Account() const { return steam.Account(account); }
    std::string GameFolder() const { return Account() + GetParam().gameFolder; }
    std::string Content() const { return GameFolder() + "/cstrike/"; }
    std::string OtherGameFolder() const
    {
        return Account() + (GetParam().gameFolder == games[0].gameFolder ? games[1] : games[0]).gameFolder;
    }
    EnabledButtons InstalledThis(bool installed) const
    {
        return GetParam().install == games[0].install ? Installed(installed, false)
                                                      : Installed(false, installed);
    }

    SteamFolder steam;
};

}  // namespace

TEST_P(InstallUninstall, FirstInstallReinstallRestartAndUninstallLeaveThePlayersFolderAsItWas)
{
    const Game& game = GetParam();
    std::vector<std::string> records = ManifestNames(game.payload);
    ASSERT_FALSE(records.empty()) << "payload manifest not readable";
    auto before = Snapshot(GameFolder());
    auto otherBefore = Snapshot(OtherGameFolder());
    std::string archive = Account() + game.archive;
    std::string removalList = Account() + game.removalList;
    std::string archiveAfterInstall, listAfterInstall;
    {
        SCOPED_TRACE("first install");
        RunningLudax ludax;
        ASSERT_NE(ludax.window, nullptr) << ludax.failure;
        LudaxControls controls = FindControls(ludax.window);
        EXPECT_EQ(EnabledButtonsOf(controls), InstalledThis(false));

        bool uninstallEnabledAtMessage = false;
        MessageBoxContent done = ClickAndAnswer(ludax, controls.*game.install, IDOK, [&] {
            uninstallEnabledAtMessage = IsWindowEnabled(controls.*game.uninstall);
        });
        ExpectBox(done, game.installed, L"Message", {IDOK}, BoxIcon::information, ludax.window);
        EXPECT_TRUE(uninstallEnabledAtMessage) << "uninstall not offered when the success message came";
        EXPECT_EQ(EnabledButtonsOf(controls), InstalledThis(true));

        for (const std::string& name : records)
            EXPECT_EQ(ReadFile(Content() + name), PayloadBytes(game.payload, name)) << name;
        EXPECT_EQ(ReadFile(Content() + game.playersOwnFile), before.at(std::string("cstrike/") + game.playersOwnFile));
        ASSERT_TRUE(Exists(archive));
        ASSERT_TRUE(Exists(removalList));
        EXPECT_NE(ReadFile(archive).find("exec autoexec.cfg"), std::string::npos)
            << "the overwritten file is not in the backup archive";
        EXPECT_EQ(Snapshot(OtherGameFolder()), otherBefore) << "the other game's folder changed";
        archiveAfterInstall = ReadFile(archive);
        listAfterInstall = ReadFile(removalList);

        SCOPED_TRACE("reinstall question answered No");
        WriteFile(Content() + records.front(), "changed by the player");
        MessageBoxContent question = ClickAndAnswer(ludax, controls.*game.install, IDNO);
        ExpectBox(question, game.question, L"Question", {IDYES, IDNO}, BoxIcon::question, ludax.window);
        EXPECT_EQ(WaitForMessageBox(ludax.process, 1000), nullptr) << "a message followed the No";
        EXPECT_EQ(ReadFile(Content() + records.front()), "changed by the player");

        SCOPED_TRACE("reinstall question answered Yes");
        ReinstallAnsweringYes(ludax, controls.*game.install, game.question, game.installed);
        EXPECT_EQ(ReadFile(Content() + records.front()), PayloadBytes(game.payload, records.front()));
        EXPECT_EQ(ReadFile(archive), archiveAfterInstall) << "a reinstall rewrote the backup archive";
        EXPECT_EQ(ReadFile(removalList), listAfterInstall) << "a reinstall rewrote the removal list";
        CloseThroughCloseCorner(ludax);
    }
    {
        SCOPED_TRACE("restart, then uninstall");
        RunningLudax ludax;
        ASSERT_NE(ludax.window, nullptr) << ludax.failure;
        LudaxControls controls = FindControls(ludax.window);
        EXPECT_EQ(EnabledButtonsOf(controls), InstalledThis(true)) << "the install did not survive a restart";

        bool uninstallEnabledAtMessage = true;
        MessageBoxContent done = ClickAndAnswer(ludax, controls.*game.uninstall, IDOK, [&] {
            uninstallEnabledAtMessage = IsWindowEnabled(controls.*game.uninstall);
        });
        ExpectBox(done, game.uninstalled, L"Message", {IDOK}, BoxIcon::information, ludax.window);
        EXPECT_FALSE(uninstallEnabledAtMessage);
        EXPECT_EQ(EnabledButtonsOf(controls), InstalledThis(false));
        EXPECT_EQ(Snapshot(GameFolder()), before) << "the game folder is not as it was before the install";
        EXPECT_EQ(Snapshot(OtherGameFolder()), otherBefore);
        EXPECT_FALSE(Exists(archive));
        EXPECT_FALSE(Exists(removalList));
        CloseThroughCloseCorner(ludax);
    }
}

INSTANTIATE_TEST_SUITE_P(BothGames, InstallUninstall, testing::ValuesIn(games),
                         [](const testing::TestParamInfo<Game>& info) { return info.param.testName; });

TEST(InstallFatal, FolderThatCannotBeCreatedEndsTheProgramMidInstall)
{
    SteamFolder steam;
    steam.AddAccount(account, cs16Game);
    std::string content = steam.Account(account) + "/counter-strike/cstrike/";
    // A file where the payload needs the folder gfx: gfx/shell can be neither found nor made.
    WriteFile(content + "gfx", "not a folder");
    steam.Register();
    std::vector<std::string> records = ManifestNames("cs16");
    auto firstNested = std::find_if(records.begin(), records.end(),
                                    [](const std::string& name) { return name.find('/') != std::string::npos; });
    ASSERT_NE(firstNested, records.end());
    ASSERT_EQ(*firstNested, "gfx/shell/kb_act.lst") << "the payload's order changed; pick another blocker";

    {
        RunningLudax ludax;
        ASSERT_NE(ludax.window, nullptr) << ludax.failure;
        LudaxControls controls = FindControls(ludax.window);
        PostButtonClick(controls.cs16Install);
        HWND box = WaitForMessageBox(ludax.process);
        ASSERT_NE(box, nullptr);
        MessageBoxContent fatal = ReadMessageBox(box);
        std::string folder = content + "gfx/shell";
        ExpectBox(fatal,
                  L"Nem sikerült a könyvtár létrehozása!\nKilépek!\n" +
                      Widen(folder),
                  L"Hiba:", {IDOK}, BoxIcon::none, nullptr);
        EXPECT_FALSE(IsWindowEnabled(controls.cs16Uninstall)) << "the installed flag was set";
        ASSERT_TRUE(PressButton(box, IDOK));
        EXPECT_EQ(ludax.process.WaitForExit(defaultTimeoutMs), std::optional<DWORD>(0xFFFFFFFF));
    }
    // What was written before the failure stays; nothing after it was written.
    for (auto name = records.begin(); name != firstNested; ++name)
        EXPECT_EQ(ReadFile(content + *name), PayloadBytes("cs16", *name)) << *name;
    for (auto name = firstNested; name != records.end(); ++name)
        EXPECT_FALSE(Exists(content + *name)) << *name;
    EXPECT_EQ(ReadFile(content + "gfx"), "not a folder");
    // The archive was created when the install began, and its presence is what marks the game
    // as installed: the next start offers the uninstall.
    EXPECT_TRUE(Exists(steam.Account(account) + "/cs16ludax.bak"));
    RunningLudax restarted;
    ASSERT_NE(restarted.window, nullptr) << restarted.failure;
    EXPECT_EQ(EnabledButtonsOf(FindControls(restarted.window)), (EnabledButtons{true, true, false, false}));
}
