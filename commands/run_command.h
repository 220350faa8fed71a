#pragma once
// A command run without a window, for a LAN admin's script: what it says, and the exit status
// the script reads.

#include <optional>
#include <string>

#include <functional>
#include <vector>

#include "action_log.h"
#include "command_line.h"
#include "run_log.h"
#include "steam_account.h"
#include "steam_path.h"

namespace exitStatus {
constexpr int done = 0;
constexpr int badCommandLine = 1;
constexpr int steamNotFound = 2;      // either registry failure
constexpr int noSuchPlace = 3;        // no such place, the game is not there, or more than one place fits
constexpr int installedOrNot = 4;     // a file changed since the install (without /yes), or /verify: not installed
constexpr int gameRunning = 5;
constexpr int installStopped = 6;     // a file it could not back up or write, a folder it could not make
constexpr int backupKept = 7;         // the uninstall could not undo everything and kept the backup files
constexpr int anotherCopy = 8;        // the window or another command runs
constexpr int notAsShipped = 9;       // /verify: a file of the set is changed or missing
}  // namespace exitStatus

struct CommandResult {
    int status = exitStatus::done;
    std::string out;      // the list, the usage, what was done; lines end with '\n'
    std::string err;      // why it stopped
    std::string summary;  // what happened, in one line, for the log; empty: `err` or `out` says it
};

// A run that ends with `status`, saying `why` on standard error; `summary` for the log.
inline CommandResult ErrorResult(int status, const std::string& why, const std::string& summary = std::string())
{
    return {status, std::string(), why, summary};
}

// Runs a usage, list, install, uninstall or verify command against Steam and the disk as they are
// now; the caller sees to it that no other copy of the program runs meanwhile. The command's log,
// when it names one, records the run (`commandLine` as the program was given it), each action
// and how the run ended.
CommandResult RunCommand(const Command& command, const std::string& commandLine = std::string());

// The places at the Steam folder found, none when it was not.
std::vector<SteamAccount> PlacesAt(const SteamPath& steam);

// Runs `run` with the log at `logPath` (none when empty), which records the run from its start
// (`commandLine`) to its end; refused (status 1, before anything is done) when the log is not one
// this run may write among `places` (RunLog::Open; none looked for: a refused command line).
CommandResult Logged(const std::string& logPath, const std::optional<std::vector<SteamAccount>>& places,
                     const std::string& commandLine, const std::function<CommandResult(const ActionLog& log)>& run);

// What a refused log says, with the path as given.
std::string LogRefused(LogRefusal refusal, const std::string& path);

// What this build is: its version and the file sets it carries ("Ludax config. 1.02 (cs16
// 0123456789ab, css ...)", each id the start of the SHA-256 of the game's container).
std::string BuildName();
