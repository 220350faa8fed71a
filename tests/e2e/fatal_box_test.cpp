// Every way the program stops with one ownerless box and exit status -1 once it is answered:
// it cannot start (no Steam, no place that holds a game), or an install cannot go on (a
// player's file held open by another program, a folder it cannot make, a disk that fills up).
// (Which registry values and folders count, and what each stop leaves in the backup files: the
// unit tests' Discovery, Install, BackupFailure and FaultInjection cases.)

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "command_run.h"
#include "ludax_session.h"
#include "player_pc.h"

namespace {

const char account[] = "ludaxplayer";

// Answers the box, which must be `expected` (only its start when `wholeText` is false: the
// file a full disk stops at is not known beforehand), and expects the program to end with -1.
void ExpectTheEnd(LudaxSession& ludax, Box expected, bool wholeText = true,
                  const std::function<void()>& whileShown = {})
{
    Box shown = ludax.Answer(IDOK, whileShown);
    if (!wholeText)
        shown.text = shown.text.substr(0, expected.text.size());
    EXPECT_EQ(shown, expected);
    EXPECT_EQ(ludax.process.WaitForExit(defaultTimeoutMs), std::optional<DWORD>(0xFFFFFFFF));
}

void ExpectFatalStart(const std::string& why, const Box& expected, const std::string& arguments = std::string())
{
    SCOPED_TRACE(why);
    LudaxSession ludax(arguments);
    EXPECT_EQ(ludax.window, nullptr) << "the main window opened";
    std::size_t shown = 0;
    ExpectTheEnd(ludax, expected, true, [&] { shown = VisibleWindowsOf(ludax.process.Id()).size(); });
    EXPECT_EQ(shown, 1u) << "the box is not all the program shows";
}

// Clicks Counter-Strike's install; the program stops without offering the uninstall first.
void ExpectInstallStops(const std::string& text, bool wholeText = true, const std::string& arguments = std::string())
{
    LudaxSession ludax(arguments);
    ASSERT_NE(ludax.window, nullptr) << ludax.failure;
    PostMessageW(ludax.controls.buttons[cs16Install], BM_CLICK, 0, 0);
    bool offered = true;
    ExpectTheEnd(ludax, {"Hiba:", text, {IDOK}, BoxIcon::none, nullptr}, wholeText,
                 [&] { offered = ludax.Enabled()[cs16Uninstall]; });
    EXPECT_FALSE(offered) << "the uninstall was offered before the stop";
}

// A new start offers the uninstall of what the stopped install did, which puts it all back.
void UninstallWhatWasDone()
{
    LudaxSession ludax;
    ASSERT_NE(ludax.window, nullptr) << ludax.failure;
    EXPECT_EQ(ludax.Click(cs16Uninstall), Message(cs16.uninstalled, ludax.window));
    ludax.Close();
}

}  // namespace

TEST(FatalStart, WithoutSteamOrAnyPlaceThatHoldsAGameTheProgramSaysWhyAndEnds)
{
    SteamFolder::RemoveKey();
    ExpectFatalStart("no Steam key in the registry",
                     {"Error!", "Registry read failed!", {IDOK}, BoxIcon::none, nullptr});
    SteamFolder::SetSteamPath("");
    RegDeleteKeyValueW(HKEY_CURRENT_USER, L"Software\\Valve\\Steam", L"SteamPath");
    ExpectFatalStart("the key without a SteamPath value: the caption is Hungarian",
                     {"Hiba!", "Registry read failed!", {IDOK}, BoxIcon::none, nullptr});
    SteamFolder steam;
    MakeFolders(steam.Account("someone") + "/half-life/valve");
    steam.Register();
    TempFolder logs;
    const std::string log = Backslashed(logs.Path() + "/window.log");
    ExpectFatalStart("no account or library holds a game or a backup",
                     {"Hiba:",
                      "Nincs feltelepítve (és legalább egyszer elindítva) sem a Counter Strike sem a Counter Strike "
                      "Source!\nKilépek!",
                      {IDOK}, BoxIcon::error, nullptr},
                     "/log " + Quoted(log));
    // Even a fatal end ends its run's record.
    EXPECT_EQ(LogFields(ReadFile(log)).back(),
              (std::vector<std::string>{"ended", "-1", "neither game is in a place Steam holds"}));
}

TEST(InstallStops, AtAPlayersFileItCannotBackUpAndAtAFolderItCannotMake)
{
    SteamFolder steam;
    steam.AddAccount(account, cs16Game);
    const std::string content = steam.Account(account) + "/counter-strike/cstrike/";
    WriteFile(content + "gfx", "not a folder");  // where the payload needs the folder gfx/shell
    const auto before = Snapshot(steam.Path());
    steam.Register();
    {
        SCOPED_TRACE("the player's config.cfg held open by another program");
        LockedFile inUse(content + "config.cfg");
        ASSERT_TRUE(inUse.Locked());
        TempFolder logs;
        const std::string log = Backslashed(logs.Path() + "/window.log");
        ExpectInstallStops("Could not back up the file\n" + content + "config.cfg\nSharing violation.\nNothing more was changed.",
                           true, "/log " + Quoted(log));
        // The window's record of the stop is a command's: the stop with why, and how the run ended.
        const auto lines = LogFields(ReadFile(log));
        ASSERT_GE(lines.size(), 2u);
        EXPECT_EQ(lines[lines.size() - 2],
                  (std::vector<std::string>{"stopped", Backslashed(content) + "config.cfg", "Sharing violation."}));
        EXPECT_EQ(lines.back(), (std::vector<std::string>{"ended", "-1", "the install stopped at " + Backslashed(content) +
                                                                            "config.cfg: Sharing violation."}));
    }
    UninstallWhatWasDone();
    EXPECT_EQ(Snapshot(steam.Path()), before);
    SCOPED_TRACE("a file where the payload needs a folder");
    ExpectInstallStops("Nem sikerült a könyvtár létrehozása!\nKilépek!\n" + content + "gfx/shell");
    UninstallWhatWasDone();
    EXPECT_EQ(Snapshot(steam.Path()), before);
}

// A Steam folder on the small disk that tests/with-small-disk mounts (a tmpfs as a Wine drive).
TEST(InstallStops, WhenTheDiskFillsUp)
{
    const char* drive = std::getenv("LUDAX_SMALL_DISK");
    if (!drive)
        GTEST_SKIP() << "no small disk: tests/with-small-disk mounts one when run as root";
    const std::string steam = std::string(drive) + "/Steam", filler = std::string(drive) + "/filler";
    const std::string content = steam + "/steamapps/" + account + "/counter-strike/cstrike/";
    WriteFile(content + "config.cfg", "name \"full\"\r\n");
    WriteFile(content + "autobuy.txt", "the player's autobuy\r\n");
    const auto before = Snapshot(steam);
    SteamFolder::SetSteamPath(steam);
    // Room for the backups and a part of the payload only.
    ULARGE_INTEGER free{};
    ASSERT_TRUE(GetDiskFreeSpaceExA((std::string(drive) + "\\").c_str(), &free, nullptr, nullptr));
    const std::uint64_t room = 600 * 1024;
    ASSERT_GT(free.QuadPart, room);
    WriteFile(filler, std::string(free.QuadPart - room, 'f'));  // written: a tmpfs keeps no room for holes
    ExpectInstallStops("Could not write the file\n", false);
    RemovePath(filler);
    UninstallWhatWasDone();
    EXPECT_EQ(Snapshot(steam), before);
    std::error_code ignored;
    std::filesystem::remove_all(steam, ignored);
}
