// The LAN admin's fleet, run by scripts against the real program: a later build, made from the sets
// as an organiser changes them (tests/e2e/next_sets.cmake), reaches a PC the first build installed
// by the same plain /install, while a player's change still stops it; each build names its sets.

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

    // Each build names its file sets.
    const std::string next = BuildName(nextBuild + "/container-sums.txt");
    EXPECT_NE(BuildName(LUDAX_CONTAINER_SUMS), next);
    EXPECT_EQ(RunNext("/version"), (CommandRun{0, next + "\r\n", ""}));
    ASSERT_EQ(RunLudaxCommand("/install cs16").status, 0u);

    // The player changed a file of ours since: the later build writes nothing and names it.
    WriteFile(content + "userconfig.cfg", "bind x quit\r\n");
    const auto changed = Snapshot(steam.Path());
    EXPECT_EQ(RunNext("/install cs16"),
              (CommandRun{4, "changed\t" + Backslashed(content) + "userconfig.cfg\r\n",
                          "Files of the configuration of Counter-Strike 1.6 in place 1 (player) were changed since it was "
                          "installed (listed on standard output): add /yes to write them over.\r\n"}));
    EXPECT_EQ(Snapshot(steam.Path()), changed);

    // Put back as it was: the same plain command brings in the changed file and the added one.
    WriteFile(content + "userconfig.cfg", PayloadBytes("cs16", "userconfig.cfg"));
    EXPECT_EQ(RunNext("/install cs16"),
              (CommandRun{0, "Counter Strike LUDAX config installed successfully!\r\n", ""}));
    EXPECT_EQ(ReadFile(content + "config.cfg"),
              PayloadBytes("cs16", "config.cfg") + "echo \"LUDAX config, second edition\"\r\n");
    EXPECT_EQ(ReadFile(content + "ludax_news.txt"),
              "LUDAX LAN: the second edition of the tournament's configuration.\r\n");
    EXPECT_EQ(RunNext("/verify cs16"), (CommandRun{0, "", ""}));

    // The Sunday run: the account as it was.
    EXPECT_EQ(RunNext("/uninstall cs16"), (CommandRun{0, "Counter Strike LUDAX config uninstalled!\r\n", ""}));
    EXPECT_EQ(Snapshot(steam.Path()), before);
}
