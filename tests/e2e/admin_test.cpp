// Ludax.exe as a LAN admin runs it on many PCs: from a script's account that has no Steam entry of
// its own, again at every logon, to check a PC's files, with a log that answers "what happened on
// PC 37?", and through the shipped deploy script under cmd. (How the entries are tried in turn and
// which files count as changed: the unit tests' Discovery and CommandLine cases.)

#include <gtest/gtest.h>
#include <windows.h>

#include "command_run.h"
#include "ludax_session.h"
#include "player_pc.h"
#include "message_box_reader.h"
#include "test_registry.h"
#include "window_finder.h"
#include "text.h"

namespace {

const std::string machineKey = "SOFTWARE\\Valve\\Steam";

// No Steam entry in the registry: the user's, and the machine's in both views.
void ClearSteamEntries()
{
    SteamFolder::RemoveKey();
    DeleteRegistryKey(RegistryHive::machine32, machineKey);
    DeleteRegistryKey(RegistryHive::machine64, machineKey);
}

std::string Environment(const char* name)
{
    char value[256] = {};
    return std::string(value, GetEnvironmentVariableA(name, value, sizeof value));
}

// The run's first line as the log must hold it.
std::vector<std::string> Started(const std::string& commandLine)
{
    return {"started", BuildName(LUDAX_CONTAINER_SUMS), Environment("COMPUTERNAME"), Environment("USERNAME"), commandLine};
}

}  // namespace

TEST(Admin, AScriptUnderAnotherAccountFindsSteamByNameOrSaysItIsNotThere)
{
    SteamFolder steam;
    steam.AddAccount("player", cs16Game);
    const std::string folder = Backslashed(steam.Path());
    ClearSteamEntries();
    EXPECT_EQ(RunLudaxCommand("/list"),
              (CommandRun{2, "",
                          "Steam was not found: the registry holds neither SteamPath under "
                          "HKEY_CURRENT_USER\\Software\\Valve\\Steam nor InstallPath under "
                          "HKEY_LOCAL_MACHINE\\SOFTWARE\\Valve\\Steam. Name Steam's folder with /steam DIR.\r\n"}));
    EXPECT_EQ(RunLudaxCommand("/list /steam " + Quoted(folder)), (CommandRun{0, "1\tplayer\tcs16=present\tcss=absent\r\n", ""}));
    EXPECT_EQ(RunLudaxCommand("/list /steam " + Quoted(folder + "\\nope")),
              (CommandRun{2, "", "Steam's folder is not there: " + folder + "\\nope\r\n"}));
    EXPECT_EQ(RunLudaxCommand("/install cs16 /steam " + Quoted(folder)),
              (CommandRun{0, "Counter Strike LUDAX config installed successfully!\r\n", ""}));

    // The window opens on the folder named, with no entry at all.
    LudaxSession window("/steam " + Quoted(folder));
    ASSERT_NE(window.window, nullptr) << window.failure;
    EXPECT_TRUE(window.Enabled()[cs16Install]);
    window.Close();
}

