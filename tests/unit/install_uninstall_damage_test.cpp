// The uninstall over backup files it cannot fully trust or fully act on: whatever it cannot
// put back stays in the archive, and it says so.
#include <gtest/gtest.h>

#ifdef _WIN32
#include <windows.h>
#else
#include <sys/stat.h>
#endif

#include <functional>

#include "install_scene.h"
#include "system.h"

namespace {

TEST(UninstallKeepsTheBackupFiles, WhenARecordCannotBeWrittenUntilARetryCan)
{
    struct Case {
        const char* what;
        std::function<void(InstallScene&)> block, unblock;
        std::string stopsAt;  // the first thing it could not put back
    };
    const std::vector<Case> cases = {
        {"the target is now a folder",
         [](InstallScene& s) {
             RemovePath(s.content + "cfg/ludax/binds.cfg");
             MakeFolders(s.content + "cfg/ludax/binds.cfg/inner");
         },
         [](InstallScene& s) {
             RemovePath(s.content + "cfg/ludax/binds.cfg/inner");
             RemovePath(s.content + "cfg/ludax/binds.cfg");
         },
         "cfg/ludax/binds.cfg"},
        {"a file stands where its folder belongs",
         [](InstallScene& s) {
             RemovePath(s.content + "cfg/ludax/binds.cfg");
             RemovePath(s.content + "cfg/ludax");
             WriteFile(s.content + "cfg/ludax", "a file of the player's");
         },
         [](InstallScene& s) { RemovePath(s.content + "cfg/ludax"); },
         "cfg/ludax/binds.cfg"},
    };
    for (const Case& c : cases) {
        InstallScene scene;
        WriteFile(scene.content + "a.txt", "player's a");
        WriteFile(scene.content + "cfg/ludax/binds.cfg", "player's binds");
        WriteFile(scene.content + "cfg/config.cfg", "player's config");
        const Tree before = Snapshot(scene.accountFolder);
        scene.Install();
        const std::string archive = ReadFile(scene.archivePath);

        c.block(scene);
        const UninstallOutcome kept = scene.Uninstall();
        EXPECT_TRUE(kept.backupKept) << c.what;
        EXPECT_EQ(kept.firstFailure.path, scene.content + c.stopsAt) << c.what;
        EXPECT_NE(kept.firstFailure.reason.code, 0u) << c.what;
        EXPECT_TRUE(scene.account.hasCs16Backup) << c.what;
        EXPECT_EQ(ReadFile(scene.archivePath), archive) << c.what;
        EXPECT_EQ(ReadFile(scene.removalListPath), "") << c.what;  // all it named is gone
        // The others are back already.
        EXPECT_EQ(ReadFile(scene.content + "a.txt"), "player's a") << c.what;
        EXPECT_EQ(ReadFile(scene.content + "cfg/config.cfg"), "player's config") << c.what;

        c.unblock(scene);
        WriteFile(scene.removalListPath + ".new", "a rewrite an uninstall did not finish");
        EXPECT_FALSE(scene.Uninstall().backupKept) << c.what;
        EXPECT_FALSE(scene.account.hasCs16Backup) << c.what;
        EXPECT_EQ(Snapshot(scene.accountFolder), before) << c.what;
    }
}

#ifdef _WIN32
TEST(UninstallKeepsTheBackupFiles, WhileAFileItMadeIsHeldOpen)
{
    InstallScene scene;
    const std::string& c = scene.content;
    WriteFile(c + "a.txt", "player's a");
    const Tree before = Snapshot(scene.accountFolder);
    ASSERT_EQ(scene.Install().result, InstallOutcome::Result::installed);
    const std::string archive = ReadFile(scene.archivePath);
    {
        LockedFile held(c + "resource/background/x.tga");
        ASSERT_TRUE(held.Locked());
        const UninstallOutcome kept = scene.Uninstall();
        EXPECT_TRUE(kept.backupKept);
        EXPECT_EQ(kept.firstFailure.path, c + "resource/background/x.tga");
        EXPECT_EQ(kept.firstFailure.reason, sys::Reason::System(ERROR_SHARING_VIOLATION));
        // What remains of ours: the file held open and the folders that hold it.
        EXPECT_EQ(ReadFile(scene.removalListPath),
                  c + "resource/background/x.tga\r\n" + c + "resource/background\r\n" + c + "resource\r\n");
        EXPECT_EQ(ReadFile(scene.archivePath), archive);
        EXPECT_EQ(ReadFile(c + "a.txt"), "player's a");
        EXPECT_TRUE(scene.account.hasCs16Backup);
    }
    EXPECT_FALSE(scene.Uninstall().backupKept);
    EXPECT_EQ(Snapshot(scene.accountFolder), before);
}
#endif

TEST(UninstallKeepsTheBackupFiles, WhenItCannotBeOpened)
{
    InstallScene scene;
    MakeFolders(scene.archivePath);  // a folder under the archive's name
    EXPECT_TRUE(scene.Uninstall().backupKept);
    EXPECT_TRUE(Exists(scene.archivePath));
}

#ifndef _WIN32
TEST(UninstallKeepsTheBackupFiles, WhenTheRemovalListCannotBeRead)
{
    InstallScene scene;
    ASSERT_EQ(mkfifo(scene.removalListPath.c_str(), 0644), 0);  // there, but never readable
    WriteFile(scene.archivePath, archiveHeader + Record("a.txt", "player's a"));
    EXPECT_TRUE(scene.Uninstall().backupKept);
    EXPECT_EQ(sys::LookUp(scene.removalListPath).kind, sys::EntryKind::file);
    EXPECT_EQ(ReadFile(scene.content + "a.txt"), "player's a");
    EXPECT_EQ(ReadFile(scene.archivePath), archiveHeader + Record("a.txt", "player's a"));
}
#endif

TEST(UninstallPassesOver, RemovalLinesNamingBackupFilesDevicesOrOverlongPaths)
{
    InstallScene scene;
    const std::string& a = scene.accountFolder;
    const std::string& c = scene.content;
    WriteFile(scene.archivePath, archiveHeader + Record("cfg/config.cfg", "player's config"));
    WriteFile(a + "/cssludax.bak", archiveHeader);
    WriteFile(a + "/cssludax_1.bak", "");
    WriteFile(c + "one.cfg", "1");
    WriteFile(c + "two.cfg", "2");
#ifndef _WIN32
    // Windows cannot even hold these two: the one is a device, the other loses its dot.
    WriteFile(c + "aux", "not a device here, but it would be under Windows");
    WriteFile(c + "cfg.", "trailing dot");
#endif
    const std::string longName(300, 'l');
    std::string list = c + "one.cfg\r\n";
    for (const std::string& line :
         {a + "/cs16ludax.bak", a + "/CSSLUDAX.BAK", a + "/cssludax_1.bak", c + "aux", c + "cfg.",
          std::string(c + "two.cfg").insert(c.size(), 1, '\0'), c + longName})
        list += line + "\r\n";
    list += c + "two.cfg\r\n";
    WriteFile(scene.removalListPath, list);

    EXPECT_FALSE(scene.Uninstall().backupKept);
    Tree expected{{"cfg", "<folder>"}, {"cfg/config.cfg", "player's config"}};
#ifndef _WIN32
    expected["aux"] = "not a device here, but it would be under Windows";
    expected["cfg."] = "trailing dot";
#endif
    EXPECT_EQ(Snapshot(c), expected);
    EXPECT_TRUE(Exists(a + "/cssludax.bak"));
    EXPECT_TRUE(Exists(a + "/cssludax_1.bak"));
    EXPECT_FALSE(Exists(scene.archivePath));  // restored, then deleted as usual
    EXPECT_FALSE(Exists(scene.removalListPath));
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
