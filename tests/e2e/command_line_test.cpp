// Ludax.exe as a LAN admin's script runs it: a command, its output redirected, the exit status
// read, a log kept; every status from 1 to 8 reached by a real situation.

#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <regex>
#include <sstream>

#include "box_actions.h"
#include "ludax_command.h"
#include "ludax_window.h"
#include "message_box_reader.h"
#include "payload_files.h"
#include "running_game.h"
#include "running_ludax.h"
#include "steam_folder.h"
#include "text.h"
#include "window_finder.h"

namespace {

const std::string installed = "Counter Strike LUDAX config installed successfully!\r\n";
const std::string uninstalled = "Counter Strike LUDAX config uninstalled!\r\n";

std::string Quoted(const std::string& path) { return "\"" + path + "\""; }

// The log's lines as "<action> <path>", each checked to start with a time stamp.
std::vector<std::string> Actions(const std::string& log)
{
    std::vector<std::string> actions;
    std::istringstream lines(log);
    std::string line;
    const std::regex shape(R"(^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ\t([a-z ]+)\t(.+)\r$)");
    while (std::getline(lines, line)) {
        std::smatch parts;
        EXPECT_TRUE(std::regex_match(line, parts, shape)) << line;
        if (parts.size() == 3)
            actions.push_back(parts[1].str() + " " + parts[2].str());
    }
    return actions;
}

bool Holds(const std::vector<std::string>& actions, const std::string& action)
{
    return std::find(actions.begin(), actions.end(), action) != actions.end();
}

TEST(CommandLine, UsageAndABadCommandLine)
{
    CommandRun usage = RunLudaxCommand("/?");
    EXPECT_EQ(usage.status, 0u);
    EXPECT_EQ(usage.out.rfind("Ludax config. installs the LUDAX tournament's configuration", 0), 0u) << usage.out;
    EXPECT_NE(usage.out.find("  Ludax.exe /install cs16|css [/place N] [/yes] [/log FILE]\r\n"), std::string::npos);
    EXPECT_EQ(usage.err, "");
    for (const char* bad : {"/S", "/install cs17", "-INSTALL", "/list /place 1", "/uninstall css /yes", "/place 0"}) {
        CommandRun refused = RunLudaxCommand(bad);
        EXPECT_EQ(refused.status, 1u) << bad;
        EXPECT_NE(refused.err.find("Ludax.exe /uninstall cs16|css [/place N] [/log FILE]"), std::string::npos) << bad;
        EXPECT_EQ(refused.out, "") << bad;
    }
    EXPECT_EQ(RunLudaxCommand("/S").err.rfind("not a command or option of this program: /S\r\n", 0), 0u);
    EXPECT_EQ(RunLudaxCommand("-install CS16 -YES -place x").err.rfind("/place takes one number, 1 or more: x\r\n", 0), 0u);
}

TEST(CommandLine, WithoutSteamItSaysSoWithStatus2)
{
    RemoveSteamKey();
    CommandRun run = RunLudaxCommand("/list");
    EXPECT_EQ(run.status, 2u);
    EXPECT_EQ(run.err, "Steam was not found: the registry holds no SteamPath under "
                       "HKEY_CURRENT_USER\\Software\\Valve\\Steam.\r\n");
    CreateSteamKeyWithoutPath();
    EXPECT_EQ(RunLudaxCommand("/install cs16").status, 2u);
}

TEST(CommandLine, ListsThePlacesInTheChoosersOrderWithEachGamesState)
{
    SteamFolder steam;
    steam.AddAccount("alice", cs16Game | cssGame | cssBackup);
    steam.AddAccount("bob", cs16Backup);
    steam.Register();
    const CommandRun run = RunLudaxCommand("/LIST");
    EXPECT_EQ(run.status, 0u);
    // The folder listing's order decides which account comes first.
    const std::string alice = "\talice\tcs16=present\tcss=installed\r\n";
    const std::string bob = "\tbob\tcs16=installed\tcss=absent\r\n";
    EXPECT_TRUE(run.out == "1" + alice + "2" + bob || run.out == "1" + bob + "2" + alice) << run.out;
    EXPECT_EQ(run.err, "");
}

TEST(CommandLine, InstallReinstallAndUninstallWithALog)
{
    SteamFolder steam;
    steam.AddAccount("player", cs16Game);
    const std::string account = steam.Account("player");
    const std::string content = account + "/counter-strike/cstrike/";
    const auto before = Snapshot(account);
    steam.Register();
    TempFolder logs;
    const std::string log = logs.Path() + "/ludax log.txt";

    CommandRun run = RunLudaxCommand("/install cs16 /log " + Quoted(log));
    EXPECT_EQ(run.status, 0u) << run.err;
    EXPECT_EQ(run.out, installed);
    EXPECT_EQ(ReadFile(content + "config.cfg"), PayloadBytes("cs16", "config.cfg"));
    std::vector<std::string> actions = Actions(ReadFile(log));
    EXPECT_TRUE(Holds(actions, "backed up " + content + "config.cfg"));
    EXPECT_TRUE(Holds(actions, "wrote " + content + "config.cfg"));
    EXPECT_TRUE(Holds(actions, "made folder " + content + "resource"));
    const auto count = [&](const std::string& action) {
        return std::count_if(actions.begin(), actions.end(),
                             [&](const std::string& line) { return line.rfind(action + " ", 0) == 0; });
    };
    EXPECT_EQ(count("backed up"), 1);  // the player's config.cfg, the one target there before
    EXPECT_EQ(static_cast<std::size_t>(count("wrote")), ManifestNames("cs16").size());
    const std::string archive = ReadFile(account + "/cs16ludax.bak");

    run = RunLudaxCommand("/install cs16");
    EXPECT_EQ(run.status, 4u);
    EXPECT_EQ(run.err, "The configuration of Counter-Strike 1.6 is installed already in place 1 (player): add /yes "
                       "to install it again.\r\n");
    run = RunLudaxCommand("/install cs16 /yes /place 1");
    EXPECT_EQ(run.status, 0u) << run.err;
    EXPECT_EQ(ReadFile(account + "/cs16ludax.bak"), archive);

    run = RunLudaxCommand("-uninstall cs16 -log " + Quoted(log));
    EXPECT_EQ(run.status, 0u) << run.err;
    EXPECT_EQ(run.out, uninstalled);
    actions = Actions(ReadFile(log));
    EXPECT_TRUE(Holds(actions, "restored " + content + "config.cfg"));
    EXPECT_TRUE(Holds(actions, "removed " + content + "resource"));
    EXPECT_EQ(Snapshot(account), before);
}

TEST(CommandLine, TheWindowKeepsALogToo)
{
    SteamFolder steam;
    steam.AddAccount("player", cs16Game);
    const std::string content = steam.Account("player") + "/counter-strike/cstrike/";
    steam.Register();
    TempFolder logs;
    const std::string log = logs.Path() + "/window.log";
    RunningLudax ludax("/log " + Quoted(log));
    ASSERT_NE(ludax.window, nullptr) << ludax.failure;
    PostButtonClick(FindControls(ludax.window).cs16Install);
    HWND box = WaitForMessageBox(ludax.process);
    ASSERT_NE(box, nullptr);
    ASSERT_TRUE(PressButton(box, IDOK));
    CloseThroughCloseCorner(ludax);
    const std::vector<std::string> actions = Actions(ReadFile(log));
    EXPECT_TRUE(Holds(actions, "backed up " + content + "config.cfg"));
    EXPECT_TRUE(Holds(actions, "wrote " + content + "ludax.cfg"));
}

TEST(CommandLine, NoSuchPlaceTheGameNowhereOrTwoPlacesAreStatus3AndNotInstalled4)
{
    SteamFolder steam;
    steam.AddAccount("one", cs16Game);
    steam.Register();
    CommandRun run = RunLudaxCommand("/install css");
    EXPECT_EQ(run.status, 3u);
    EXPECT_EQ(run.err, "Counter-Strike: Source is in no place Steam holds.\r\n");
    run = RunLudaxCommand("/install cs16 /place 2");
    EXPECT_EQ(run.status, 3u);
    EXPECT_EQ(run.err, "There is no place 2: Steam holds 1 places with the games (Ludax.exe /list shows them).\r\n");
    run = RunLudaxCommand("/uninstall cs16");
    EXPECT_EQ(run.status, 4u);
    EXPECT_EQ(run.err, "The configuration of Counter-Strike 1.6 is installed nowhere.\r\n");
    steam.AddAccount("two", cs16Game);
    run = RunLudaxCommand("/install cs16");
    EXPECT_EQ(run.status, 3u);
    EXPECT_EQ(run.err.rfind("Counter-Strike 1.6 is in more than one place; name one with /place N:\r\n", 0), 0u);
    EXPECT_NE(run.err.find("\tone\r\n"), std::string::npos);
    EXPECT_NE(run.err.find("\ttwo\r\n"), std::string::npos);
    EXPECT_FALSE(Exists(steam.Account("one") + "/cs16ludax.bak"));
}

TEST(CommandLine, TheGameRunningIs5AnInstallThatStopsIs6AnUninstallThatKeepsIs7AnotherCopyIs8)
{
    SteamFolder steam;
    steam.AddAccount("player", cs16Game);
    const std::string content = steam.Account("player") + "/counter-strike/cstrike/";
    steam.Register();
    {
        RunningGame game("hl.exe");
        ASSERT_TRUE(game.Running());
        CommandRun run = RunLudaxCommand("/install cs16");
        EXPECT_EQ(run.status, 5u);
        EXPECT_EQ(run.err, "Counter-Strike 1.6 is running: close the game, then start the command again.\r\n");
    }
    {
        LockedFile held(content + "config.cfg");
        ASSERT_TRUE(held.Locked());
        CommandRun run = RunLudaxCommand("/install cs16");
        EXPECT_EQ(run.status, 6u);
        EXPECT_EQ(run.err, "Could not back up the file\r\n" + content + "config.cfg\r\nNothing more was changed.\r\n");
    }
    ASSERT_EQ(RunLudaxCommand("/install cs16 /yes").status, 0u);
    {
        LockedFile held(content + "ludax.cfg");
        ASSERT_TRUE(held.Locked());
        CommandRun run = RunLudaxCommand("/uninstall cs16");
        EXPECT_EQ(run.status, 7u);
        EXPECT_EQ(run.err, uninstalled +
                               "Some files could not be put back or removed, so the backup was kept. Close the "
                               "programs that use the game's files, free some disk space, then uninstall again.\r\n");
    }
    {
        RunningLudax window;
        ASSERT_NE(window.window, nullptr) << window.failure;
        CommandRun run = RunLudaxCommand("/uninstall cs16");
        EXPECT_EQ(run.status, 8u);
        EXPECT_EQ(run.err, "Another copy of Ludax config. is running (its window, or another command): wait until it "
                           "ends, then start this one again.\r\n");
    }
    EXPECT_EQ(RunLudaxCommand("/uninstall cs16").status, 0u);
    EXPECT_FALSE(Exists(content + "ludax.cfg"));
}

}  // namespace