TEST(Admin, InstallAgainWritesNothingVerifyNamesWhatIsNotAsShippedAndTheLogTellsItAll)
{
    SteamFolder steam;
    steam.AddAccount("player", cs16Game);
    steam.Register();
    const std::string content = steam.Account("player") + "/counter-strike/cstrike/";
    TempFolder share;
    const std::string log = Backslashed(share.Path() + "/PC37.log");
    const std::string withLog = " /log " + Quoted(log);

    EXPECT_EQ(RunLudaxCommand("/verify cs16" + withLog),
              (CommandRun{4, "", "The configuration of Counter-Strike 1.6 is installed nowhere.\r\n"}));
    EXPECT_EQ(RunLudaxCommand("/install cs16" + withLog).status, 0u);

    // A logon script's second run: a success, and not a byte changed.
    const auto installed = Snapshot(steam.Path());
    EXPECT_EQ(RunLudaxCommand("/install cs16" + withLog), (CommandRun{0, "already installed\r\n", ""}));
    EXPECT_EQ(Snapshot(steam.Path()), installed);

    // A file changed: named.
    WriteFile(content + "config.cfg", "bind x quit\r\n");
    EXPECT_EQ(RunLudaxCommand("/verify cs16" + withLog),
              (CommandRun{9, "changed\t" + Backslashed(content) + "config.cfg\r\n", ""}));

    // Refused runs are logged too: a command line the program does not take, and another copy
    // running.
    EXPECT_EQ(RunLudaxCommand("/verify cs17" + withLog).status, 1u);
    {
        LudaxSession window;
        ASSERT_NE(window.window, nullptr) << window.failure;
        EXPECT_EQ(RunLudaxCommand("/verify cs16" + withLog).status, 8u);
        window.Close();
    }

    const auto lines = LogFields(ReadFile(log));
    std::vector<std::vector<std::string>> runs;  // each run's first and last line
    for (const auto& line : lines)
        if (line[0] == "started" || line[0] == "ended")
            runs.push_back(line);
    // Each run: its command, and its status and what happened.
    const std::vector<std::vector<std::string>> ran = {
        {"/verify cs16", "4", "The configuration of Counter-Strike 1.6 is installed nowhere."},
        {"/install cs16", "0", "installed"},
        {"/install cs16", "0", "already installed, every file as shipped"},
        {"/verify cs16", "9", "1 of the files not as shipped"},
        {"/verify cs17", "1", "no game called cs17: cs16 or css"},
        {"/verify cs16", "8", "Another copy of Ludax config. is running (its window, or another command): wait until it "
                              "ends, then start this one again."},
    };
    std::vector<std::vector<std::string>> expected;
    for (const auto& run : ran) {
        expected.push_back(Started(run[0] + " /log " + log));
        expected.push_back({"ended", run[1], run[2]});
    }
    EXPECT_EQ(runs, expected);
}

TEST(Admin, TheDeployScriptInstallsUninstallsAppendsItsLogToTheShareAndEndsWithTheStatus)
{
    SteamFolder steam;
    steam.AddAccount("player", cs16Game);
    steam.Register();
    const std::string content = steam.Account("player") + "/counter-strike/cstrike/";
    const auto before = Snapshot(steam.Path());
    TempFolder share;
    const std::wstring script = Widen(Backslashed(LUDAX_SOURCE_DIR "/deploy/ludax-deploy.cmd"));
    const auto deploy = [&](const std::string& action, const std::string& logs) {
        return RunCommandLine(L"C:\\windows\\system32\\cmd.exe", L"cmd.exe /c \"\"" + script + L"\" " + Widen(action) +
                                                                      L" cs16 \"" + Widen(Backslashed(logs)) + L"\" \"" +
                                                                      LudaxExePath() + L"\"\"");
    };
    const std::string computer = Environment("COMPUTERNAME"), shared = share.Path() + "/" + computer + ".log";
    const auto ended = [&](const std::string& action, int status) {
        return "ludax-deploy: " + action + " cs16 on " + computer + " ended with status " + std::to_string(status) + "\r\n";
    };

    EXPECT_EQ(deploy("install", share.Path()),
              (CommandRun{0, "Counter Strike LUDAX config installed successfully!\r\n" + ended("install", 0), ""}));
    EXPECT_EQ(deploy("install", share.Path()), (CommandRun{0, "already installed\r\n" + ended("install", 0), ""}));
    // A file changed since: the install writes nothing (4) and names it on standard output.
    WriteFile(content + "ludax.cfg", "changed\r\n");
    EXPECT_EQ(deploy("install", share.Path()),
              (CommandRun{4, "changed\t" + Backslashed(content) + "ludax.cfg\r\n" + ended("install", 4),
                          "Files of the configuration of Counter-Strike 1.6 in place 1 (player) were changed since it was "
                          "installed (listed on standard output): add /yes to write them over.\r\n"}));
    // The Sunday run: uninstalled, then nothing left to do; a share it cannot write is reported,
    // and the program's status kept.
    EXPECT_EQ(deploy("uninstall", share.Path()),
              (CommandRun{0, "Counter Strike LUDAX config uninstalled!\r\n" + ended("uninstall", 0), ""}));
    EXPECT_EQ(Snapshot(steam.Path()), before);
    EXPECT_EQ(deploy("uninstall", share.Path() + "/no such share"),
              (CommandRun{0, "not installed\r\n" + ended("uninstall", 0),
                          "ludax-deploy: could not add the log to " + Backslashed(share.Path()) + "\\no such share\\" +
                              computer + ".log\r\n"}));

    // The share's log holds every run of this PC that reached it, each from its start to its end.
    std::vector<std::string> ends;
    for (const auto& line : LogFields(ReadFile(shared)))
        if (line[0] == "ended")
            ends.push_back(line[1] + " " + line[2]);
    EXPECT_EQ(ends, (std::vector<std::string>{"0 installed", "0 every file as shipped",
                                              "0 already installed, every file as shipped", "0 every file as shipped",
                                              "4 installed already, 1 of the files changed since", "0 uninstalled"}));
}

