// Links at or below the account folder. Natively these are real symbolic links. Under Wine a
// Unix link to a folder shows as a folder with the reparse-point attribute, and that is all
// Wine shows: a link to a file looks like a plain file and a dangling link is not found, so
// the cases with those run natively only.
#include <gtest/gtest.h>

#include "install_scene.h"
#include "link_rule.h"
#include "system.h"

namespace {

using Tree = std::map<std::string, std::string>;

const std::string header("\x01\0\0\0", 4);

// A folder outside the account with a file of someone else's in it.
struct Elsewhere {
    TempFolder root;
    const std::string folder = root.Path() + "/elsewhere";
    Elsewhere() { WriteFile(folder + "/binds.cfg", "not the game's"); }
};

TEST(Links, TheLookUpSeesAFolderLinkAsALink)
{
    Elsewhere other;
    TempFolder root;
    ASSERT_TRUE(MakeLink(other.folder, root.Path() + "/link"));
    const sys::Entry entry = sys::LookUp(root.Path() + "/link");
    EXPECT_EQ(entry.kind, sys::EntryKind::folder);
    EXPECT_TRUE(entry.link);
    EXPECT_FALSE(sys::LookUp(other.folder).link);

    KnownFolders known;
    EXPECT_TRUE(MeetsLink(root.Path(), root.Path() + "/link/binds.cfg", &known));
    EXPECT_FALSE(MeetsLink(root.Path(), root.Path(), &known));
    EXPECT_TRUE(MeetsLink(root.Path() + "/link", root.Path() + "/link", &known));
    EXPECT_TRUE(MeetsLink(root.Path(), root.Path() + "/link", &known));
    EXPECT_TRUE(MeetsLink(root.Path() + "/link", root.Path() + "/link/binds.cfg", &known));
    EXPECT_FALSE(MeetsLink(other.root.Path(), other.folder + "/binds.cfg", &known));
    EXPECT_TRUE(MeetsLink(other.root.Path(), root.Path() + "/elsewhere/binds.cfg", &known));  // not below
}

TEST(Links, UninstallNeitherDeletesNorWritesThroughAFolderLink)
{
    Elsewhere other;
    InstallScene scene;
    const std::string& c = scene.content;
    WriteFile(c + "kept.cfg", "the player's");
    ASSERT_TRUE(MakeLink(other.folder, c + "cfg"));
    ASSERT_TRUE(MakeLink(other.folder, scene.accountFolder + "/linked"));
    WriteFile(scene.removalListPath, c + "cfg/binds.cfg\r\n" + scene.accountFolder + "/linked\r\n" +
                                         scene.accountFolder + "/linked/binds.cfg\r\n" + c + "cfg\r\n");
    WriteFile(scene.archivePath, header + Record("cfg/binds.cfg", "restored through a link") +
                                     Record("kept.cfg", "restored"));
    const Tree outside = Snapshot(other.root.Path());

    // The record that meets the link is still only in the archive: it stays.
    EXPECT_TRUE(scene.Uninstall().archiveKept);
    EXPECT_EQ(Snapshot(other.root.Path()), outside);
    EXPECT_EQ(sys::LookUp(c + "cfg").link, true);
    EXPECT_EQ(sys::LookUp(scene.accountFolder + "/linked").link, true);
    EXPECT_EQ(ReadFile(c + "kept.cfg"), "restored");
    EXPECT_TRUE(Exists(scene.archivePath));
}

TEST(Links, AnAccountFolderThatIsALinkIsNotTouched)
{
    InstallScene real;
    WriteFile(real.content + "a.txt", "player's a");
    real.Install();
    const Tree installed = Snapshot(real.accountFolder);

    // The same account reached through a link standing where the account folder was.
    TempFolder linkRoot;
    SteamAccount account = real.account;
    account.folder = linkRoot.Path() + "/player";
    account.cs16Content = account.folder + "/counter-strike/cstrike/";
    ASSERT_TRUE(MakeLink(real.accountFolder, account.folder));
    account.hasCs16Backup = true;
    EXPECT_TRUE(UninstallConfig(real.profile, account).archiveKept);
    EXPECT_EQ(Snapshot(real.accountFolder), installed);
    EXPECT_TRUE(account.hasCs16Backup);
}

#ifndef _WIN32
TEST(Links, UninstallLeavesFileLinksAndWhatTheyPointAtAlone)
{
    Elsewhere other;
    InstallScene scene;
    const std::string& c = scene.content;
    const std::string target = other.folder + "/binds.cfg";
    ASSERT_TRUE(MakeLink(target, c + "removed.cfg"));
    ASSERT_TRUE(MakeLink(target, c + "restored.cfg"));
    ASSERT_TRUE(MakeLink(other.folder + "/gone.cfg", c + "dangling.cfg"));
    WriteFile(scene.removalListPath, c + "removed.cfg\r\n" + c + "dangling.cfg\r\n");
    WriteFile(scene.archivePath, header + Record("restored.cfg", "overwritten?") +
                                     Record("dangling.cfg", "created?"));
    scene.Uninstall();
    EXPECT_EQ(ReadFile(target), "not the game's");
    EXPECT_FALSE(Exists(other.folder + "/gone.cfg"));
    for (const char* name : {"removed.cfg", "restored.cfg", "dangling.cfg"})
        EXPECT_TRUE(sys::LookUp(c + name).link) << name;
    EXPECT_TRUE(Exists(scene.archivePath));
}

TEST(Links, InstallDoesNotBackUpThroughALink)
{
    Elsewhere other;
    WriteFile(other.folder + "/config.cfg", "someone's config");
    const std::vector<PayloadFile> payload = {{"a.txt", "LUDAX"}, {"cfg/config.cfg", "exec"}};
    struct Case {
        const char* what;
        std::string linkTarget;  // in `other`
        std::string link;        // in the content folder
        std::string stopsAt;     // the target the install stops before
    };
    for (const Case& c : {Case{"a file link", "/binds.cfg", "a.txt", "a.txt"},
                          Case{"a dangling link", "/none", "a.txt", "a.txt"},
                          Case{"a folder link on the way", "", "cfg", "cfg/config.cfg"}}) {
        InstallScene scene(payload);
        ASSERT_TRUE(MakeLink(other.folder + c.linkTarget, scene.content + c.link)) << c.what;
        const Tree outside = Snapshot(other.root.Path());
        const InstallOutcome outcome = scene.Install();
        EXPECT_EQ(outcome.result, InstallOutcome::Result::backupFailed) << c.what;
        EXPECT_EQ(outcome.path, scene.content + c.stopsAt) << c.what;
        EXPECT_EQ(Snapshot(other.root.Path()), outside) << c.what;
        EXPECT_TRUE(Exists(scene.archivePath)) << c.what;  // the next start offers the uninstall
    }
}
#endif

}  // namespace
