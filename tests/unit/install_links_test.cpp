// Links: at or above the content folder they are the player's layout and are followed; below
// it nothing is written, made or deleted through one. Natively these are real symbolic links.
// Under Wine a Unix link to a folder shows as a folder with the reparse-point attribute, and
// that is all Wine shows: a link to a file looks like a plain file and a dangling link is not
// found, so the cases with those run natively only.
#include <gtest/gtest.h>

#include "install_scene.h"
#include "system.h"

namespace {

// A folder outside the account with a file of someone else's in it.
struct Elsewhere {
    TempFolder root;
    const std::string folder = root.Path() + "/elsewhere";
    Elsewhere() { WriteFile(folder + "/binds.cfg", "not the game's"); }
};

TEST(Links, UninstallNeitherDeletesNorWritesThroughALink)
{
    Elsewhere other;
    InstallScene scene;
    const std::string& c = scene.content;
    WriteFile(c + "kept.cfg", "the player's");
    ASSERT_TRUE(MakeLink(other.folder, c + "cfg"));
    const std::string& game = scene.account.Game(GameId::cs16).gameFolder;
    ASSERT_TRUE(MakeLink(other.folder, game + "/linked"));
    std::string list = c + "cfg/binds.cfg\r\n" + game + "/linked\r\n" + game + "/linked/binds.cfg\r\n" + c + "cfg\r\n";
    std::string archive = archiveHeader + Record("cfg/binds.cfg", "restored through a link") + Record("kept.cfg", "restored");
    std::vector<std::string> links = {c + "cfg", game + "/linked"};
#ifndef _WIN32
    // Links to files, and one to nothing (Wine shows neither as a link).
    ASSERT_TRUE(MakeLink(other.folder + "/binds.cfg", c + "removed.cfg"));
    ASSERT_TRUE(MakeLink(other.folder + "/binds.cfg", c + "restored.cfg"));
    ASSERT_TRUE(MakeLink(other.folder + "/gone.cfg", c + "dangling.cfg"));
    list += c + "removed.cfg\r\n" + c + "dangling.cfg\r\n";
    archive += Record("restored.cfg", "overwritten?") + Record("dangling.cfg", "created?");
    links.insert(links.end(), {c + "removed.cfg", c + "restored.cfg", c + "dangling.cfg"});
#endif
    WriteFile(scene.removalListPath, list);
    WriteFile(scene.archivePath, archive);
    const Tree outside = Snapshot(other.root.Path());

    // The record that meets the link is still only in the archive: it stays.
    EXPECT_TRUE(scene.Uninstall().backupKept);
    EXPECT_EQ(Snapshot(other.root.Path()), outside);
    for (const std::string& link : links)
        EXPECT_TRUE(sys::LookUp(link).link) << link;
    EXPECT_EQ(ReadFile(c + "kept.cfg"), "restored");
    EXPECT_TRUE(Exists(scene.archivePath));
}

TEST(Links, AGameMovedToAnotherDriveInstallsAndUninstallsLikeAnyOther)
{
    // The game's folder, or the content folder itself, stands elsewhere behind a link, as a
    // player who moved it to another drive with a junction has it.
    for (const char* moved : {"/counter-strike", "/counter-strike/cstrike"}) {
        InstallScene scene;
        TempFolder drive;
        const std::string elsewhere = drive.Path() + "/moved";
        MakeFolders(elsewhere + (std::string(moved) == "/counter-strike" ? "/cstrike" : ""));
        RemovePath(scene.content.substr(0, scene.content.size() - 1));
        if (std::string(moved) == "/counter-strike")
            RemovePath(scene.account.Game(GameId::cs16).gameFolder);
        ASSERT_TRUE(MakeLink(elsewhere, scene.accountFolder + moved)) << moved;
        WriteFile(scene.content + "a.txt", "player's a");
        const Tree before = Snapshot(drive.Path());

        EXPECT_EQ(scene.Install().result, InstallOutcome::Result::installed) << moved;
        EXPECT_TRUE(scene.PayloadWritten()) << moved;
        EXPECT_FALSE(scene.Uninstall().backupKept) << moved;
        EXPECT_EQ(Snapshot(drive.Path()), before) << moved;
        EXPECT_FALSE(Exists(scene.archivePath)) << moved;
        EXPECT_TRUE(sys::LookUp(scene.accountFolder + moved).link) << moved;
    }
}

#ifndef _WIN32
TEST(Links, InstallStopsBeforeWritingThroughALink)
{
    Elsewhere other;
    WriteFile(other.folder + "/config.cfg", "someone's config");
    const std::vector<PayloadFile> payload = {{"a.txt", "LUDAX"}, {"cfg/config.cfg", "exec"}};
    struct Case {
        const char* what;
        std::string linkTarget;  // in `other`
        std::string link;        // in the content folder
        std::string stopsAt;     // the file named in the box
    };
    for (const Case& c : {Case{"a file link", "/binds.cfg", "a.txt", "a.txt"},
                          Case{"a dangling link", "/none", "a.txt", "a.txt"},
                          Case{"a folder link on the way", "", "cfg", "cfg/config.cfg"}}) {
        InstallScene scene(payload);
        ASSERT_TRUE(MakeLink(other.folder + c.linkTarget, scene.content + c.link)) << c.what;
        const Tree outside = Snapshot(other.root.Path());
        const InstallOutcome outcome = scene.Install();
        EXPECT_EQ(outcome.result, InstallOutcome::Result::writeFailed) << c.what;
        EXPECT_EQ(outcome.path, scene.content + c.stopsAt) << c.what;
        EXPECT_EQ(outcome.reason, sys::Reason::Refused(sys::Reason::Own::link)) << c.what;
        EXPECT_EQ(Snapshot(other.root.Path()), outside) << c.what;
        // Stopped at its first file it changed nothing; past it, the next start offers the uninstall.
        EXPECT_EQ(Exists(scene.archivePath), c.stopsAt != "a.txt") << c.what;
    }
    // A link in a backup file's place: the install would cut and add to whatever it leads to.
    for (const bool list : {false, true}) {
        InstallScene scene(payload);
        const std::string backupFile = list ? scene.removalListPath : scene.archivePath;
        ASSERT_TRUE(MakeLink(other.folder + "/config.cfg", backupFile));
        const Tree outside = Snapshot(other.root.Path()), game = Snapshot(scene.content);
        const InstallOutcome outcome = scene.Install();
        EXPECT_EQ(outcome.result, InstallOutcome::Result::writeFailed) << backupFile;
        EXPECT_EQ(outcome.path, backupFile);
        EXPECT_EQ(outcome.reason, sys::Reason::Refused(sys::Reason::Own::link)) << backupFile;
        EXPECT_EQ(Snapshot(other.root.Path()), outside) << backupFile;
        EXPECT_EQ(Snapshot(scene.content), game) << backupFile;
    }
}
#endif

}  // namespace
