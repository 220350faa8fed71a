#pragma once
// What an install or uninstall does, path by path, for whoever keeps a log (commands/run_log.h):
// each file backed up or written, folder made, file or folder removed, file restored, what is
// kept, and where an install stopped and why.

#include <functional>
#include <string>

#include "call_status.h"

enum class Did { backedUp, wrote, madeFolder, removed, restored, kept, stopped };

// `why` is set for a stop.
using ActionLog = std::function<void(Did did, const std::string& path, const sys::Reason& why)>;

// The log of a run that keeps none.
inline void NoLog(Did, const std::string&, const sys::Reason&) {}

// `path` with a backslash for every '/'.
std::string WindowsPath(std::string path);

// "2026-11-22T17:05:03Z" for the seconds since 1970.
std::string IsoTime(long long secondsSince1970);
