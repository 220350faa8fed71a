#pragma once
// Ludax.exe run as a LAN admin's script runs it: a command line, its output redirected to files
// as "> out 2> err" does, waited for, its exit status read.

#include <ostream>
#include <string>

struct CommandRun {
    unsigned long status = 0xFFFFFFFF;  // the exit status; 0xFFFFFFFF when it did not end in time
    std::string out;                    // standard output, as the program wrote it
    std::string err;                    // standard error

    bool operator==(const CommandRun& other) const
    {
        return status == other.status && out == other.out && err == other.err;
    }
};
std::ostream& operator<<(std::ostream& out, const CommandRun& run);

// Ludax.exe with `arguments` as a command line gives them (UTF-8, quoted where a value holds
// spaces).
CommandRun RunLudaxCommand(const std::string& arguments);

// `program` started with `commandLine` (its own name first), as RunLudaxCommand starts Ludax.exe.
CommandRun RunCommandLine(const std::wstring& program, std::wstring commandLine);

// A path quoted for a command line.
inline std::string Quoted(const std::string& path) { return "\"" + path + "\""; }
