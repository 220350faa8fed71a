// A first install changes a player's file only once every player's file it changes is recorded
// in the archive (natively: a pipe and a file too large to record stand for a file that cannot
// be read).
#ifndef _WIN32
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <functional>

#include "fault_injection.h"
#include "install_scene.h"

namespace {

const std::uint64_t twoGiB = std::uint64_t{1} << 31;

TEST(BackupFailure, InstallStopsBeforeChangingAnythingAndTheNextInstallBacksItAllUp)
{
    using Own = sys::Reason::Own;
    struct Case {
        const char* what;
        std::function<void(const std::string&)> make;  // puts an unreadable a.txt in place
        Own why;
    };
    const std::vector<Case> cases = {
        {"a pipe", [](const std::string& path) { ASSERT_EQ(mkfifo(path.c_str(), 0644), 0); }, Own::notADiskFile},
        {"a 2 GiB file",
         [](const std::string& path) {
             WriteFile(path, "");
             ResizeFile(path, twoGiB);
         },
         Own::tooLargeToBackUp},
    };
    for (const Case& c : cases) {
        InstallScene scene;  // records: cfg/ludax/binds.cfg, resource/background/x.tga, a.txt, cfg/config.cfg
        const std::string& p = scene.content;
        WriteFile(p + "cfg/ludax/binds.cfg", "player's binds");
        WriteFile(p + "cfg/config.cfg", "player's config");
        WriteFile(p + "a.txt", "player's a");
        const Tree before = Snapshot(scene.accountFolder);
        RemovePath(p + "a.txt");
        c.make(p + "a.txt");

        const InstallOutcome outcome = scene.Install();
        EXPECT_EQ(outcome.result, InstallOutcome::Result::backupFailed) << c.what;
        EXPECT_EQ(outcome.path, p + "a.txt") << c.what;
        EXPECT_EQ(outcome.reason, sys::Reason::Refused(c.why)) << c.what;
        EXPECT_TRUE(outcome.installed) << c.what << ": the archive's presence offers the uninstall";

        // Nothing of the player's changed and nothing was made; the record of the file before it
        // went again, so that it cannot stand for a file the player may still change. The
        // archive's presence offers the uninstall, which has nothing to undo.
        EXPECT_EQ(ReadFile(p + "cfg/ludax/binds.cfg"), "player's binds") << c.what;
        EXPECT_FALSE(Exists(p + "resource")) << c.what;
        EXPECT_EQ(ReadFile(p + "cfg/config.cfg"), "player's config") << c.what;
        EXPECT_EQ(ReadFile(scene.archivePath), archiveHeader) << c.what;
        EXPECT_FALSE(Exists(scene.removalListPath)) << c.what;

        // Once the file can be read, the next install backs up all three, and the uninstall puts
        // them back.
        RemovePath(p + "a.txt");
        WriteFile(p + "a.txt", "player's a");
        EXPECT_EQ(scene.Install().result, InstallOutcome::Result::installed) << c.what;
        EXPECT_TRUE(scene.PayloadWritten()) << c.what;
        EXPECT_EQ(ReadFile(scene.archivePath), archiveHeader + Record("cfg/ludax/binds.cfg", "player's binds") +
                                                   Record("a.txt", "player's a") +
                                                   Record("cfg/config.cfg", "player's config"))
            << c.what;
        EXPECT_FALSE(scene.Uninstall().backupKept) << c.what;
        EXPECT_EQ(Snapshot(scene.accountFolder), before) << c.what;
    }
    // Nothing to back up, and the archive fails (a failing call at each point in turn): never a
    // removal list without its archive, which alone offers the uninstall.
    int met = 0;
    for (std::uint64_t nth = 1; nth < 100; ++nth) {
        InstallScene scene;
        sys::faults::Arm(nth, sys::faults::Mode::fail);
        const InstallOutcome stopped = scene.Install();
        sys::faults::Arm(0, sys::faults::Mode::fail);
        if (stopped.path != scene.archivePath)
            continue;
        ++met;
        EXPECT_TRUE(Exists(scene.archivePath) || !Exists(scene.removalListPath)) << "call " << nth;
    }
    EXPECT_GE(met, 2) << "the archive's look-up and its making";
}

TEST(BackupFailure, AnInstallStoppedAtAFileKeepsNoRecordOrLineForTheFilesAfterIt)
{
    // The calls in turn until one fails the write of the first file, after the write ahead.
    for (std::uint64_t nth = 1; nth < 200; ++nth) {
        InstallScene scene;  // records: cfg/ludax/binds.cfg, resource/background/x.tga, a.txt, cfg/config.cfg
        const std::string& p = scene.content;
        WriteFile(p + "cfg/ludax/binds.cfg", "player's binds");
        WriteFile(p + "cfg/config.cfg", "player's config");
        sys::faults::Arm(nth, sys::faults::Mode::fail);
        const InstallOutcome stopped = scene.Install();
        sys::faults::Arm(0, sys::faults::Mode::fail);
        ASSERT_NE(stopped.result, InstallOutcome::Result::installed) << "no failing call stopped it at its first file";
        if (stopped.result != InstallOutcome::Result::writeFailed || stopped.path != p + "cfg/ludax/binds.cfg" ||
            !Exists(scene.archivePath))
            continue;  // a call before the write ahead, or of it
        // What covers the first file stays; what was written ahead for the others goes: a record
        // of config.cfg would put back what the player changes meanwhile, a line for a.txt would
        // delete the one the player makes.
        EXPECT_EQ(ReadFile(scene.archivePath), archiveHeader + Record("cfg/ludax/binds.cfg", "player's binds"));
        EXPECT_EQ(ReadFile(scene.removalListPath), "");
        const std::string record = ReadFile(scene.accountFolder + "/cs16ludax_2.bak");
        EXPECT_EQ(record.substr(record.find("\r\n") + 2),
                  "file\t22\t6130d3b9539f5f8e369141f1bea00ff330cf35ec378bcb15bb3029444dd8a00b\tcstrike/cfg/ludax/binds.cfg\r\n")
            << "the sum of \"bind \\\"F1\\\" \\\"buy ak47\\\"\\r\\n\", as sha256sum gives it";
        WriteFile(p + "cfg/config.cfg", "player's newer config");
        WriteFile(p + "a.txt", "player's own a");
        const Tree now = Snapshot(scene.accountFolder);
        EXPECT_FALSE(scene.Uninstall().backupKept);
        Tree expected = now;
        for (const char* backup : {"cs16ludax.bak", "cs16ludax_1.bak", "cs16ludax_2.bak"})
            expected.erase(backup);
        expected["counter-strike/cstrike/cfg/ludax/binds.cfg"] = "player's binds";
        EXPECT_EQ(Snapshot(scene.accountFolder), expected);
        return;
    }
}

TEST(BackupFailure, WhatAStoppedInstallTakesBackLeavesTheListsLinesWhole)
{
    // An earlier install's list whose last line has no line end yet: the lines a stopped install
    // keeps go after it on lines of their own, not glued to it.
    for (std::uint64_t nth = 1; nth < 200; ++nth) {
        InstallScene scene;  // records: cfg/ludax/binds.cfg, resource/background/x.tga, a.txt, cfg/config.cfg
        const std::string& c = scene.content;
        WriteFile(c + "cfg/old.cfg", "an earlier install's file");
        WriteFile(scene.archivePath, archiveHeader);
        WriteFile(scene.removalListPath, c + "cfg/old.cfg");
        sys::faults::Arm(nth, sys::faults::Mode::fail);
        const InstallOutcome stopped = scene.Install();
        sys::faults::Arm(0, sys::faults::Mode::fail);
        // Stopped while writing the second file, its folders made (not while looking the way over).
        if (stopped.result != InstallOutcome::Result::writeFailed || stopped.path != c + "resource/background/x.tga" ||
            !Exists(c + "resource/background"))
            continue;
        // The first file's line and folders stay, with the second's, which it began; the rest go.
        EXPECT_EQ(ReadFile(scene.removalListPath),
                  c + "cfg/old.cfg\r\n" + c + "cfg/ludax/binds.cfg\r\n" + c + "resource/background/x.tga\r\n" + c +
                      "resource/background\r\n" + c + "resource\r\n" + c + "cfg/ludax\r\n");
        return;
    }
    ADD_FAILURE() << "no failing call stopped the install at its second file";
}

}  // namespace
#endif
