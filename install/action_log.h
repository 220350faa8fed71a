#pragma once
// What an install or uninstall does, path by path, for whoever keeps a log: "backed up",
// "wrote", "made folder", "removed", "restored", "kept", "stopped".

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "system.h"

using ActionLog = std::function<void(const char* action, const std::string& path)>;

// `path` with a backslash for every '/'.
std::string WindowsPath(std::string path);

// A log file that grows by one UTF-8 line per entry: the time (ISO 8601, UTC), then the entry's
// fields, separated by tabs and ended by CR LF. Each line reaches the file at once, so a log of a
// run that was cut short still says how far it went. Paths are written in Windows form, with '\'.
class ActionLogFile {
public:
    // Adds to `file`, which is open for writing at its end.
    explicit ActionLogFile(sys::File file) : file(std::move(file)) {}
    bool IsOpen() const { return file.IsOpen(); }
    // One line: the time, then `fields`, each kept on the line (a line end or tab within one
    // becomes a space); false when it could not be written whole.
    bool Line(const std::vector<std::string>& fields);
    // An action's line: the time, the action, the path.
    void Record(const char* action, const std::string& path) { Line({action, WindowsPath(path)}); }
    ActionLog AsLog() { return [this](const char* action, const std::string& path) { Record(action, path); }; }
    // The file itself, to close or cut back.
    sys::File Release() && { return std::move(file); }

private:
    sys::File file;
};

// "2026-11-22T17:05:03Z" for the seconds since 1970.
std::string IsoTime(long long secondsSince1970);
