// The log a LAN admin keeps: one line per thing an install or uninstall did.
#include <gtest/gtest.h>

#include <ctime>

#include "action_log.h"
#include "install_scene.h"

namespace {

using Actions = std::vector<std::string>;

TEST(ActionLog, EveryBackupWriteFolderRemovalAndRestoreIsALineWithItsTime)
{
    InstallScene scene;  // records: cfg/ludax/binds.cfg, resource/background/x.tga, a.txt, cfg/config.cfg
    const std::string& c = scene.content;
    WriteFile(c + "a.txt", "player's a");
    Actions actions;
    const ActionLog log = [&](const char* action, const std::string& path) { actions.push_back(action + (" " + path)); };

    ASSERT_EQ(InstallConfig(scene.profile, scene.account, log).result, InstallOutcome::Result::installed);
    EXPECT_EQ(actions, (Actions{"made folder " + c + "cfg", "made folder " + c + "cfg/ludax", "wrote " + c + "cfg/ludax/binds.cfg",
                                "made folder " + c + "resource", "made folder " + c + "resource/background",
                                "wrote " + c + "resource/background/x.tga", "backed up " + c + "a.txt", "wrote " + c + "a.txt",
                                "wrote " + c + "cfg/config.cfg"}));
    actions.clear();
    {
        // A file of the player's in a folder the install made: the folder is his now.
        WriteFile(c + "cfg/ludax/own.cfg", "player's own");
        ASSERT_FALSE(UninstallConfig(scene.profile, scene.account, log).backupKept);
    }
    EXPECT_EQ(actions, (Actions{"removed " + c + "cfg/ludax/binds.cfg", "removed " + c + "resource/background/x.tga",
                                "removed " + c + "cfg/config.cfg", "removed " + c + "resource/background",
                                "removed " + c + "resource", "restored " + c + "a.txt"}));

    // Where the install stops, and what an uninstall keeps.
    actions.clear();
    RemovePath(c + "a.txt");
    MakeFolders(c + "a.txt/in the way");
    EXPECT_EQ(InstallConfig(scene.profile, scene.account, log).result, InstallOutcome::Result::backupFailed);
    EXPECT_EQ(actions.back(), "stopped " + c + "a.txt");
}

TEST(ActionLog, TheFileGainsALinePerActionStampedInUtc)
{
    EXPECT_EQ(IsoTime(0), "1970-01-01T00:00:00Z");
    EXPECT_EQ(IsoTime(1795368303), "2026-11-22T17:25:03Z");
    TempFolder root;
    const std::string path = root.Path() + "/ludax.log";
    WriteFile(path, "an earlier line\r\n");
    // The time in UTC as ISO 8601 writes it, which sorts as the times do.
    const auto utcNow = [] {
        const std::time_t now = std::time(nullptr);
        char text[32] = {};
        std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", std::gmtime(&now));
        return std::string(text);
    };
    const std::string before = utcNow();
    {
        ActionLogFile file(sys::File::OpenForAppending(path));
        ASSERT_TRUE(file.IsOpen());
        file.AsLog()("wrote", "C:/Steam/a b.cfg");
    }
    const std::string after = utcNow(), log = ReadFile(path);
    ASSERT_EQ(log.size(), 17u + 20 + 1 + 5 + 1 + 16 + 2) << log;
    EXPECT_EQ(log.substr(0, 17), "an earlier line\r\n");
    EXPECT_EQ(log.substr(17 + 20), "\twrote\tC:\\Steam\\a b.cfg\r\n");  // in Windows form
    const std::string stamp = log.substr(17, 20);
    EXPECT_TRUE(before <= stamp && stamp <= after) << stamp << " is not between " << before << " and " << after;
}

}  // namespace
