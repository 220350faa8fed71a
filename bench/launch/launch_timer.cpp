// ludax_launch_timer: how long Ludax.exe takes from its start to a visible window, against a bare
// window with the same manifest and the same controls (ludax_bare_window.exe), and as the Steam
// folder holds 1, 100, 1,000 and 5,000 account folders. Both programs are started in turn, on a
// desktop of their own; each run ends with WM_CLOSE.
//   ludax_launch_timer [--runs N]
// Ludax.exe is pointed at a Steam folder of its own, laid out as a player's is today (see
// MakeSteamFolder) plus the account folders; the registry's earlier SteamPath is put back
// afterwards.
#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "launched_process.h"
#include "median.h"
#include "private_desktop.h"
#include "test_files.h"
#include "unmanaged_windows.h"
#include "window_finder.h"

namespace {

const char steamKey[] = "Software\\Valve\\Steam";

std::wstring BesideThisProgram(const std::wstring& name)
{
    wchar_t path[MAX_PATH] = {};
    const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring folder(path, length);
    return folder.substr(0, folder.find_last_of(L"\\/") + 1) + name;
}

std::optional<std::string> ReadSteamPath()
{
    char value[MAX_PATH] = {};
    DWORD size = sizeof value;
    if (RegGetValueA(HKEY_CURRENT_USER, steamKey, "SteamPath", RRF_RT_REG_SZ, nullptr, value, &size) !=
        ERROR_SUCCESS)
        return std::nullopt;
    return std::string(value);
}

void WriteSteamPath(const std::optional<std::string>& value)
{
    HKEY key;
    if (RegCreateKeyExA(HKEY_CURRENT_USER, steamKey, 0, nullptr, 0, KEY_SET_VALUE, nullptr, &key, nullptr) !=
        ERROR_SUCCESS)
        return;
    if (value)
        RegSetValueExA(key, "SteamPath", 0, REG_SZ, reinterpret_cast<const BYTE*>(value->c_str()),
                       static_cast<DWORD>(value->size() + 1));
    else
        RegDeleteValueA(key, "SteamPath");
    RegCloseKey(key);
}

// A Steam folder as a player's looks today, in `root`: steamapps holds Steam's own folders and
// one manifest file per installed game (here 60), and Counter-Strike 1.6 in the shared common/.
std::string MakeSteamFolder(const std::string& root)
{
    const std::string steam = root + "/Steam", apps = steam + "/steamapps";
    for (const char* folder : {"/common/Half-Life/cstrike", "/common/Portal 2", "/downloading", "/shadercache",
                               "/sourcemods", "/temp", "/workshop"})
        MakeFolders(apps + folder);
    for (int game = 0; game < 60; ++game)
        WriteFile(apps + "/appmanifest_" + std::to_string(10 + 10 * game) + ".acf", "\"AppState\"\n{\n}\n");
    WriteFile(apps + "/libraryfolders.vdf", "\"libraryfolders\"\n{\n}\n");
    return steam;
}

// Account folders of the layout before 2013 up to `count` in all, as an internet café's PC keeps
// them: one in ten holds Counter-Strike, the others another game.
void AddAccountFolders(const std::string& steam, int& made, int count)
{
    for (; made < count; ++made) {
        const std::string account = steam + "/steamapps/account" + std::to_string(made);
        MakeFolders(account + (made % 10 == 0 ? "/counter-strike/cstrike" : "/half-life/valve"));
    }
}

// Milliseconds from the start of `exe` until its window of `className` is visible; the window
// is then closed. Nothing when no such window came within ten seconds.
std::optional<double> TimeLaunch(const std::wstring& exe, const std::wstring& className)
{
    const auto start = std::chrono::steady_clock::now();
    LaunchedProcess process(exe);
    HWND window = nullptr;
    while (!window && process.Running() && std::chrono::steady_clock::now() - start < std::chrono::seconds(10)) {
        for (HWND candidate : VisibleWindowsOf(process.Id()))
            if (ClassOf(candidate) == className)
                window = candidate;
        if (!window)
            Sleep(1);
    }
    const auto shown = std::chrono::steady_clock::now();
    if (!window)
        return std::nullopt;
    PostMessageW(window, WM_CLOSE, 0, 0);
    process.WaitForExit(10000);
    return std::chrono::duration<double, std::milli>(shown - start).count();
}

// The median launch of `exe` over `runs` runs, each taking turns with the bare window's, whose
// times go to `bareTimes`; nothing when a window did not come.
std::optional<double> TimeLaunches(const std::wstring& exe, int runs, const std::wstring& bare,
                                   std::vector<double>& bareTimes)
{
    std::vector<double> times;
    for (int run = 0; run < runs; ++run) {
        const std::optional<double> ludax = TimeLaunch(exe, L"Ludax");
        const std::optional<double> bareWindow = TimeLaunch(bare, L"LudaxBareWindow");
        if (!ludax || !bareWindow)
            return std::nullopt;
        times.push_back(*ludax);
        bareTimes.push_back(*bareWindow);
    }
    return bench::Median(times);
}

const char* Verdict(double ratio, double target) { return ratio <= target ? "met" : "MISSED"; }

}  // namespace

