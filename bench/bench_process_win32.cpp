#include "bench_process.h"

#include <windows.h>
#include <psapi.h>

#include <chrono>

#include "flushes_off.h"

namespace bench {

namespace {

std::wstring Widen(const std::string& text)
{
    if (text.empty())
        return std::wstring();
    int length = MultiByteToWideChar(CP_ACP, 0, text.data(), static_cast<int>(text.size()), nullptr, 0);
    std::wstring wide(length, L'\0');
    MultiByteToWideChar(CP_ACP, 0, text.data(), static_cast<int>(text.size()), &wide[0], length);
    return wide;
}

// One argument quoted so that the child's argument parser gives it back unchanged.
std::wstring Quote(const std::wstring& arg)
{
    if (!arg.empty() && arg.find_first_of(L" \t\"") == std::wstring::npos)
        return arg;
    std::wstring quoted = L"\"";
    std::size_t backslashes = 0;
    for (wchar_t c : arg) {
        if (c == L'\\') {
            ++backslashes;
            continue;
        }
        // Backslashes only escape when a quote follows them.
        quoted.append(c == L'"' ? backslashes * 2 + 1 : backslashes, L'\\');
        backslashes = 0;
        quoted += c;
    }
    quoted.append(backslashes * 2, L'\\');
    return quoted + L"\"";
}

}  // namespace

ProcessOutcome RunProcess(const std::vector<std::string>& args, const ProcessOptions& options)
{
    std::wstring commandLine;
    for (const std::string& arg : args)
        commandLine += (commandLine.empty() ? L"" : L" ") + Quote(Widen(arg));

    ProcessOutcome outcome;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    HANDLE nul = INVALID_HANDLE_VALUE;
    if (options.quiet) {
        SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
        nul = CreateFileW(L"NUL", GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable,
                          OPEN_EXISTING, 0, nullptr);
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
        startup.hStdOutput = nul;
        startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    }
    // The child inherits this process's environment as it is at the start.
    SetEnvironmentVariableA(flushesOffVariable, options.flushesOff ? "1" : nullptr);
    PROCESS_INFORMATION process{};
    auto start = std::chrono::steady_clock::now();
    BOOL started = CreateProcessW(nullptr, &commandLine[0], nullptr, nullptr, options.quiet, 0, nullptr,
                                  nullptr, &startup, &process);
    SetEnvironmentVariableA(flushesOffVariable, nullptr);
    if (nul != INVALID_HANDLE_VALUE)
        CloseHandle(nul);
    if (!started)
        return outcome;
    outcome.started = true;
    const DWORD limit = options.limitMs > 0 ? static_cast<DWORD>(options.limitMs) : INFINITE;
    if (WaitForSingleObject(process.hProcess, limit) == WAIT_TIMEOUT) {
        TerminateProcess(process.hProcess, 1);
        WaitForSingleObject(process.hProcess, INFINITE);
        outcome.stopped = true;
    }
    outcome.wallMs =
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    DWORD exitCode = 0;
    GetExitCodeProcess(process.hProcess, &exitCode);
    outcome.exitCode = static_cast<int>(exitCode);
    // Wine cannot report the counters of a process that has ended: children report their own.
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return outcome;
}

std::string SelfPath()
{
    char path[MAX_PATH];
    DWORD length = GetModuleFileNameA(nullptr, path, MAX_PATH);
    return std::string(path, length);
}

long long OwnPeakBytes()
{
    PROCESS_MEMORY_COUNTERS counters{};
    counters.cb = sizeof counters;
    if (!K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters))
        return 0;
    return static_cast<long long>(counters.PeakWorkingSetSize);
}

namespace {

// Wine's version, or nullptr under Windows itself.
const char* WineVersion()
{
    using Version = const char* (*)();
    HMODULE ntdll = GetModuleHandleA("ntdll.dll");
    auto version = ntdll ? reinterpret_cast<Version>(reinterpret_cast<void*>(GetProcAddress(ntdll, "wine_get_version")))
                         : nullptr;
    return version ? version() : nullptr;
}

}  // namespace

// Wine starts a program of the machine it runs on as it starts a Windows one; its exit status does
// not come back, so a sync that started and ended is taken as done.
bool WriteBackEverything() { return WineVersion() && RunProcess({"/bin/sync"}).started; }

std::string PlatformName()
{
    const char* wine = WineVersion();
    return wine ? std::string("Windows under Wine ") + wine : std::string("Windows");
}

const char* PeakMethodName() { return "the child's own PeakWorkingSetSize at its end"; }

}  // namespace bench
