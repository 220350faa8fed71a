#include <gtest/gtest.h>

#include <sstream>

#include "install_scene.h"

namespace {

using Result = InstallOutcome::Result;

TEST(Install, AFirstInstallKeepsWhatItOverwritesAndListsWhatItMakesInContainerOrderForTheUninstallToUndo)
{
    // Records: cfg/ludax/binds.cfg, resource/background/x.tga, a.txt, cfg/config.cfg. Files in
    // container order, then the folders it made, deepest first; the uninstall puts the account
    // folder back as it was, backup files gone too.
    const struct {
        const char* what;
        std::vector<PayloadFile> players;  // in the content folder before the install
        std::vector<PayloadFile> kept;     // the archive's records
        std::string listed;                // below the content folder, a line each
    } cases[] = {
        {"none of its files there", {{"autoexec.cfg", "player's own"}}, {},
         "cfg/ludax/binds.cfg resource/background/x.tga a.txt cfg/config.cfg resource/background resource cfg/ludax cfg"},
        {"some there, one empty",
         {{"a.txt", ""}, {"cfg/ludax/binds.cfg", "bind \"F1\" \"kill\"\r\n"}},
         {{"cfg/ludax/binds.cfg", "bind \"F1\" \"kill\"\r\n"}, {"a.txt", ""}},
         "resource/background/x.tga cfg/config.cfg resource/background resource"},
        {"all there",
         {{"cfg/ludax/binds.cfg", "old b"}, {"resource/background/x.tga", "old x"}, {"a.txt", "old a"},
          {"cfg/config.cfg", std::string("old\0c", 5)}},
         {{"cfg/ludax/binds.cfg", "old b"}, {"resource/background/x.tga", "old x"}, {"a.txt", "old a"},
          {"cfg/config.cfg", std::string("old\0c", 5)}},
         ""},
        {"no content folder at all", {}, {},
         "cfg/ludax/binds.cfg resource/background/x.tga a.txt cfg/config.cfg resource/background resource cfg/ludax cfg "
         "<cstrike>"},
    };
    for (const auto& c : cases) {
        InstallScene scene;
        const std::string cstrike = scene.accountFolder + "/counter-strike/cstrike";
        if (c.players.empty())
            RemovePath(cstrike);
        for (const PayloadFile& file : c.players)
            WriteFile(scene.content + file.name, file.data);
        if (!c.players.empty())
            MakeFolders(scene.content + "maps");  // an empty folder of the player's
        WriteFile(scene.accountFolder + "/counter-strike source/cstrike/a.txt", "the other game");
        const Tree before = Snapshot(scene.accountFolder);
        const InstallOutcome outcome = scene.Install();
        EXPECT_EQ(outcome.result, Result::installed) << c.what;
        EXPECT_TRUE(outcome.installed) << c.what;
        EXPECT_TRUE(scene.PayloadWritten()) << c.what;
        EXPECT_FALSE(Exists(scene.accountFolder + "/cssludax.bak")) << c.what;
        std::string archive = archiveHeader, list;
        for (const PayloadFile& record : c.kept)
            archive += Record(record.name, record.data);
        std::istringstream lines(c.listed);
        for (std::string line; lines >> line;)
            list += (line == "<cstrike>" ? cstrike : scene.content + line) + "\r\n";
        EXPECT_EQ(ReadFile(scene.archivePath), archive) << c.what;
        EXPECT_EQ(ReadFile(scene.removalListPath), list) << c.what;
        const UninstallOutcome undone = scene.Uninstall();
        EXPECT_FALSE(undone.backupKept || undone.installed) << c.what;
        EXPECT_EQ(Snapshot(scene.accountFolder), before) << c.what;
    }
}

TEST(Install, ReinstallAfterYesRewritesTargetsAndLeavesTheBackupFilesAlone)
{
    InstallScene scene;
    WriteFile(scene.content + "a.txt", "the player's a.txt");
    scene.Install();
    const std::string archive = ReadFile(scene.archivePath);
    const std::string list = ReadFile(scene.removalListPath);

    WriteFile(scene.content + "cfg/ludax/binds.cfg", "edited after the install");
    WriteFile(scene.content + "resource/background/x.tga", "");
    const InstallOutcome again = scene.Install();
    EXPECT_EQ(again.result, Result::installed);
    EXPECT_TRUE(again.installed);
    EXPECT_TRUE(scene.PayloadWritten());
    EXPECT_EQ(ReadFile(scene.archivePath), archive);
    EXPECT_EQ(ReadFile(scene.removalListPath), list);
}

TEST(Install, ALaterInstallCoversWhatANewerSetOrThePlayerAddedAndUndoesNothingEarlier)
{
    InstallScene scene;
    const std::string& c = scene.content;
    WriteFile(c + "a.txt", "player's a");
    WriteFile(c + "maps/own.bsp", "player's map");
    WriteFile(c + "maps/de_new.bsp", "player's de_new");
    const Tree before = Snapshot(scene.steam.Path());
    ASSERT_EQ(scene.Install().result, Result::installed);
    const std::string archive = ReadFile(scene.archivePath);
    const std::string list = ReadFile(scene.removalListPath);

    // A newer program carries two more files, and the player has since removed a folder of his
    // own that one of them needs.
    std::vector<PayloadFile> newer = testPayload;
    newer.push_back({"maps/de_new.bsp", "the new map"});
    newer.push_back({"sound/ludax/go.wav", "go"});
    scene.Repack(newer);
    ASSERT_EQ(scene.Install().result, Result::installed);
    EXPECT_TRUE(scene.PayloadWritten());
    EXPECT_EQ(ReadFile(scene.archivePath), archive + Record("maps/de_new.bsp", "player's de_new"));
    EXPECT_EQ(ReadFile(scene.removalListPath),
              list + c + "sound/ludax/go.wav\r\n" + c + "sound/ludax\r\n" + c + "sound\r\n");
    EXPECT_FALSE(scene.Uninstall().backupKept);
    EXPECT_EQ(Snapshot(scene.steam.Path()), before);
}

TEST(Install, ContinuesBackupFilesCutShortWhereTheirReadersStop)
{
    // An archive whose last record was cut off, and removal lists ending without their last LF
    // or holding an empty line: what an install adds must follow what the uninstall will read.
    InstallScene scene;
    const std::string& c = scene.content;
    WriteFile(c + "a.txt", "player's a");
    for (const std::string& earlierList : {c + "cfg/old.cfg\r\n" + c + "cfg/older.cfg",
                                           c + "cfg/old.cfg\r\n\r\n" + c + "cfg/older.cfg\r\n"}) {
        WriteFile(c + "cfg/old.cfg", "an earlier install's file");
        WriteFile(c + "cfg/older.cfg", "an earlier install's file");
        WriteFile(scene.archivePath, archiveHeader + Record("cfg/config.cfg", "0123456789").substr(0, 17));
        WriteFile(scene.removalListPath, earlierList);
        RemovePath(c + "cfg/ludax/binds.cfg");
        ASSERT_EQ(scene.Install().result, Result::installed) << earlierList;
        EXPECT_EQ(ReadFile(scene.archivePath), archiveHeader + Record("a.txt", "player's a"));
        EXPECT_EQ(ReadFile(scene.removalListPath).substr(earlierList.size()),
                  (earlierList.back() == '\n' ? "" : "\r\n") + c + "cfg/ludax/binds.cfg\r\n" + c +
                      "resource/background/x.tga\r\n" + c + "cfg/config.cfg\r\n" + c + "resource/background\r\n" + c +
                      "resource\r\n" + c + "cfg/ludax\r\n")
            << earlierList;
        EXPECT_FALSE(scene.Uninstall().backupKept);
        EXPECT_EQ(Snapshot(c), (Tree{{"a.txt", "player's a"}, {"cfg", "<folder>"}})) << earlierList;
    }
}

TEST(Install, AFileStandingWhereAFilesFolderBelongsIsLeftAloneAndTheInstallGoesOn)
{
    InstallScene scene;
    const std::string& c = scene.content;
    WriteFile(c + "cfg/ludax", "the player's file named like a folder");
    const Tree before = Snapshot(scene.accountFolder);
    EXPECT_EQ(scene.Install().result, Result::installed);
    EXPECT_EQ(ReadFile(c + "cfg/ludax"), "the player's file named like a folder");
    EXPECT_EQ(ReadFile(c + "a.txt"), "LUDAX\r\n");  // a record after it
    EXPECT_FALSE(scene.Uninstall().backupKept);
    EXPECT_EQ(Snapshot(scene.accountFolder), before);
}

}  // namespace