int main(int argc, char** argv)
{
    int runs = 15;
    if (argc == 3 && std::strcmp(argv[1], "--runs") == 0)
        runs = std::atoi(argv[2]);
    if (runs < 1 || (argc != 1 && argc != 3)) {
        std::fprintf(stderr, "usage: ludax_launch_timer [--runs N]\n");
        return 2;
    }
    const std::wstring ludax = LudaxExePath();
    const std::wstring bare = BesideThisProgram(L"ludax_bare_window.exe");
    if (ludax.empty()) {
        std::fprintf(stderr, "ludax_launch_timer: Ludax.exe not found above this program\n");
        return 1;
    }
    if (!EnterPrivateDesktop()) {
        std::fprintf(stderr, "ludax_launch_timer: cannot create a desktop of its own\n");
        return 1;
    }
    UnmanagedWindows unmanaged;
    const std::optional<std::string> earlierSteamPath = ReadSteamPath();
    TempFolder root;
    const std::string steam = MakeSteamFolder(root.Path());
    WriteSteamPath(steam);

    // One untimed start of each first: the system's caches, not the programs, decide that one.
    TimeLaunch(ludax, L"Ludax");
    TimeLaunch(bare, L"LudaxBareWindow");
    // Each count of account folders is timed with the bare window taking turns, so that a spell
    // of load elsewhere on the machine spreads over both; the larger counts, slower, run fewer times.
    struct Series {
        int accounts;
        int runs;
        double target;  // at most this many times the launch with one account folder; 0: none
        double ms = 0;
    };
    std::vector<Series> series = {{1, runs, 0}, {100, (runs + 1) / 2, 0}, {1000, (runs + 1) / 2, 1.5},
                                  {5000, (runs + 1) / 2, 6}};
    std::vector<double> bareTimes;
    int made = 0;
    bool failed = false;
    for (Series& count : series) {
        AddAccountFolders(steam, made, count.accounts);
        const std::optional<double> ms = TimeLaunches(ludax, count.runs, bare, bareTimes);
        failed = !ms;
        if (failed)
            break;
        count.ms = *ms;
    }
    WriteSteamPath(earlierSteamPath);
    if (failed) {
        std::fprintf(stderr, "ludax_launch_timer: a window did not come within 10 s\n");
        return 1;
    }
    const double bareMs = bench::Median(bareTimes), oneMs = series[0].ms;
    std::printf("launch to a visible window under Wine, median of %d runs (%d for 100 folders and more);\n"
                "Steam laid out as a player's is today, plus account folders of the layout before 2013,\n"
                "one in ten holding Counter-Strike:\n",
                runs, series[1].runs);
    std::printf("  bare window, same manifest and controls  %8.1f ms (median of %zu)\n", bareMs, bareTimes.size());
    std::printf("  Ludax.exe, 1 account folder              %8.1f ms  %5.2f x bare (target: at most 1.20, %s)\n",
                oneMs, oneMs / bareMs, Verdict(oneMs / bareMs, 1.2));
    for (std::size_t i = 1; i < series.size(); ++i) {
        const double ratio = series[i].ms / oneMs;
        std::printf("  Ludax.exe, %4d account folders          %8.1f ms  %5.2f x one folder", series[i].accounts,
                    series[i].ms, ratio);
        if (series[i].target > 0)
            std::printf(" (target: at most %.1f, %s)", series[i].target, Verdict(ratio, series[i].target));
        std::printf("\n");
    }
    return 0;
}
