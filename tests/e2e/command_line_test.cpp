// Ludax.exe as a LAN admin's script runs it: a command, its output redirected, the exit status
// read, a log kept; every status from 0 to 8 reached by a real situation (2, no Steam: admin_test.cpp).
// (How each command picks its place and which status each outcome gets: the unit tests'
// CommandLine cases.)

#include <gtest/gtest.h>

#include <algorithm>

#include "command_run.h"
#include "ludax_session.h"
#include "player_pc.h"
#include "text.h"

TEST(CommandLine, AScriptListsInstallsAndUninstallsMeetingEveryOtherStatusOnTheWay)
{
    SteamFolder steam;
    steam.AddAccount("player", cs16Game);
    const std::string content = steam.Account("player") + "/counter-strike/cstrike/";
    const auto before = Snapshot(steam.Path());
    steam.Register();
    TempFolder logs;
    const std::string log = logs.Path() + "/ludax log.txt", windowLog = logs.Path() + "/window.log",
                      stopLog = logs.Path() + "/stopped.log";

    EXPECT_EQ(RunLudaxCommand("/LIST"), (CommandRun{0, "1\tplayer\tcs16=present\tcss=absent\r\n", ""}));
    const std::string noLog = logs.Path() + "/no such folder/ludax.log";
    EXPECT_EQ(RunLudaxCommand("/uninstall cs16 /log " + Quoted(noLog)),
              (CommandRun{1, "", "The log " + noLog + " cannot be written: name a file in a folder that exists.\r\n"}));
    EXPECT_EQ(RunLudaxCommand("/install css"), (CommandRun{3, "", "Counter-Strike: Source is in no place Steam holds.\r\n"}));
    EXPECT_EQ(RunLudaxCommand("/uninstall cs16"),
              (CommandRun{4, "", "The configuration of Counter-Strike 1.6 is installed nowhere.\r\n"}));
    {
        RunningGame game("hl.exe");
        ASSERT_TRUE(game.Running());
        EXPECT_EQ(RunLudaxCommand("/install cs16"),
                  (CommandRun{5, "", "Counter-Strike 1.6 is running: close the game, then start the command again.\r\n"}));
    }
    {
        // Another program reads the player's config.cfg and lets nobody write it: backed up, not
        // written; standard error and the log's last line say why.
        LockedFile held(content + "config.cfg", LockedFile::Sharing::readers);
        ASSERT_TRUE(held.Locked());
        EXPECT_EQ(RunLudaxCommand("/install cs16 /log " + Quoted(stopLog)),
                  (CommandRun{6, "",
                              "Could not write the file\r\n" + content +
                                  "config.cfg\r\nSharing violation.\r\nNothing more was changed.\r\n"}));
    }
    const auto stopped = LogFields(ReadFile(stopLog));
    const std::vector<std::string> backedUp{"backed up", Backslashed(content) + "config.cfg"};
    EXPECT_EQ(std::count(stopped.begin(), stopped.end(), backedUp), 1);
    EXPECT_EQ(stopped.back(), (std::vector<std::string>{"ended", "6", "the install stopped at " + Backslashed(content) +
                                                                           "config.cfg: Sharing violation."}));
    // The stopped install's backup files stand, its files do not: installed, not as shipped.
    const CommandRun again = RunLudaxCommand("/install cs16");
    EXPECT_EQ(again.status, 4u);
    EXPECT_EQ(again.err.rfind("The configuration of Counter-Strike 1.6 is installed already in place 1 (player): add /yes "
                              "to install it again.\r\n", 0), 0u) << again;
    EXPECT_NE(again.err.find("\r\nchanged\t" + content + "config.cfg\r\n"), std::string::npos) << again;
    EXPECT_EQ(RunLudaxCommand("-install CS16 -yes -place 1 -log " + Quoted(log)),
              (CommandRun{0, "Counter Strike LUDAX config installed successfully!\r\n", ""}));
    EXPECT_EQ(ReadFile(content + "config.cfg"), PayloadBytes("cs16", "config.cfg"));
    const auto logged = LogFields(ReadFile(log));
    // config.cfg was backed up by the stopped install: the reinstall writes it, and backs up nothing again.
    EXPECT_EQ(std::count(logged.begin(), logged.end(), backedUp), 0);
    for (const std::vector<std::string>& action : {std::vector<std::string>{"wrote", Backslashed(content) + "config.cfg"},
                                                   {"made folder", Backslashed(content) + "resource"}})
        EXPECT_EQ(std::count(logged.begin(), logged.end(), action), 1) << action[0];
    {
        LockedFile held(content + "ludax.cfg");
        ASSERT_TRUE(held.Locked());
        EXPECT_EQ(RunLudaxCommand("/uninstall cs16 /place 1"),
                  (CommandRun{7, "",
                              "Counter Strike LUDAX config uninstalled!\r\nSome files could not be put back or removed, "
                              "so the backup was kept. Close the programs that use the game's files, free some disk "
                              "space, then uninstall again.\r\n" + content + "ludax.cfg\r\nSharing violation.\r\n"}));
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
