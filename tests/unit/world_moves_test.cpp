// The world moves between the install and the uninstall: Steam spelled anew, a library back under
// another name, the game away, links swapped in, backup files no install wrote. Nothing of the
// player's may be lost, and nothing of ours left behind once the world is back.
#include <gtest/gtest.h>

#include <filesystem>

#include "install_scene.h"
#include "safe_paths.h"
#include "system.h"

namespace {

std::string Repeated(const std::string& part, int times)
{
    std::string path = "C:";
    for (int i = 0; i < times; ++i)
        path += part;
    return path;
}

TEST(RemovalLines, NameWhatTheyNamedWhereverTheFoldersAboveTheGameAreNow)
{
    const SteamAccount account = AccountFolderEntry("C:\\Games\\Steam/steamapps/", "player");
    const SteamAccount named = AccountFolderEntry("C:/S/steamapps/", "counter-strike");  // named like the game
    const SteamAccount library = LibraryEntry("N:\\SteamLibrary");
    const SteamAccount up = AccountFolderEntry("C:/S/steamapps/", "..");  // the ".." entry of steamapps
    const std::string cs16 = "C:\\Games\\Steam/steamapps/player/counter-strike";
    const std::string css = "N:\\SteamLibrary/steamapps/common/Counter-Strike Source";
    struct Case {
        const SteamAccount& place;
        GameId game;
        std::string line;
        std::string now;  // empty: passed over
    };
    const Case cases[] = {
        // Steam spelled anew: letter case, separators, doubled and trailing ones, . and ..
        {account, GameId::cs16, "c:/games/STEAM/steamapps/player/counter-strike/cstrike/cfg/a.cfg", cs16 + "/cstrike/cfg/a.cfg"},
        {account, GameId::cs16, "C:\\Games\\\\Steam\\.\\steamapps\\x\\..\\player\\counter-strike\\cstrike\\a.cfg", cs16 + "/cstrike/a.cfg"},
        {account, GameId::cs16, "D:/Old/Steam/steamapps/Player/COUNTER-STRIKE/cstrike/resource/", cs16 + "/cstrike/resource"},
        {account, GameId::cs16, "E:/steamapps/renamed/counter-strike/cstrike/cfg/./x/../a.cfg", cs16 + "/cstrike/cfg/a.cfg"},
        {account, GameId::cs16, "C:/Games/Steam/steamapps/player/counter-strike/cstrike", cs16 + "/cstrike"},
        {named, GameId::cs16, "C:/S/steamapps/counter-strike/counter-strike/cstrike/a.cfg",
         "C:/S/steamapps/counter-strike/counter-strike/cstrike/a.cfg"},
        // A library back under another drive letter, or moved.
        {library, GameId::cs16, "M:\\SteamLibrary\\steamapps\\common\\Half-Life\\cstrike\\maps\\de_x.bsp",
         "N:\\SteamLibrary/steamapps/common/Half-Life/cstrike/maps/de_x.bsp"},
        {library, GameId::css, "m:/games/lib/STEAMAPPS/Common/counter-strike source/cstrike/custom/ludax/cfg/x.cfg",
         css + "/cstrike/custom/ludax/cfg/x.cfg"},
        {library, GameId::css, "M:/SteamLibrary/steamapps/common/Counter-Strike Source/cstrike/custom", css + "/cstrike/custom"},
        {library, GameId::css, "M:/SteamLibrary/steamapps/common/Counter-Strike Source/cstrike", css + "/cstrike"},
        {library, GameId::css, "M:/SteamLibrary/steamapps/common/Counter-Strike Source/cstrike/custom/ludax",
         css + "/cstrike/custom/ludax"},
        {library, GameId::css, "M:/SteamLibrary/steamapps/common/Counter-Strike Source/cstrike/custom/ludax/..cfg",
         css + "/cstrike/custom/ludax/..cfg"},
        // No folder of this game, or nothing an install makes there: passed over as before.
        {account, GameId::css, "C:/Games/Steam/steamapps/player/counter-strike/cstrike/a.cfg", ""},
        {account, GameId::cs16, "C:/Games/Steam/steamapps/player/counter-strike", ""},
        {account, GameId::cs16, "C:/Games/Steam/steamapps/player/counter-strike/valve/a.cfg", ""},
        {account, GameId::cs16, "C:/Games/Steam/steamapps/player/counter-strike/cstrike/cfg/../../../player/a.cfg", ""},
        {account, GameId::cs16, "C:/Games/Steam/steamapps/player/counter-strike/cstrike/cfg/aux.cfg", ""},
        {account, GameId::cs16, "C:/Games/Steam/player/counter-strike/cstrike/a.cfg", ""},
        {account, GameId::cs16, "C:/Games/Steam/steamapps/player/cs16ludax.bak", ""},
        {library, GameId::cs16, "M:/SteamLibrary/steamapps/player/Half-Life/cstrike/a.cfg", ""},
        {library, GameId::css, "M:/SteamLibrary/steamapps/common/Counter-Strike Source/cstrike/a.cfg", ""},
        {library, GameId::cs16, "N:/SteamLibrary/steamapps/common/Half-Life/hl.exe", ""},
        {library, GameId::css, "N:/SteamLibrary/steamapps/common/Counter-Strike Source/hl2.exe", ""},
        {library, GameId::css, "N:/SteamLibrary/steamapps/common/Counter-Strike Source2/cstrike/custom/ludax/a", ""},
        {library, GameId::css, "N:/SteamLibrary/steamapps/common/Counter-Strike Source/cstrike/custom/other/a.cfg", ""},
        {library, GameId::css, "N:/SteamLibrary/steamapps/common/Counter-Strike Source/cstrike/cust", ""},
        {library, GameId::css, "N:/SteamLibrary/steamapps/common/Counter-Strike Source/cstrike/custom/ludax/.../x", ""},
        {library, GameId::css, "N:/SteamLibrary/steamapps/common/cssludax.bak", ""},
        {library, GameId::cs16, "N:/SteamLibrary/steamapps/common/Portal 2/portal2/SAVE/quick.sav", ""},
        {library, GameId::cs16, "N:/SteamLibrary/steamapps/common/Half-Life/cstrike/../../Portal 2/quick.sav", ""},
        {up, GameId::cs16, "C:/S/steamapps/../config/loginusers.vdf", ""},
        // Only an absolute path acts: a drive, a share, their "\\?\" forms, either separator; no
        // control character (a log's tab, a UTF-16 zero byte) and nothing Windows refuses.
        {account, GameId::cs16, "\\\\?\\C:\\Games\\Steam\\steamapps\\player\\counter-strike\\cstrike\\a.cfg", cs16 + "/cstrike/a.cfg"},
        {account, GameId::cs16, "\\\\?\\unc\\lan\\games\\steamapps\\player\\counter-strike\\cstrike\\a.cfg", cs16 + "/cstrike/a.cfg"},
        {account, GameId::cs16, "//lan/games/steamapps/player/counter-strike/cstrike/a.cfg", cs16 + "/cstrike/a.cfg"},
        {account, GameId::cs16, "2026-11-25T08:14:03Z\tbacked up\tC:\\Games\\Steam\\steamapps\\player\\counter-strike\\cstrike\\a.cfg", ""},
        {account, GameId::cs16, "C:\\Games\\Steam\\steamapps\\player\\counter-strike\\cstrike\\a.cfg\tbacked up", ""},
        {account, GameId::cs16, std::string("C\0:\0/steamapps/player/counter-strike/cstrike/a.cfg", 50), ""},
        {account, GameId::cs16, "Games/Steam/steamapps/player/counter-strike/cstrike/a.cfg", ""},
        {account, GameId::cs16, "C:Games\\Steam\\steamapps\\player\\counter-strike\\cstrike\\a.cfg", ""},
        {account, GameId::cs16, "\\\\.\\C:\\Games\\Steam\\steamapps\\player\\counter-strike\\cstrike\\a.cfg", ""},
        {account, GameId::cs16, "\\\\\\lan\\games\\steamapps\\player\\counter-strike\\cstrike\\a.cfg", ""},
        {account, GameId::cs16, "\\\\lan\\steamapps\\player\\counter-strike\\cstrike\\a.cfg", cs16 + "/cstrike/a.cfg"},
        {account, GameId::cs16, "C:\\Ga|mes\\steamapps\\player\\counter-strike\\cstrike\\a.cfg", ""},
        {account, GameId::cs16, "C:\\\"Games\"\\steamapps\\player\\counter-strike\\cstrike\\a.cfg", ""},
        {account, GameId::cs16, "C:\\Games:x\\steamapps\\player\\counter-strike\\cstrike\\a.cfg", ""},
        {account, GameId::cs16, "C:\\Games*\\steamapps\\player\\counter-strike\\cstrike\\a.cfg", ""},
#ifdef _WIN32
        {account, GameId::cs16, "/Games/Steam/steamapps/player/counter-strike/cstrike/a.cfg", ""},  // the drive's root
#else
        {account, GameId::cs16, "/Games/Steam/steamapps/player/counter-strike/cstrike/a.cfg", cs16 + "/cstrike/a.cfg"},
#endif
        // Folders above Steam's that look like a game's: the place that names something wins;
        // a line naming more than eight such places is no install's, and costs little.
        {account, GameId::cs16, "D:/steamapps/old/counter-strike/Steam/steamapps/player/counter-strike/cstrike/a.cfg",
         cs16 + "/cstrike/a.cfg"},
        {account, GameId::cs16, Repeated("/steamapps/p/counter-strike", 8) + "/cstrike/a.cfg", cs16 + "/cstrike/a.cfg"},
        {account, GameId::cs16, Repeated("/steamapps/p/counter-strike", 9) + "/cstrike/a.cfg", ""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(LineAtPlace(c.line, c.place, c.game), c.now) << c.line;
}

void PlayersFiles(InstallScene& scene)
{
    WriteFile(scene.content + "a.txt", "the player's a.txt");
    WriteFile(scene.content + "cfg/own.cfg", "the player's own");
}

TEST(WorldMoves, TheGameAwayKeepsEverythingUntilItIsBack)
{
    struct Case {
        const char* what;
        std::string away;  // below the account folder: moved elsewhere, and back
        bool linked;       // the game's folder is a link to where it lives; its target goes
        bool fileInItsPlace = false;
    };
    std::vector<Case> cases = {{"the game's folder moved", "counter-strike", false},
                               {"its cstrike folder moved", "counter-strike/cstrike", false},
                               {"a file where its cstrike folder was", "counter-strike/cstrike", false, true}};
#ifndef _WIN32
    cases.push_back({"a link to the game whose target is gone", "counter-strike", true});  // Wine: no such link
#endif
    for (const Case& c : cases) {
        InstallScene scene;
        TempFolder elsewhere;
        const std::string folder = scene.accountFolder + "/" + c.away, parked = elsewhere.Path() + "/parked";
        std::string target = folder;
        if (c.linked) {
            target = elsewhere.Path() + "/game";
            std::filesystem::rename(folder, target);
            ASSERT_TRUE(MakeLink(target, folder)) << c.what;
        }
        PlayersFiles(scene);
        const Tree before = Snapshot(scene.steam.Path());
        ASSERT_EQ(scene.Install().result, InstallOutcome::Result::installed) << c.what;
        const Tree installed = Snapshot(scene.steam.Path());

        std::filesystem::rename(target, parked);
        if (c.fileInItsPlace)
            WriteFile(folder, "not the game");
        const Tree away = Snapshot(scene.steam.Path());
        const UninstallOutcome outcome = scene.Uninstall();
        EXPECT_TRUE(outcome.backupKept) << c.what;
        EXPECT_TRUE(outcome.gameAway) << c.what;
        EXPECT_EQ(outcome.firstFailure.path, folder) << c.what;
        EXPECT_EQ(Snapshot(scene.steam.Path()), away) << c.what << ": something changed";
        EXPECT_TRUE(outcome.installed) << c.what;
        if (c.away == "counter-strike") {
            // No install either: nothing is made in the game's place.
            EXPECT_EQ(scene.Install().result, InstallOutcome::Result::folderFailed) << c.what;
            EXPECT_EQ(Snapshot(scene.steam.Path()), away) << c.what << ": the install made something";
        }

        if (c.fileInItsPlace)
            RemovePath(folder);
        std::filesystem::rename(parked, target);
        EXPECT_EQ(Snapshot(scene.steam.Path()), installed) << c.what;
        EXPECT_FALSE(scene.Uninstall().backupKept) << c.what;
        EXPECT_EQ(Snapshot(scene.steam.Path()), before) << c.what;
    }
}

TEST(WorldMoves, BackupFilesCopiedToTheGameAtAnotherPlaceChangeNothingThere)
{
    // A player's library, installed; another library on the PC with its own player's files, into
    // which someone copied the first one's backup files (a folder copied, a disk image restored).
    InstallScene scene(testPayload, InstallScene::Layout::library);
    WriteFile(scene.content + "a.txt", "the first player's a.txt");
    ASSERT_EQ(scene.Install().result, InstallOutcome::Result::installed);
    TempFolder second;
    SteamAccount other = LibraryEntry(second.Path());
    WriteFile(other.Game(GameId::cs16).contentFolder + "a.txt", "the second player's a.txt");
    WriteFile(other.Game(GameId::cs16).contentFolder + "cfg/ludax/binds.cfg", "the second player's binds");
    for (const char* backup : cs16BackupFiles)
        WriteFile(other.folder + backup, ReadFile(scene.accountFolder + backup));
    other.Game(GameId::cs16).present = other.Game(GameId::cs16).installed = true;
    const std::vector<SteamAccount> places{scene.account, other};
    const Tree copied = Snapshot(second.Path());

    const UninstallOutcome outcome = UninstallConfig(scene.profile, other, {}, places);
    EXPECT_TRUE(outcome.elsewhere);
    EXPECT_TRUE(outcome.backupKept);
    EXPECT_EQ(outcome.firstFailure.path, scene.account.Game(GameId::cs16).gameFolder);
    const InstallOutcome install = InstallConfig(scene.profile, other, {}, places);
    EXPECT_EQ(install.result, InstallOutcome::Result::elsewhere);
    EXPECT_EQ(install.path, scene.account.Game(GameId::cs16).gameFolder);
    EXPECT_EQ(Snapshot(second.Path()), copied) << "the second library changed";

    // Where they belong, they undo the install; the copies are the player's to delete.
    EXPECT_FALSE(UninstallConfig(scene.profile, scene.account, {}, places).backupKept);
    EXPECT_EQ(ReadFile(scene.content + "a.txt"), "the first player's a.txt");
    // Where discovery does not find the first library (its drive not there, say), the game moved:
    // the backup files undo it where they lie.
    EXPECT_FALSE(UninstallConfig(scene.profile, other, {}, {other}).elsewhere);
}

#ifndef _WIN32
// Under Wine a link to a file looks like a file and one whose target is gone is not there at
// all: what could not be looked at shows natively only.
TEST(WorldMoves, WhatCouldNotBeLookedAtStaysListedUntilItCanBe)
{
    InstallScene scene;  // makes resource/background/x.tga, cfg/ludax/binds.cfg, ...
    PlayersFiles(scene);
    const Tree before = Snapshot(scene.steam.Path());
    ASSERT_EQ(scene.Install().result, InstallOutcome::Result::installed);
    const std::string list = ReadFile(scene.removalListPath);
    TempFolder elsewhere;
    const std::string resource = scene.content + "resource", moved = elsewhere.Path() + "/resource";
    const std::string binds = scene.content + "cfg/ludax/binds.cfg", gone = elsewhere.Path() + "/gone.cfg";
    // A folder of ours swapped for a link to it, and a file of ours for a link whose target is gone.
    std::filesystem::rename(resource, moved);
    ASSERT_TRUE(MakeLink(moved, resource));
    RemovePath(binds);
    ASSERT_TRUE(MakeLink(gone, binds));

    const UninstallOutcome kept = scene.Uninstall();
    EXPECT_TRUE(kept.backupKept);
    EXPECT_EQ(ReadFile(moved + "/background/x.tga"), scene.files[1].data) << "deleted through a link";
    // Every player's file is back, so the archive kept holds none: put back again by the next
    // uninstall, it would undo what the player changes meanwhile.
    EXPECT_EQ(ReadFile(scene.archivePath), archiveHeader);
    WriteFile(scene.content + "a.txt", "the player's newer a.txt");
    Tree expected = before;
    expected[scene.content.substr(scene.steam.Path().size() + 1) + "a.txt"] = "the player's newer a.txt";
    const std::string remaining = ReadFile(scene.removalListPath);
    for (const std::string& line : {resource + "/background/x.tga", resource + "/background", resource, binds})
        EXPECT_NE(remaining.find(line + "\r\n"), std::string::npos) << line << " left the list:\n" << remaining;
    EXPECT_NE(remaining, list) << "what was removed stays listed";

    // The world back: the uninstall finishes.
    RemovePath(resource);
    std::filesystem::rename(moved, resource);
    RemovePath(binds);
    WriteFile(binds, scene.files[0].data);
    EXPECT_FALSE(scene.Uninstall().backupKept);
    EXPECT_EQ(Snapshot(scene.steam.Path()), expected);

    // A removal list without its archive, while something of ours stays: an empty archive keeps
    // the uninstall offered.
    WriteFile(scene.content + "resource/x.tga", "ours");
    ASSERT_TRUE(MakeLink(elsewhere.Path(), scene.content + "linked"));
    WriteFile(scene.removalListPath, scene.content + "linked/x.cfg\r\n" + scene.content + "resource/x.tga\r\n" +
                                         scene.content + "resource\r\n");
    EXPECT_TRUE(scene.Uninstall().backupKept);
    EXPECT_EQ(ReadFile(scene.archivePath), archiveHeader);
    EXPECT_EQ(ReadFile(scene.removalListPath), scene.content + "linked/x.cfg\r\n");
    EXPECT_FALSE(Exists(scene.content + "resource"));
}
#endif

#ifdef _WIN32
// A file of ours another program holds open stays, and stays listed, with the folders holding it:
// the next uninstall removes them.
TEST(WorldMoves, AFileOfOursHeldOpenStaysListedUntilTheNextUninstall)
{
    InstallScene scene;
    const Tree before = Snapshot(scene.steam.Path());
    ASSERT_EQ(scene.Install().result, InstallOutcome::Result::installed);
    const std::string binds = scene.content + "cfg/ludax/binds.cfg";
    {
        LockedFile held(binds);
        ASSERT_TRUE(held.Locked());
        EXPECT_TRUE(scene.Uninstall().backupKept);
    }
    EXPECT_EQ(ReadFile(scene.removalListPath),
              binds + "\r\n" + scene.content + "cfg/ludax\r\n" + scene.content + "cfg\r\n");
    EXPECT_FALSE(scene.Uninstall().backupKept);
    EXPECT_EQ(Snapshot(scene.steam.Path()), before);
}
#endif

// Folders whose paths are 248 to 259 characters long: past what a plain CreateDirectory takes,
// within what every other plain call does.
TEST(WorldMoves, FolderPathsAroundTheWindowsLimitsInstallAndUninstall)
{
    InstallScene scene({{"cfg/a.cfg", "a"}, {"cfg/ludax/b.cfg", "b"}});
    const std::string base = scene.steamapps;
    for (std::size_t cfg = 248; cfg <= 259; ++cfg) {
        // <base><name>/counter-strike/cstrike/cfg is `cfg` characters long.
        const std::size_t fixed = base.size() + std::string("/counter-strike/cstrike/cfg").size();
        SteamAccount place = AccountFolderEntry(base, std::string(cfg - fixed, 'p'));
        MakeFolders(place.Game(GameId::cs16).contentFolder);
        const Tree before = Snapshot(place.folder);
        ASSERT_EQ(InstallConfig(scene.profile, place).result, InstallOutcome::Result::installed) << cfg;
        EXPECT_EQ(ReadFile(place.Game(GameId::cs16).contentFolder + "cfg/ludax/b.cfg"), "b") << cfg;
        EXPECT_FALSE(UninstallConfig(scene.profile, place).backupKept) << cfg;
        EXPECT_EQ(Snapshot(place.folder), before) << cfg;
    }
}

}  // namespace
