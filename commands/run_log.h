#pragma once
// The audit record of one run in the log a command line names (/log): it begins with
//   <time> started  Ludax config. <version>  <computer>  <user>  <the command line>
// goes on with each action of an install or uninstall, and ends with
//   <time> ended  <exit status>  <what happened, in one line>
// so that a folder gathering every PC's log answers "what happened on PC 37?".

#include <string>

#include "action_log.h"

class RunLog {
public:
    // Opens `path` to add to it (made when missing) and writes the "started" line.
    RunLog(const std::string& path, const std::string& commandLine);
    // False when the log cannot be written.
    bool IsOpen() const { return file.IsOpen(); }
    ActionLog Actions() { return file.AsLog(); }
    // The "ended" line; `what`'s line ends become spaces, those at its end go.
    void End(int status, std::string what);

private:
    ActionLogFile file;
};
