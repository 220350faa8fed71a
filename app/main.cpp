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

int RunWithoutWindow(const Command& command)
{
    CommandOutput out(STD_OUTPUT_HANDLE), err(STD_ERROR_HANDLE);
    // The usage changes nothing, so it runs beside any other copy.
    ScopedKernelObject copy;
    if (command.kind != Command::Kind::usage && !(copy = OnlyCopy()).IsValid()) {
        err.Write(texts::command::anotherCopy);
        return exitStatus::anotherCopy;
    }
    const CommandResult result = RunCommand(command);
    out.Write(result.out);
    err.Write(result.err);
    return result.status;
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
    Command command;
    std::string error;
    if (!ParseCommandLine(Arguments(), command, error)) {
        CommandOutput(STD_ERROR_HANDLE).Write(error + "\n\n" + texts::command::usage);
        return exitStatus::badCommandLine;
    }
    if (command.kind != Command::Kind::window)
        return RunWithoutWindow(command);
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
    std::optional<ActionLogFile> logFile;
    if (!command.logPath.empty()) {
        // The window's log is never a player's file nor one of ours either.
        const SteamPath steam = ReadSteamappsPath();
        if (steam.read == sys::RegistryRead::ok && AmongGameFiles(command.logPath, FindGames(steam.steamappsPath).places)) {
            CommandOutput(STD_ERROR_HANDLE).Write(texts::command::LogRefused(command.logPath));
            return exitStatus::badCommandLine;
        }
        logFile.emplace(command.logPath);
    }
    {
        Ludax ludax(logFile && logFile->IsOpen() ? logFile->AsLog() : ActionLog());
        ludax.Run();
    }
    return 0;
}
