// ludax_launch_timer: how long Ludax.exe takes from its start to a visible window, against a bare
// window with the same manifest and the same controls (ludax_bare_window.exe). Both are started
// the same number of times, in turn, on a desktop of their own; each run ends with WM_CLOSE.
//   ludax_launch_timer [--runs N]
// Ludax.exe is pointed at a Steam folder of its own, laid out as a player's is today (see
// MakeSteamFolder); the registry's earlier SteamPath is put back afterwards.
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
// one manifest file per installed game (here 60), Counter-Strike 1.6 in the shared common/, and
// one account folder of the layout before 2013.
std::string MakeSteamFolder(const std::string& root)
{
    const std::string steam = root + "/Steam", apps = steam + "/steamapps";
    for (const char* folder : {"/common/Half-Life/cstrike", "/common/Portal 2", "/downloading", "/shadercache",
                               "/sourcemods", "/temp", "/workshop", "/player/counter-strike"})
        MakeFolders(apps + folder);
    for (int game = 0; game < 60; ++game)
        WriteFile(apps + "/appmanifest_" + std::to_string(10 + 10 * game) + ".acf", "\"AppState\"\n{\n}\n");
    WriteFile(apps + "/libraryfolders.vdf", "\"libraryfolders\"\n{\n}\n");
    return steam;
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
    WriteSteamPath(MakeSteamFolder(root.Path()));

    // One untimed start of each first: the system's caches, not the programs, decide that one.
    TimeLaunch(ludax, L"Ludax");
    TimeLaunch(bare, L"LudaxBareWindow");
    std::vector<double> ludaxTimes, bareTimes;
    bool failed = false;
    for (int run = 0; run < runs && !failed; ++run) {
        const std::optional<double> l = TimeLaunch(ludax, L"Ludax");
        const std::optional<double> b = TimeLaunch(bare, L"LudaxBareWindow");
        failed = !l || !b;
        if (!failed) {
            ludaxTimes.push_back(*l);
            bareTimes.push_back(*b);
        }
    }
    WriteSteamPath(earlierSteamPath);
    if (failed) {
        std::fprintf(stderr, "ludax_launch_timer: a window did not come within 10 s\n");
        return 1;
    }
    const double ludaxMs = bench::Median(ludaxTimes), bareMs = bench::Median(bareTimes);
    std::printf("launch to a visible window, median of %d runs each:\n", runs);
    std::printf("  bare window, same manifest and controls  %7.1f ms (fastest %.1f)\n", bareMs,
                *std::min_element(bareTimes.begin(), bareTimes.end()));
    std::printf("  Ludax.exe                                %7.1f ms (fastest %.1f)\n", ludaxMs,
                *std::min_element(ludaxTimes.begin(), ludaxTimes.end()));
    std::printf("  ratio                                    %7.2f x (target: at most 1.20, %s)\n", ludaxMs / bareMs,
                ludaxMs / bareMs <= 1.2 ? "met" : "MISSED");
    return 0;
}
