// The program's entry: its window, or a command a LAN admin's script gives it (command_line.h),
// one copy at a time.
#include <windows.h>
#include <shellapi.h>

#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "command_line.h"
#include "command_output.h"
#include "find_games.h"
#include "ludax.h"
#include "run_command.h"
#include "run_log.h"
#include "scoped_handle.h"
#include "steam_path.h"
#include "texts.h"
#include "wide_text.h"

namespace {

// One copy at a time: two copies would each take the other's changes for the player's files.
// The mark of this copy, held while it lives; none when another copy holds it.
ScopedKernelObject OnlyCopy()
{
    ScopedKernelObject copy(CreateMutexW(nullptr, FALSE, L"Local\\LudaxConfig"));
    return GetLastError() == ERROR_ALREADY_EXISTS ? ScopedKernelObject() : std::move(copy);
}

// The arguments after the program's name, as UTF-8.
std::vector<std::string> Arguments()
{
    std::vector<std::string> args;
    int count = 0;
    LPWSTR* wide = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 1; wide && i < count; ++i)
        args.push_back(ToUtf8(reinterpret_cast<const char16_t*>(wide[i]), wcslen(wide[i])));
    LocalFree(wide);
    return args;
}

// Writes a command's text where its script reads it; started from Explorer or a shortcut, with
// no console and nothing redirected, a message box shows it instead.
void Say(const std::string& text, DWORD which, UINT icon)
{
    CommandOutput output(which);
    if (output.Reaches())
        output.Write(text);
    else if (!text.empty())
        MessageBoxW(nullptr, Wide(text).c_str(), Wide(texts::windowTitle).c_str(), MB_OK | icon);
}

int Finish(const CommandResult& result)
{
    Say(result.out, STD_OUTPUT_HANDLE, MB_ICONINFORMATION);
    Say(result.err, STD_ERROR_HANDLE, MB_ICONWARNING);
    return result.status;
}

// A run that ends before its command does (a command line the program does not take, another
// copy running) is logged all the same, where its command line names a log, without looking for
// Steam's places first.
int Refuse(const std::string& logPath, const std::string& commandLine, const CommandResult& refusal)
{
    return Finish(Logged(logPath, std::nullopt, commandLine, [&](const ActionLog&) { return refusal; }));
}

int RunWithoutWindow(const Command& command, const std::string& commandLine)
{
    // The usage changes nothing, so it runs beside any other copy.
    ScopedKernelObject copy;
    if (command.kind != Command::Kind::usage && !(copy = OnlyCopy()).IsValid())
        return Refuse(command.logPath, commandLine, ErrorResult(exitStatus::anotherCopy, texts::command::anotherCopy));
    return Finish(RunCommand(command, commandLine));
}

}  // namespace

// What ends the program when an exception is not caught (none is thrown on purpose). The
// standard library's default prints the exception's demangled type name first, which pulls
// the whole C++ demangler into the .exe for a console this program does not have.
namespace __gnu_cxx {
void __verbose_terminate_handler() { std::abort(); }
}  // namespace __gnu_cxx

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int)
{
    const std::vector<std::string> args = Arguments();
    const std::string commandLine = CommandLineText(args);
    Command command;
    std::string error;
    if (!ParseCommandLine(args, command, error))
        return Refuse(SwitchValue(args, "log"), commandLine,
                      ErrorResult(exitStatus::badCommandLine, error + "\n\n" + texts::command::usage, error));
    if (command.kind != Command::Kind::window)
        return RunWithoutWindow(command, commandLine);
    const ScopedKernelObject copy = OnlyCopy();
    if (!copy.IsValid()) {
        // The player started it again: the running window is what they are after.
        if (HWND running = FindWindowW(ludaxWindowClass, nullptr)) {
            if (IsIconic(running))
                ShowWindow(running, SW_RESTORE);
            SetForegroundWindow(running);
        }
        return 0;
    }
    // The window's log records its run as a command's does, by the same rules. The places found
    // for that check are the window's.
    const SteamPath steam = SteamForTheWindow(command.steamFolder);
    std::optional<std::vector<SteamAccount>> places;
    std::optional<RunLog> log;
    if (!command.logPath.empty()) {
        places = PlacesAt(steam);
        LogRefusal refusal = LogRefusal::none;
        log = RunLog::Open(command.logPath, *places, commandLine, refusal);
        if (!log)
            return Finish(ErrorResult(exitStatus::badCommandLine, LogRefused(refusal, command.logPath)));
    }
    RunLog* const openLog = log ? &*log : nullptr;
    {
        Ludax ludax(steam, std::move(places), openLog);
        ludax.Run();
    }
    if (openLog)
        openLog->End(0, texts::summary::windowClosed);
    return 0;
}
