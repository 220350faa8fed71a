// Players' folder names as they are: Hungarian and Russian names from the registry, the folder
// listing and Steam's library lists, and a library deeper than Windows' old 259 characters,
// each listed with its own characters, installed into and uninstalled to the byte; and a
// removal list an earlier version wrote in the system's ANSI code page.

#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <cstdlib>

#include "box_actions.h"
#include "ludax_window.h"
#include "payload_files.h"
#include "running_ludax.h"
#include "steam_folder.h"
#include "text.h"
#include "window_finder.h"

namespace {

const std::wstring cs16Installed = L"Counter Strike LUDAX config installed successfully!";
const std::wstring cs16Uninstalled = L"Counter Strike LUDAX config uninstalled!";
const std::wstring cssInstalled = L"Counter Strike Source LUDAX config installed successfully!";
const std::wstring cssUninstalled = L"Counter Strike Source LUDAX config uninstalled!";

// Steam writes library paths with backslashes, each doubled inside the file's quotes.
std::string Backslashed(std::string path)
{
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

std::string LibraryList(const std::string& library)
{
    std::string escaped;
    for (char c : Backslashed(library))
        escaped += c == '\\' ? std::string("\\\\") : std::string(1, c);
    return "\"libraryfolders\"\r\n{\r\n\t\"1\"\r\n\t{\r\n\t\t\"path\"\t\t\"" + escaped + "\"\r\n\t}\r\n}\r\n";
}

// Chooses entry `entry`, installs with `install`, checks a file the payload brings, uninstalls.
void InstallAndUninstall(int entry, HWND LudaxControls::*install, HWND LudaxControls::*uninstall,
                         const std::wstring& installed, const std::wstring& uninstalled,
                         const std::string& target, const std::string& bytes)
{
    RunningLudax ludax;
    ASSERT_NE(ludax.window, nullptr) << ludax.failure;
    const LudaxControls controls = FindControls(ludax.window);
    ChooseEntry(controls.chooser, entry);
    ASSERT_TRUE(WaitUntil([&] { return IsWindowEnabled(controls.*install) != 0; })) << entry;
    EXPECT_EQ(ClickAndAnswer(ludax, controls.*install, IDOK).text, installed) << entry;
    EXPECT_EQ(ReadFile(target), bytes) << entry;
    ASSERT_TRUE(WaitUntil([&] { return IsWindowEnabled(controls.*uninstall) != 0; })) << entry;
    EXPECT_EQ(ClickAndAnswer(ludax, controls.*uninstall, IDOK).text, uninstalled) << entry;
    CloseThroughCloseCorner(ludax);
}

TEST(Unicode, HungarianAndRussianNamesAndALongLibraryPathInstallAndUninstallToTheByte)
{
    // A Steam folder and an account in Russian ("Steam", "Player"); a library in Hungarian
    // ("Games"), named in steamapps/libraryfolders.vdf; a library of more than 300 characters,
    // named only in config/libraryfolders.vdf.
    TempFolder root, hungarian, deep;
    const std::string steam = root.Path() + "/Стим";
    const std::string account = steam + "/steamapps/Игрок";
    WriteFile(account + "/counter-strike/cstrike/config.cfg", "name \"Игрок\"\r\n");
    const std::string games = hungarian.Path() + "/Játékok/SteamLibrary";
    WriteFile(games + "/steamapps/common/Counter-Strike Source/cstrike/cfg/config.cfg", "name \"Játékos\"\r\n");
    std::string deepLibrary = deep.Path();
    for (const char* level : {"/Сохранённые игры", "/Régi játékok és mentések", "/Steam-könyvtár"})
        deepLibrary += level + std::string("_") + std::string(80, 'x');
    ASSERT_GT(deepLibrary.size(), 300u);
    WriteFile(deepLibrary + "/steamapps/common/Half-Life/cstrike/config.cfg", "name \"deepLibrary\"\r\n");
    WriteFile(steam + "/steamapps/libraryfolders.vdf", LibraryList(games));
    WriteFile(steam + "/config/libraryfolders.vdf", LibraryList(deepLibrary));
    const auto accountBefore = Snapshot(account), gamesBefore = Snapshot(games), deepBefore = Snapshot(deepLibrary);
    SetSteamPath(steam);

    {
        RunningLudax ludax;
        ASSERT_NE(ludax.window, nullptr) << ludax.failure;
        EXPECT_EQ(ChooserEntries(FindControls(ludax.window).chooser),
                  (std::vector<std::wstring>{L"Игрок", L"Steam library: " + Widen(Backslashed(games)),
                                             L"Steam library: " + Widen(Backslashed(deepLibrary))}));
        CloseThroughCloseCorner(ludax);
    }
    InstallAndUninstall(0, &LudaxControls::cs16Install, &LudaxControls::cs16Uninstall, cs16Installed,
                        cs16Uninstalled, account + "/counter-strike/cstrike/config.cfg", PayloadBytes("cs16", "config.cfg"));
    InstallAndUninstall(1, &LudaxControls::cssInstall, &LudaxControls::cssUninstall, cssInstalled, cssUninstalled,
                        games + "/steamapps/common/Counter-Strike Source/cstrike/custom/ludax/cfg/valve.rc",
                        PayloadBytes("css", "cfg/valve.rc"));
    InstallAndUninstall(2, &LudaxControls::cs16Install, &LudaxControls::cs16Uninstall, cs16Installed,
                        cs16Uninstalled, deepLibrary + "/steamapps/common/Half-Life/cstrike/config.cfg",
                        PayloadBytes("cs16", "config.cfg"));
    EXPECT_EQ(Snapshot(account), accountBefore);
    EXPECT_EQ(Snapshot(games), gamesBefore);
    EXPECT_EQ(Snapshot(deepLibrary), deepBefore);
}

// A name the system's ANSI code page can hold, in that code page's bytes.
bool AnsiName(std::wstring& name, std::string& bytes)
{
    for (const wchar_t* candidate : {L"játék_ő", L"игра", L"café"}) {
        BOOL lossy = FALSE;
        char converted[64] = {};
        const int length = WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, candidate, -1, converted,
                                               sizeof converted, nullptr, &lossy);
        if (length > 1 && !lossy) {
            name = candidate;
            bytes = converted;
            return true;
        }
    }
    return false;
}

TEST(Unicode, ARemovalListAnEarlierVersionWroteInTheAnsiCodePageStillUninstalls)
{
    std::wstring name;
    std::string ansi;
    ASSERT_TRUE(AnsiName(name, ansi));
    SteamFolder steam;
    steam.AddAccount("player", cs16Game);
    const std::string account = steam.Account("player");
    const std::string content = account + "/counter-strike/cstrike/";
    const auto before = Snapshot(account);
    // What an earlier version's install made, and the lists it wrote in the ANSI code page.
    WriteFile(content + "cfg/" + Utf8(name) + "/ludax.cfg", "made by the install");
    WriteFile(account + "/cs16ludax.bak", std::string("\x01\0\0\0", 4));
    WriteFile(account + "/cs16ludax_1.bak", content + "cfg/" + ansi + "/ludax.cfg\r\n" + content + "cfg/" + ansi +
                                                "\r\n" + content + "cfg\r\n");
    steam.Register();

    RunningLudax ludax;
    ASSERT_NE(ludax.window, nullptr) << ludax.failure;
    EXPECT_EQ(ClickAndAnswer(ludax, FindControls(ludax.window).cs16Uninstall, IDOK).text, cs16Uninstalled);
    CloseThroughCloseCorner(ludax);
    EXPECT_EQ(Snapshot(account), before);
}

// The locale runs (see CMakeLists.txt) ask for a system code page: the program runs in it.
TEST(Unicode, TheCodePageAskedForIsTheOneInUse)
{
    const char* expected = std::getenv("LUDAX_EXPECTED_CODE_PAGE");
    if (!expected)
        GTEST_SKIP() << "run in the system's own code page";
    EXPECT_EQ(GetACP(), static_cast<UINT>(std::atoi(expected)));
}

}  // namespace
