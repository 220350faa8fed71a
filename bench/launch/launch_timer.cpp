// ludax_launch_timer: how long Ludax.exe takes from its start to a visible window, against a bare
// window with the same manifest and the same controls (ludax_bare_window.exe), and as the Steam
// folder holds 1, 100, 1,000 and 5,000 account folders; what the launch gains with the folders is
// held against the calls alone that finding the games there cannot do without
// (ludax_discovery_calls.exe), on the same folders. The three programs are started in turn, the
// two windows on a desktop of their own; each window ends with WM_CLOSE.
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
#include <fstream>
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

// Runs the calls alone on the Steam folder's steamapps, writing their report to `report`; their
// milliseconds, nothing when they failed or found no folder.
std::optional<double> TimeCalls(const std::wstring& exe, const std::string& steamapps, const std::string& report,
                                int folders)
{
    LaunchedProcess process(exe, L"\"" + std::wstring(steamapps.begin(), steamapps.end()) + L"\" \"" +
                                     std::wstring(report.begin(), report.end()) + L"\"");
    if (process.WaitForExit(60000) != std::optional<DWORD>(0))
        return std::nullopt;
    double ms = 0;
    int listed = 0;
    std::ifstream in(report);
    // The listing holds the account folders, "." and "..", and Steam's own (MakeSteamFolder).
    if (!(in >> ms >> listed) || listed < folders)
        return std::nullopt;
    return ms;
}

// What one count of account folders measured: medians over its runs.
struct Measured {
    double ludaxMs = 0, callsMs = 0;
};

// The medians of `runs` runs, each Ludax.exe's launch, the bare window's (whose times go to
// `bareTimes`) and the calls alone in turn; nothing when a window did not come or the calls failed.
std::optional<Measured> TimeLaunches(const std::wstring& exe, int runs, const std::wstring& bare,
                                     std::vector<double>& bareTimes, const std::wstring& calls,
                                     const std::string& steamapps, const std::string& report, int folders)
{
    std::vector<double> times, callTimes;
    for (int run = 0; run < runs; ++run) {
        const std::optional<double> ludax = TimeLaunch(exe, L"Ludax");
        const std::optional<double> bareWindow = TimeLaunch(bare, L"LudaxBareWindow");
        const std::optional<double> callsAlone = TimeCalls(calls, steamapps, report, folders);
        if (!ludax || !bareWindow || !callsAlone)
            return std::nullopt;
        times.push_back(*ludax);
        bareTimes.push_back(*bareWindow);
        callTimes.push_back(*callsAlone);
    }
    return Measured{bench::Median(times), bench::Median(callTimes)};
}

const char* Verdict(double ratio, double target) { return ratio <= target ? "met" : "MISSED"; }

// The targets: the launch with one account folder at most bareLimit times the bare window's; what
// 1,000 and 5,000 folders add to it at most callsLimit times what they add to the calls alone.
constexpr double bareLimit = 1.2;
constexpr double callsLimit = 1.3;

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
    const std::wstring calls = BesideThisProgram(L"ludax_discovery_calls.exe");
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
    const std::string steamapps = steam + "/steamapps/", report = root.Path() + "/calls.txt";
    WriteSteamPath(steam);

    // One untimed start of each first: the system's caches, not the programs, decide that one.
    TimeLaunch(ludax, L"Ludax");
    TimeLaunch(bare, L"LudaxBareWindow");
    // Each count of account folders is timed with the bare window and the calls alone taking
    // turns, so that a spell of load elsewhere on the machine spreads over all three; the larger
    // counts, slower, run fewer times.
    struct Series {
        int accounts;
        int runs;
        bool target;  // the launch's extra over one folder held against the calls' extra
        Measured measured;
    };
    std::vector<Series> series = {{1, runs, false, {}}, {100, (runs + 1) / 2, false, {}},
                                  {1000, (runs + 1) / 2, true, {}}, {5000, (runs + 1) / 2, true, {}}};
    std::vector<double> bareTimes;
    int made = 0;
    bool failed = false;
    for (Series& count : series) {
        AddAccountFolders(steam, made, count.accounts);
        const std::optional<Measured> measured =
            TimeLaunches(ludax, count.runs, bare, bareTimes, calls, steamapps, report, count.accounts);
        failed = !measured;
        if (failed)
            break;
        count.measured = *measured;
    }
    WriteSteamPath(earlierSteamPath);
    if (failed) {
        std::fprintf(stderr, "ludax_launch_timer: a window did not come within 10 s, or the calls alone failed\n");
        return 1;
    }
    const double bareMs = bench::Median(bareTimes), oneMs = series[0].measured.ludaxMs;
    const double oneCallsMs = series[0].measured.callsMs;
    std::printf("launch to a visible window under Wine, median of %d runs (%d for 100 folders and more);\n"
                "Steam laid out as a player's is today, plus account folders of the layout before 2013,\n"
                "one in ten holding Counter-Strike:\n",
                runs, series[1].runs);
    std::printf("  bare window, same manifest and controls  %8.1f ms (median of %zu)\n", bareMs, bareTimes.size());
    std::printf("  Ludax.exe, 1 account folder              %8.1f ms  %5.2f x bare (target: at most %.2f, %s)\n",
                oneMs, oneMs / bareMs, bareLimit, Verdict(oneMs / bareMs, bareLimit));
    std::printf("\nWhat the account folders add to the launch (its extra over one folder), against what they\n"
                "add to the calls alone that finding the games cannot do without, on the same folders: one\n"
                "listing of steamapps and four GetFileAttributesW a folder (ludax_discovery_calls.exe,\n"
                "timed inside it). Target for 1,000 and 5,000 folders: the launch's extra at most %.1f x\n"
                "the calls' extra.\n",
                callsLimit);
    std::printf("  %7s %11s %7s %9s %9s %13s %13s  %s\n", "folders", "Ludax.exe ms", "x one", "extra ms",
                "calls ms", "calls' extra", "x calls'", "target");
    for (const Series& count : series) {
        const double extra = count.measured.ludaxMs - oneMs, callsExtra = count.measured.callsMs - oneCallsMs;
        const double ratio = extra / callsExtra;
        char ratioText[16] = "-";
        if (count.accounts > 1 && callsExtra > 0)
            std::snprintf(ratioText, sizeof ratioText, "%.2f", ratio);
        std::printf("  %7d %11.1f %7.2f %9.1f %9.1f %13.1f %13s  %s\n", count.accounts, count.measured.ludaxMs,
                    count.measured.ludaxMs / oneMs, extra, count.measured.callsMs, callsExtra, ratioText,
                    !count.target ? "-" : callsExtra > 0 && ratio <= callsLimit ? "met" : "MISSED");
    }
    return 0;
}