namespace {

using Rewrite = ::Rewrite;

// An install over an installed one; `wrote` gains each file it wrote.
InstallOutcome Converge(InstallScene& scene, Rewrite rewrite = Rewrite::onlyOurs, std::vector<std::string>* wrote = nullptr)
{
    return InstallConfig(scene.profile, scene.account, [&](Did did, const std::string& path, const sys::Reason&) {
        if (did == Did::wrote && wrote)
            wrote->push_back(path);
    }, {}, rewrite);
}

std::vector<std::string> Paths(const std::vector<NotAsShipped>& files)
{
    std::vector<std::string> paths;
    for (const NotAsShipped& file : files)
        paths.push_back(file.path);
    return paths;
}

}  // namespace

TEST(Install, APlainInstallAgainWritesWhatIsOursOrTheStoppedOnesAndStopsAtAFileSomeoneChanged)
{
    // Records: cfg/ludax/binds.cfg, resource/background/x.tga, a.txt, cfg/config.cfg.
    InstallScene scene;
    const std::string& c = scene.content;
    WriteFile(c + "a.txt", "player's a");
    WriteFile(c + "cfg/config.cfg", "player's config");
    const Tree before = Snapshot(scene.steam.Path());
    ASSERT_EQ(scene.Install().result, Result::installed);

    // Every file as shipped: nothing is written, not even a backup file.
    const Tree installed = Snapshot(scene.steam.Path());
    std::vector<std::string> wrote;
    InstallOutcome again = Converge(scene, Rewrite::onlyOurs, &wrote);
    EXPECT_EQ(again.result, Result::installed);
    EXPECT_EQ(again.written, 0u);
    EXPECT_EQ(wrote, std::vector<std::string>{});
    EXPECT_EQ(Snapshot(scene.steam.Path()), installed);

    // A newer set: one file changed, one added where the player has a file of his own. What still
    // holds what the first set wrote is written again; the player's file is backed up first.
    std::vector<PayloadFile> newer = testPayload;
    newer[0].data = "bind \"F1\" \"buy m4a1\"\r\n";
    newer.push_back({"maps/de_new.bsp", "the new map"});
    WriteFile(c + "maps/de_new.bsp", "player's de_new");
    scene.Repack(newer);
    again = Converge(scene);
    EXPECT_EQ(again.result, Result::installed);
    EXPECT_EQ(again.written, 2u);
    EXPECT_TRUE(scene.PayloadWritten());

    // A file someone changed since: nothing is written, and it is named. A file missing, or
    // holding the player's bytes the archive holds (as an install stopped before it left it), is
    // not; /yes writes over the change.
    WriteFile(c + "cfg/ludax/binds.cfg", "the player's own binds");
    RemovePath(c + "a.txt");
    WriteFile(c + "cfg/config.cfg", "player's config");
    const Tree changed = Snapshot(scene.steam.Path());
    again = Converge(scene);
    EXPECT_EQ(again.result, Result::changedSince);
    EXPECT_EQ(Paths(again.changed), std::vector<std::string>{c + "cfg/ludax/binds.cfg"});
    EXPECT_EQ(Snapshot(scene.steam.Path()), changed);
    again = Converge(scene, Rewrite::whatDiffers, &wrote);
    EXPECT_EQ(again.result, Result::installed);
    EXPECT_EQ(again.written, 3u);
    EXPECT_EQ(wrote, (std::vector<std::string>{c + "cfg/ludax/binds.cfg", c + "a.txt", c + "cfg/config.cfg"}));
    EXPECT_TRUE(scene.PayloadWritten());
    // The window's Yes writes every file again, those standing as shipped too.
    EXPECT_EQ(Converge(scene, Rewrite::everyFile).written, 5u);

    // The uninstall puts back the state before the first install, the new set's map included.
    Tree expected = before;
    expected["steamapps/player/counter-strike/cstrike/maps"] = "<folder>";
    expected["steamapps/player/counter-strike/cstrike/maps/de_new.bsp"] = "player's de_new";
    EXPECT_FALSE(scene.Uninstall().backupKept);
    EXPECT_EQ(Snapshot(scene.steam.Path()), expected);
}

TEST(Verify, EveryByteOfAFileLargerThanOneBlockCountsEitherWay)
{
    // Files are compared a block (1 MiB) at a time; this one is larger, and changes in its last
    // byte only, to one below the shipped byte and to one above it.
    std::string big(3 << 19, 'b');
    big.back() = 'm';
    InstallScene scene({{"maps/big.bsp", big}, {"a.txt", "LUDAX"}});
    ASSERT_EQ(scene.Install().result, Result::installed);
    EXPECT_TRUE(FilesNotAsShipped(scene.profile, scene.account).empty());
    for (char last : {'l', 'n'}) {
        std::string changed = big;
        changed.back() = last;
        WriteFile(scene.content + "maps/big.bsp", changed);
        const std::vector<NotAsShipped> differing = FilesNotAsShipped(scene.profile, scene.account);
        ASSERT_EQ(differing.size(), 1u) << last;
        EXPECT_EQ(differing[0].path, scene.content + "maps/big.bsp");
        EXPECT_EQ(differing[0].state, Sameness::differs);
    }
}
