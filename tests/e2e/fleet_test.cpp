// The LAN admin's fleet, run by scripts against the real program: a later build, made from the sets
// as an organiser changes them (tests/e2e/next_sets.cmake), reaches a PC the first build installed
// by the same plain /install, while a player's change still stops it; every run names its build;
// the Sunday /uninstall is done where nothing is installed; Steam named where it is not; every path
// a command prints in Windows form.

#include <gtest/gtest.h>

#include "command_run.h"
#include "player_pc.h"
#include "text.h"

namespace {

const std::string nextBuild = LUDAX_NEXT_BUILD;

CommandRun RunNext(const std::string& arguments)
{
    const std::wstring exe = Widen(Backslashed((nextBuild[0] == '/' ? "Z:" : "") + nextBuild + "/LudaxNext.exe"));
    return RunCommandLine(exe, L"\"" + exe + L"\" " + Widen(arguments));
}

}  // namespace

TEST(Fleet, ALaterBuildReachesAnInstalledPcByAPlainInstallAndAPlayersChangeStillStopsIt)
{
    SteamFolder steam;
    steam.AddAccount("player", cs16Game);
    steam.Register();
    const std::string content = steam.Account("player") + "/counter-strike/cstrike/";
    const auto before = Snapshot(steam.Path());
    TempFolder logs;
    const std::string log = Backslashed(logs.Path() + "/PC37.log");

    // Each build names its file sets, on its own and in the log's first line.
    const std::string first = BuildName(LUDAX_CONTAINER_SUMS), next = BuildName(nextBuild + "/container-sums.txt");
    EXPECT_NE(first, next);
    EXPECT_EQ(RunLudaxCommand("/version"), (CommandRun{0, first + "\r\n", ""}));
    EXPECT_EQ(RunNext("/version"), (CommandRun{0, next + "\r\n", ""}));
    ASSERT_EQ(RunLudaxCommand("/install cs16 /log " + Quoted(log)).status, 0u);
    EXPECT_EQ(LogFields(ReadFile(log)).front().at(1), first);

    // The player changed a file of ours since: the later build writes nothing and names it.
    WriteFile(content + "userconfig.cfg", "bind x quit\r\n");
    const auto changed = Snapshot(steam.Path());
    EXPECT_EQ(RunNext("/install cs16 /log " + Quoted(log)),
              (CommandRun{4, "changed\t" + Backslashed(content) + "userconfig.cfg\r\n",
                          "Files of the configuration of Counter-Strike 1.6 in place 1 (player) were changed since it was "
                          "installed (listed on standard output): add /yes to write them over.\r\n"}));
    EXPECT_EQ(Snapshot(steam.Path()), changed);
    EXPECT_EQ(LogFields(ReadFile(log)).back(),
              (std::vector<std::string>{"ended", "4", "installed already, 1 of the files changed since"}));

    // Put back as it was: the same plain command brings in the changed file and the added one.
    WriteFile(content + "userconfig.cfg", PayloadBytes("cs16", "userconfig.cfg"));
    EXPECT_EQ(RunNext("/install cs16 /log " + Quoted(log)),
              (CommandRun{0, "Counter Strike LUDAX config installed successfully!\r\n", ""}));
    EXPECT_EQ(ReadFile(content + "config.cfg"),
              PayloadBytes("cs16", "config.cfg") + "echo \"LUDAX config, second edition\"\r\n");
    EXPECT_EQ(ReadFile(content + "ludax_news.txt"),
              "LUDAX LAN: the second edition of the tournament's configuration.\r\n");
    EXPECT_EQ(RunNext("/verify cs16"), (CommandRun{0, "", ""}));
    EXPECT_EQ(LogFields(ReadFile(log)).at(LogFields(ReadFile(log)).size() - 1),
              (std::vector<std::string>{"ended", "0", "installed"}));

    // The Sunday run: the account as it was, then nothing left to do.
    EXPECT_EQ(RunNext("/uninstall cs16"), (CommandRun{0, "Counter Strike LUDAX config uninstalled!\r\n", ""}));
    EXPECT_EQ(Snapshot(steam.Path()), before);
    EXPECT_EQ(RunLudaxCommand("/uninstall cs16"), (CommandRun{0, "not installed\r\n", ""}));
    EXPECT_EQ(RunLudaxCommand("/verify cs16"),
              (CommandRun{4, "", "The configuration of Counter-Strike 1.6 is installed nowhere.\r\n"}));
}

TEST(Fleet, SteamNamedWhereItIsNotAndEveryPathAScriptReadsInWindowsForm)
{
    SteamFolder steam;
    TempFolder disk;
    const std::string library = disk.Path() + "/SteamLibrary";
    WriteFile(library + "/steamapps/common/Half-Life/cstrike/config.cfg", "the player's");
    WriteFile(steam.Steamapps() + "libraryfolders.vdf", LibraryList({library}));
    steam.Register();
    EXPECT_EQ(RunLudaxCommand("/list"),
              (CommandRun{0, "1\tSteam library: " + Backslashed(library) + "\tcs16=present\tcss=absent\r\n", ""}));
    EXPECT_EQ(RunLudaxCommand("/list /steam " + Quoted(disk.Path() + "/nope")),
              (CommandRun{2, "", "Steam's folder is not there: " + Backslashed(disk.Path()) + "\\nope\r\n"}));
    // SteamPath naming a folder that is gone, and no machine's entry either.
    SteamFolder::SetSteamPath(disk.Path() + "/gone");
    EXPECT_EQ(RunLudaxCommand("/install cs16"),
              (CommandRun{2, "", "Steam's folder is not there: " + Backslashed(disk.Path()) + "\\gone\r\n"}));
}
