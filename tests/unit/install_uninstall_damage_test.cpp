// The uninstall over backup files it cannot fully trust: removal lines it passes over, a removal
// list or record damaged or lost, an archive of gigabytes, paths far past Windows' old limit.
// (What it keeps when a call fails: install_faults_test.cpp.)
#include <gtest/gtest.h>

#include <functional>

#include "install_scene.h"
#include "system.h"

namespace {

TEST(UninstallKnowsItsOwnFiles, WhateverBecameOfTheRemovalListOrTheRecord)
{
    // Each damage, to the removal list or the record: the uninstall still takes away everything
    // of ours, puts the player's files back, and says so only then.
    const std::string log = "2026-11-25T08:14:03Z\tbacked up\t";
    const struct {
        const char* what;
        bool record;  // damages the record, else the removal list
        std::function<std::string(const std::string&)> damage;  // the file's bytes -> its bytes now
    } cases[] = {
        {"an empty line at its top", false, [](const std::string& list) { return "\r\n" + list; }},
        {"CR-only line ends",
         false,
         [](std::string list) {
             for (std::size_t at; (at = list.find("\r\n")) != std::string::npos;)
                 list.erase(at + 1, 1);
             return list;
         }},
        {"saved as UTF-16", false, AsUtf16},
        {"cut in its first line", false, [](const std::string& list) { return list.substr(0, 20); }},
        {"emptied", false, [](const std::string&) { return std::string(); }},
        {"deleted", false, [](const std::string&) { return std::string("<deleted>"); }},
        {"a line of 45,000 segments before it", false,
         [](const std::string& list) {
             std::string deep = list.substr(0, list.find("cstrike/") + 8);
             for (int i = 0; i < 45000; ++i)
                 deep += "a/";
             return deep + "x.cfg\r\n" + list;
         }},
        {"cut in its second line", true, [](const std::string& record) { return record.substr(0, record.find('\n') + 9); }},
        {"deleted", true, [](const std::string&) { return std::string("<deleted>"); }},
        {"saved as UTF-16", true, AsUtf16},
    };
    for (const auto& c : cases) {
        const std::string what = std::string(c.record ? "the record " : "the removal list ") + c.what;
        InstallScene scene;  // records: cfg/ludax/binds.cfg, resource/background/x.tga, a.txt, cfg/config.cfg
        WriteFile(scene.content + "a.txt", "the player's a.txt");
        WriteFile(scene.content + "cfg/own.cfg", "the player's own");
        const Tree before = Snapshot(scene.steam.Path());
        ASSERT_EQ(scene.Install().result, InstallOutcome::Result::installed) << what;
        const std::string path = c.record ? scene.accountFolder + "/cs16ludax_2.bak" : scene.removalListPath;
        const std::string damaged = c.damage(ReadFile(path));
        if (damaged == "<deleted>")
            RemovePath(path);
        else
            WriteFile(path, damaged);
        EXPECT_FALSE(scene.Uninstall().backupKept) << what;
        EXPECT_EQ(Snapshot(scene.steam.Path()), before) << what;
    }

    // A log's lines in the list (a /log that landed there): none of them is a path, so none
    // deletes the player's file it names.
    InstallScene scene;
    WriteFile(scene.content + "cfg/own.cfg", "the player's own");
    const Tree before = Snapshot(scene.steam.Path());
    ASSERT_EQ(scene.Install().result, InstallOutcome::Result::installed);
    WriteFile(scene.removalListPath, ReadFile(scene.removalListPath) + log + scene.content + "cfg/own.cfg\r\n" +
                                         "2026-11-25T08:14:04Z\tended\t0\t" + scene.content + "cfg/own.cfg\r\n");
    EXPECT_FALSE(scene.Uninstall().backupKept);
    EXPECT_EQ(Snapshot(scene.steam.Path()), before);
}

TEST(UninstallKnowsItsOwnFiles, BackupFilesWithoutARecordAndWithoutTheirListLoseOnlyTheEmptyFoldersMade)
{
    // Backup files an earlier version wrote have no record: with the removal list gone too, a file
    // holding exactly what this program ships still counts as ours, unless the archive puts the
    // player's back; the folders that install made cannot be known any more.
    InstallScene scene;
    WriteFile(scene.content + "a.txt", "the player's a.txt");
    WriteFile(scene.content + "cfg/config.cfg", "the player's config");
    const Tree before = Snapshot(scene.steam.Path());
    ASSERT_EQ(scene.Install().result, InstallOutcome::Result::installed);
    RemovePath(scene.accountFolder + "/cs16ludax_2.bak");
    RemovePath(scene.removalListPath);
    WriteFile(scene.content + "cfg/ludax/binds.cfg", "the player changed ours");
    EXPECT_FALSE(scene.Uninstall().backupKept);
    Tree expected = before;
    for (const char* folder : {"cfg/ludax", "resource", "resource/background"})
        expected["steamapps/player/counter-strike/cstrike/" + std::string(folder)] = "<folder>";
    expected["steamapps/player/counter-strike/cstrike/cfg/ludax/binds.cfg"] = "the player changed ours";
    EXPECT_EQ(Snapshot(scene.steam.Path()), expected);
}

TEST(UninstallPassesOver, LinesAndRecordsNoInstallCouldHaveWritten)
{
    InstallScene scene;
    const std::string& a = scene.accountFolder;
    const std::string& c = scene.content;
    const std::string steam = scene.steam.Path();
    for (const std::string& file : {a + "/cssludax.bak", a + "/cssludax_1.bak", a + "/half-life/valve/config.cfg",
                                    steam + "/config/loginusers.vdf", c + "cfg/own.cfg"})
        WriteFile(file, "not to be removed");
#ifndef _WIN32
    // Windows cannot even hold these two: the one is a device, the other loses its dot.
    WriteFile(c + "aux", "not a device here, but it would be under Windows");
    WriteFile(c + "cfg.", "trailing dot");
#endif
    WriteFile(c + "cfg/config.cfg", "the player's config");
    Tree expected = Snapshot(steam);
    // Records: a segment longer than a Windows name holds, a name that is not UTF-8 (as written in
    // a Western code page), names leaving the folder or that Windows reads as something else, a
    // record running past the end; one true one.
    std::string archive = archiveHeader;
    for (const std::string& name :
         {"cfg/" + std::string(300, 'n') + ".cfg", Western("cfg/café.cfg"), std::string("../a.cfg"), std::string("/abs"),
          std::string("a\\b"), std::string("c:x"), std::string(), std::string("a\0b.cfg", 7), std::string("COM1"),
          std::string("cfg/x."), std::string("cfg/a/../../../escape.cfg")})
        archive += Record(name, "x");
    WriteFile(scene.archivePath,
              archive + Record("cfg/config.cfg", "the player's config") + Le32(5) + "a.txt" + Le32(1000) + "cut short");
    WriteFile(c + "cfg/config.cfg", "the tournament's");
    // Lines: the game's and the account's folders, the backup files in any case, devices, a zero
    // byte, an overlong name, other games' and Steam's files, some through ".."; and two of ours.
    WriteFile(c + "one.cfg", "ours");
    WriteFile(c + "two.cfg", "ours");
    std::string list = c + "one.cfg\r\n";
    for (const std::string& line :
         {scene.account.Game(GameId::cs16).gameFolder, a, a + "/cs16ludax.bak", a + "/CSSLUDAX.BAK", a + "/cssludax_1.bak", c + "aux",
          c + "cfg.", std::string(c + "two.cfg").insert(c.size(), 1, '\0'), c + std::string(300, 'l'),
          a + "/half-life/valve/config.cfg", c + "../../half-life/valve/config.cfg", steam + "/config/loginusers.vdf",
          c + "../../../../../config/loginusers.vdf"})
        list += line + "\r\n";
    WriteFile(scene.removalListPath, list + c + "two.cfg\r\n");

    const UninstallOutcome outcome = scene.Uninstall();
    EXPECT_FALSE(outcome.backupKept) << outcome.firstFailure.path;
    EXPECT_EQ(Snapshot(steam), expected);
}

TEST(UninstallReadsRecordByRecord, ASparseArchiveOfGigabytes)
{
#ifdef _WIN32
    // Wine refuses to make a file larger than the disk's free space, sparse or not.
    const std::uint64_t archiveSize = std::uint64_t{5} << 30;
#else
    const std::uint64_t archiveSize = std::uint64_t{100} << 30;
#endif
    InstallScene scene;
    // A record of 2 GiB - 1 whose name is passed over, then nothing but a hole to the end:
    // neither the record nor the hole is ever held in memory.
    std::string archive = archiveHeader + Record("a.cfg", "A");
    std::string big = Record("aux.cfg", "");
    big.replace(big.size() - 4, 4, std::string("\xFF\xFF\xFF\x7F", 4));
    WriteFile(scene.archivePath, archive + big);
    ResizeFile(scene.archivePath, archiveSize);

    EXPECT_FALSE(scene.Uninstall().backupKept);
    EXPECT_EQ(Snapshot(scene.content), (Tree{{"a.cfg", "A"}}));
    EXPECT_FALSE(Exists(scene.archivePath));
}

TEST(LongPaths, FilesAndFoldersFarPast259CharactersAreBackedUpMadeAndPutBack)
{
    // One folder of a player's own and one the install makes, each deep past Windows' old limit.
    const std::string deep = std::string(120, 'd') + "/" + std::string(120, 'e');
    InstallScene scene({{"a.txt", "LUDAX"}, {deep + "/player.cfg", "payload"}, {deep + "/new/made.cfg", "made"}});
    WriteFile(scene.content + deep + "/player.cfg", "the player's file");
    ASSERT_GT((scene.content + deep + "/new/made.cfg").size(), 259u);
    const Tree before = Snapshot(scene.accountFolder);

    EXPECT_EQ(scene.Install().result, InstallOutcome::Result::installed);
    EXPECT_TRUE(scene.PayloadWritten());
    EXPECT_FALSE(scene.Uninstall().backupKept);
    EXPECT_EQ(Snapshot(scene.accountFolder), before);
}

}  // namespace
