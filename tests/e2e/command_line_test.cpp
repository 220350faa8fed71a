// Ludax.exe as a LAN admin's script runs it, meeting what only a real Windows makes: the game
// running (5), a file another program holds (6, then a plain install finishes the job; 7, and the
// window's box) and the window open (8). (The other statuses: admin_test.cpp; how each command
// picks its place and which status each outcome gets: the unit tests' CommandLine cases.)

#include <gtest/gtest.h>

#include <algorithm>

#include "command_run.h"
#include "ludax_session.h"
#include "player_pc.h"
#include "text.h"

TEST(CommandLine, TheGameRunningAFileHeldOpenAndTheWindowOpenEachHaveTheirStatus)
{
    SteamFolder steam;
    steam.AddAccount("player", cs16Game);
    const std::string content = steam.Account("player") + "/counter-strike/cstrike/";
    const auto before = Snapshot(steam.Path());
    steam.Register();
    TempFolder logs;
    const std::string windowLog = logs.Path() + "/window.log", stopLog = logs.Path() + "/stopped.log";

    {
        RunningGame game("hl.exe");
        ASSERT_TRUE(game.Running());
        EXPECT_EQ(RunLudaxCommand("/install cs16"),
                  (CommandRun{5, "", "Counter-Strike 1.6 is running: close the game, then start the command again.\r\n"}));
    }
    {
        // Another program reads the player's config.cfg and lets nobody write it: backed up, not
        // written; standard error says why, and the log holds the backup once.
        LockedFile held(content + "config.cfg", LockedFile::Sharing::readers);
        ASSERT_TRUE(held.Locked());
        EXPECT_EQ(RunLudaxCommand("/install cs16 /log " + Quoted(stopLog)),
                  (CommandRun{6, "",
                              "Could not write the file\r\n" + Backslashed(content) +
                                  "config.cfg\r\nSharing violation.\r\nNothing more was changed.\r\n"}));
    }
    const auto stopped = LogFields(ReadFile(stopLog));
    const std::vector<std::string> backedUp{"backed up", Backslashed(content) + "config.cfg"};
    EXPECT_EQ(std::count(stopped.begin(), stopped.end(), backedUp), 1);
    // The stopped install's backup files stand: the same plain command, once the file is let go,
    // finishes the job.
    EXPECT_EQ(RunLudaxCommand("-install CS16"), (CommandRun{0, "Counter Strike LUDAX config installed successfully!\r\n", ""}));
    EXPECT_EQ(ReadFile(content + "config.cfg"), PayloadBytes("cs16", "config.cfg"));
    {
        LockedFile held(content + "ludax.cfg");
        ASSERT_TRUE(held.Locked());
        const std::string kept = "Some files could not be put back or removed, so the backup was kept. Close the programs "
                                 "that use the game's files, free some disk space, then uninstall again.";
        EXPECT_EQ(RunLudaxCommand("/uninstall cs16 /place 1"),
                  (CommandRun{7, "",
                              "Counter Strike LUDAX config could not be fully uninstalled.\r\n" + kept + "\r\n" +
                                  Backslashed(content) + "ludax.cfg\r\nSharing violation.\r\n"}));
        // The window says so too, in a box that reads as a failure.
        LudaxSession window;
        ASSERT_NE(window.window, nullptr) << window.failure;
        EXPECT_EQ(window.Click(cs16Uninstall),
                  (Box{"Hiba:",
                       "Counter Strike LUDAX config could not be fully uninstalled.\n" + kept + "\n" + content +
                           "ludax.cfg\nSharing violation.",
                       {IDOK}, BoxIcon::warning, window.window}));
        window.Close();
    }
    {
        // The window, with a log of its own, is the one copy running: a command must wait.
        LudaxSession window("/log " + Quoted(windowLog));
        ASSERT_NE(window.window, nullptr) << window.failure;
        EXPECT_EQ(RunLudaxCommand("/uninstall cs16"),
                  (CommandRun{8, "",
                              "Another copy of Ludax config. is running (its window, or another command): wait until "
                              "it ends, then start this one again.\r\n"}));
        EXPECT_EQ(window.Click(cs16Uninstall).text, cs16.uninstalled);
        window.Close();
    }
    const auto windowLogged = LogFields(ReadFile(windowLog));
    EXPECT_EQ(std::count(windowLogged.begin(), windowLogged.end(), std::vector<std::string>{"removed", Backslashed(content) + "ludax.cfg"}), 1);
    EXPECT_EQ(Snapshot(steam.Path()), before);
}
