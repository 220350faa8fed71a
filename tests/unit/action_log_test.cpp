// The log a LAN admin keeps: one line per thing an install or uninstall did.
#include <gtest/gtest.h>

#include <ctime>

#include "action_log.h"
#include "install_scene.h"
#include "run_log.h"

namespace {

using Actions = std::vector<std::string>;

TEST(ActionLog, EveryBackupWriteFolderRemovalAndRestoreIsALineWithItsTime)
{
    InstallScene scene;  // records: cfg/ludax/binds.cfg, resource/background/x.tga, a.txt, cfg/config.cfg
    const std::string& c = scene.content;
    WriteFile(c + "a.txt", "player's a");
    Actions actions;
    const char* const words[] = {"backed up", "wrote", "made folder", "removed", "restored", "kept", "stopped"};
    sys::Reason stoppedFor;
    const ActionLog log = [&](Did did, const std::string& path, const sys::Reason& why) {
        actions.push_back(words[static_cast<int>(did)] + (" " + path));
        if (did == Did::stopped)
            stoppedFor = why;
    };

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
    const InstallOutcome stopped = InstallConfig(scene.profile, scene.account, log);
    EXPECT_EQ(stopped.result, InstallOutcome::Result::backupFailed);
    EXPECT_EQ(actions.back(), "stopped " + c + "a.txt");
    EXPECT_EQ(stoppedFor, stopped.reason);
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
    LogRefusal refusal = LogRefusal::none;
    {
        // An earlier run's lines stay; this run's go after them.
        WriteFile(path, "2026-11-20T10:00:00Z\tstarted\tLudax config. 1.02\tPC\tadmin\t/list\r\n");
        std::optional<RunLog> log = RunLog::Open(path, std::vector<SteamAccount>{}, "/install cs16", refusal);
        ASSERT_TRUE(log);
        log->Actions()(Did::wrote, "C:/Steam/a b.cfg", {});
        log->Actions()(Did::stopped, "C:/Steam/x\ny.cfg", sys::Reason::Refused(sys::Reason::Own::link));
        log->End(6, "the install stopped\n");
    }
    const std::string after = utcNow();
    const std::vector<std::string> lines = [&] {
        std::vector<std::string> split;
        const std::string text = ReadFile(path);
        for (std::size_t at = 0, end; (end = text.find("\r\n", at)) != std::string::npos; at = end + 2)
            split.push_back(text.substr(at, end - at));
        return split;
    }();
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_EQ(lines[0], "2026-11-20T10:00:00Z\tstarted\tLudax config. 1.02\tPC\tadmin\t/list");
    for (std::size_t i = 1; i < lines.size(); ++i) {
        const std::string stamp = lines[i].substr(0, 20);
        EXPECT_TRUE(before <= stamp && stamp <= after) << stamp << " is not between " << before << " and " << after;
    }
    EXPECT_EQ(lines[1].substr(20, 15), "\tstarted\tLudax ");
    EXPECT_EQ(lines[2].substr(20), "\twrote\tC:\\Steam\\a b.cfg");  // in Windows form
    // A stop says why; a line end within a field would break the line, and becomes a space.
    EXPECT_EQ(lines[3].substr(20), "\tstopped\tC:\\Steam\\x y.cfg\tA link (a junction or symbolic link) stands on the way: what "
                                   "lies behind it may be anywhere, so the program does not go through it.");
    EXPECT_EQ(lines[4].substr(20), "\tended\t6\tthe install stopped");
}

}  // namespace
