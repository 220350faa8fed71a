#pragma once
// The audit record of one run in the log a command line names (/log): it begins with
//   <time> started  Ludax config. <version>  <computer>  <user>  <the command line>
// goes on with each action of an install or uninstall, and ends with
//   <time> ended  <exit status>  <what happened, in one line>
// so that a folder gathering every PC's log answers "what happened on PC 37?". A log is never a
// player's file nor one of the backup files, whatever path names it, and never anyone else's file.

#include <optional>
#include <string>
#include <vector>

#include "action_log.h"
#include "steam_account.h"

// Why a log cannot be the run's.
enum class LogRefusal {
    none,
    amongGameFiles,  // in a game's folder, or one of the backup files, at one of the places
    notALog,         // a file that is not this program's log: its first line is no "started" line
    notWritable,     // its folder is not there, it cannot be opened, or it cannot take a line
};

class RunLog {
public:
    // The log at `path` for a run given `commandLine`, its "started" line written: made when
    // missing; refused, with nothing written, when the system finds it (not its spelling) in a
    // game's folder or among the backup files at one of `places`, when it is a file that is not
    // this program's log, or when it cannot take its first line.
    static std::optional<RunLog> Open(const std::string& path, const std::vector<SteamAccount>& places,
                                      const std::string& commandLine, LogRefusal& refusal);

    RunLog(RunLog&&) = default;
    RunLog& operator=(RunLog&&) = default;
    ActionLog Actions() { return file.AsLog(); }
    // The "ended" line; `what`'s line ends become spaces, those at its end go.
    void End(int status, std::string what);

private:
    explicit RunLog(sys::File file) : file(std::move(file)) {}
    ActionLogFile file;
};

// True when `firstLine` (without its line end) is a "started" line this program writes.
bool IsStartedLine(const std::string& firstLine);
