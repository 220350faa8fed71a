// The world moves between the install and the uninstall, through the real program: Steam rewrites
// its path in another spelling, a library's drive comes back under another letter, the game is
// moved away (or the target of the link to it goes) and back. Nothing of the player's is lost,
// nothing of ours stays, and while the game is away nothing changes at all.

#include <gtest/gtest.h>

#include <filesystem>

#include "command_run.h"
#include "ludax_session.h"
#include "player_pc.h"
#include "text.h"

namespace {

std::string Gone(const std::string& folder, const char* lineEnd = "\n")
{
    return "The game's folder is not there:" + std::string(lineEnd) + folder + lineEnd +
           "Nothing was changed and the backup was kept. Put the game back where it was, then uninstall again.";
}

}  // namespace

TEST(WorldMoves, SteamPathSpelledAnewBeforeTheUninstall)
{
    SteamFolder steam;
    steam.AddAccount("player", cs16Game);
    const auto before = Snapshot(steam.Path());
    steam.Register();
    ASSERT_EQ(RunLudaxCommand("/install cs16").status, 0u);
    // Steam writes its path back as it likes: another letter case, backslashes, one at the end.
    std::string respelled = steam.Path() + "\\";
    for (char& c : respelled)
        c = c == '/' ? '\\' : c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    SteamFolder::SetSteamPath(respelled);
    LudaxSession ludax;
    ASSERT_NE(ludax.window, nullptr) << ludax.failure;
    EXPECT_EQ(ludax.Click(cs16Uninstall), Message(cs16.uninstalled, ludax.window));
    ludax.Close();
    EXPECT_EQ(Snapshot(steam.Path()), before);
}

TEST(WorldMoves, ALibraryDriveBackUnderAnotherLetter)
{
    SteamFolder steam;
    TempFolder disk;  // a USB disk, say, once M: and now N:
    WriteFile(disk.Path() + "/SteamLibrary/steamapps/common/Counter-Strike Source/cstrike/cfg/config.cfg", "the player's");
    const auto before = Snapshot(disk.Path());
    ASSERT_TRUE(MapDrive("M", disk.Path()));
    WriteFile(steam.Steamapps() + "libraryfolders.vdf", LibraryList({"M:/SteamLibrary"}));
    steam.Register();
    EXPECT_EQ(RunLudaxCommand("/install css").status, 0u);
    EXPECT_TRUE(MapDrive("M", ""));
    ASSERT_TRUE(MapDrive("N", disk.Path()));
    WriteFile(steam.Steamapps() + "libraryfolders.vdf", LibraryList({"N:/SteamLibrary"}));
    EXPECT_EQ(RunLudaxCommand("/uninstall css").status, 0u);
    EXPECT_TRUE(MapDrive("N", ""));
    EXPECT_EQ(Snapshot(disk.Path()), before);
}

TEST(WorldMoves, TheGameAwayKeepsTheBackupUntilItIsBack)
{
    struct Case {
        const char* what;
        bool linked;  // the game's folder is a link to where it lives, and its target goes
    };
    for (const Case& c : {Case{"the game's folder moved away", false}, Case{"the target of the link to it gone", true}}) {
        SCOPED_TRACE(c.what);
        SteamFolder steam;
        steam.AddAccount("player", cs16Game);
        TempFolder elsewhere;
        const std::string game = steam.Account("player") + "/counter-strike", parked = elsewhere.Path() + "/parked";
        std::string moved = game;
        if (c.linked) {
            moved = elsewhere.Path() + "/counter-strike";
            std::filesystem::rename(std::filesystem::u8path(game), std::filesystem::u8path(moved));
            ASSERT_TRUE(MakeLink(moved, game));
        }
        const auto before = Snapshot(steam.Path()), outside = Snapshot(elsewhere.Path());
        steam.Register();
        ASSERT_EQ(RunLudaxCommand("/install cs16").status, 0u);
        std::filesystem::rename(std::filesystem::u8path(moved), std::filesystem::u8path(parked));
        const auto away = Snapshot(steam.Path());
        {
            LudaxSession ludax;
            ASSERT_NE(ludax.window, nullptr) << ludax.failure;
            EXPECT_EQ(ludax.Click(cs16Uninstall), (Box{"Hiba:", Gone(game), {IDOK}, BoxIcon::warning, ludax.window}));
            EXPECT_TRUE(ludax.Enabled()[cs16Uninstall]) << "the uninstall is no longer offered";
            ludax.Close();
        }
        EXPECT_EQ(RunLudaxCommand("/uninstall cs16"), (CommandRun{7, "", Gone(Backslashed(game), "\r\n") + "\r\n"}));
        EXPECT_EQ(Snapshot(steam.Path()), away) << "something changed while the game was away";

        std::filesystem::rename(std::filesystem::u8path(parked), std::filesystem::u8path(moved));
        LudaxSession ludax;
        ASSERT_NE(ludax.window, nullptr) << ludax.failure;
        EXPECT_EQ(ludax.Click(cs16Uninstall), Message(cs16.uninstalled, ludax.window));
        ludax.Close();
        EXPECT_EQ(Snapshot(steam.Path()), before);
        EXPECT_EQ(Snapshot(elsewhere.Path()), outside);
    }
}

TEST(WorldMoves, BackupFilesCopiedToTheGameInAnotherLibraryChangeNothingThere)
{
    // The first library is Steam's own folder; a second one holds a second player's game, into
    // which someone copied the first one's backup files.
    SteamFolder steam;
    TempFolder disk;
    const std::string first = steam.Path() + "/steamapps/common", second = disk.Path() + "/SteamLibrary/steamapps/common";
    WriteFile(first + "/Half-Life/cstrike/config.cfg", "the first player's config");
    WriteFile(second + "/Half-Life/cstrike/config.cfg", "the second player's config");
    WriteFile(steam.Steamapps() + "libraryfolders.vdf", LibraryList({steam.Path(), disk.Path() + "/SteamLibrary"}));
    steam.Register();
    ASSERT_EQ(RunLudaxCommand("/install cs16 /place 1").status, 0u);
    for (const char* backup : cs16BackupFiles)
        WriteFile(second + backup, ReadFile(first + backup));
    const auto copied = Snapshot(disk.Path());
    const std::string belongs = "These backup files belong to the game at\n" + steam.Path() +
                                "/steamapps/common/Half-Life\nNothing was changed.";

    LudaxSession ludax;
    ASSERT_NE(ludax.window, nullptr) << ludax.failure;
    ChooseEntry(ludax.controls.chooser, 1);
    EXPECT_EQ(ludax.Click(cs16Uninstall), (Box{"Hiba:", belongs, {IDOK}, BoxIcon::warning, ludax.window}));
    ludax.Close();
    EXPECT_EQ(Snapshot(disk.Path()), copied);
}
