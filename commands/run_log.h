#pragma once
// The audit record of one run in the log a command line names (/log), the window's as a
// command's: it begins with
//   <time> started  Ludax config. <version> (cs16 <id>, css <id>)  <computer>  <user>  <the command line>
// goes on with each action of an install or uninstall (a stop with its reason), and ends with
//   <time> ended  <exit status>  <what happened, in one line>
// so that a folder gathering every PC's log answers "what happened on PC 37?". Each line is UTF-8,
// its fields separated by tabs, ended by CR LF, and reaches the file at once: the log of a run
// cut short still says how far it went. Paths are in Windows form. A log is never a player's file
// nor one of the backup files, whatever path names it, and never anyone else's file.

#include <optional>
#include <string>
#include <vector>

#include "action_log.h"
#include "steam_account.h"
#include "system.h"

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
    // this program's log, or when it cannot take its first line. Without `places` (a refused
    // command line looks for none), an existing empty file is refused too: nobody can tell
    // whose it is.
    static std::optional<RunLog> Open(const std::string& path, const std::optional<std::vector<SteamAccount>>& places,
                                      const std::string& commandLine, LogRefusal& refusal);

    RunLog(RunLog&&) = default;
    RunLog& operator=(RunLog&&) = default;
    // Each action of the run's install or uninstall.
    ActionLog Actions() { return [this](Did did, const std::string& path, const sys::Reason& why) { Action(did, path, why); }; }
    // The "ended" line, the one end of every run, the window's and a command's, a fatal one too;
    // `what`'s line ends become spaces, those at its end go.
    void End(int status, std::string what);

private:
    explicit RunLog(sys::File file) : file(std::move(file)) {}
    void Action(Did did, const std::string& path, const sys::Reason& why);
    // One line: the time, then `fields`, each kept on the line; false when it could not be
    // written whole. A line lost is lost to the log only: the work it tells of goes on.
    bool Line(const std::vector<std::string>& fields);

    sys::File file;
};

// True when `firstLine` (without its line end) is a "started" line this program writes.
bool IsStartedLine(const std::string& firstLine);