TEST(Admin, TheUsageStartedFromExplorerWithNoConsoleShowsInABox)
{
    // This test program, copied as "explorer.exe", starts Ludax.exe from no console.
    TempFolder folder;
    const std::wstring explorer = Widen(folder.Path() + "/explorer.exe");
    wchar_t self[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, self, MAX_PATH);
    ASSERT_TRUE(CopyFileW(self, explorer.c_str(), FALSE));
    LaunchedProcess started(explorer, L"\"" + LudaxExePath() + L"\" /?");
    HWND box = nullptr;
    EXPECT_TRUE(WaitUntil([&] {
        EnumWindows(
            [](HWND window, LPARAM found) {
                if (IsWindowVisible(window) && ClassOf(window) == L"#32770" && TextOf(window) == "Ludax config.")
                    *reinterpret_cast<HWND*>(found) = window;
                return TRUE;
            },
            reinterpret_cast<LPARAM>(&box));
        return box != nullptr;
    })) << "no box came";
    if (!box)
        return;
    const Box shown = ReadMessageBox(box);
    EXPECT_EQ(shown.text.rfind("Ludax config. installs the LUDAX tournament's configuration for Counter-Strike\n", 0), 0u)
        << shown.text;
    EXPECT_NE(shown.text.find("\n  9 a file is not as shipped (/verify)"), std::string::npos) << shown.text;
    EXPECT_EQ(shown.buttons, std::vector<int>{IDOK});
    EXPECT_TRUE(PressButton(box, IDOK));
    EXPECT_EQ(started.WaitForExit(defaultTimeoutMs), std::optional<DWORD>(0));
}

TEST(Admin, ALogNamedByAnotherNameOfABackupFileIsRefusedAndTheUninstallLosesNothing)
{
    // The log named by the 8.3 short name of the removal list, a second word after it: refused,
    // and none of its lines may land in the list, where a path would become a deletion order.
    SteamFolder steam;
    steam.AddAccount("player", cs16Game);
    steam.Register();
    const std::string account = steam.Account("player"), notes = account + "/counter-strike/cstrike/player_notes.txt";
    WriteFile(notes, "the player's notes");
    ASSERT_EQ(RunLudaxCommand("/install cs16").status, 0u);
    const std::string list = ReadFile(account + "/cs16ludax_1.bak");
    for (const char* backup : {"/cs16ludax_1.bak", "/cs16ludax.bak", "/cs16ludax_2.bak"}) {
        const std::string shortName = ShortPath(account + backup);
        ASSERT_FALSE(shortName.empty()) << backup;
        EXPECT_EQ(RunLudaxCommand("/log " + Quoted(shortName) + " " + Quoted(Backslashed(notes))).status, 1u) << backup;
    }
    EXPECT_EQ(ReadFile(account + "/cs16ludax_1.bak"), list);
    EXPECT_EQ(RunLudaxCommand("/uninstall cs16"), (CommandRun{0, "Counter Strike LUDAX config uninstalled!\r\n", ""}));
    EXPECT_EQ(ReadFile(notes), "the player's notes");
}
