#pragma once
// The virtual display has no window manager. Wine, left to expect one, waits two seconds for it
// whenever a window is hidden or closed; told that it manages its windows itself, it does not.
// Holds the prefix's "X11 Driver\Managed" setting at "N" for the run and restores it afterwards
// (a registry value only Wine reads, so harmless on Windows).

#include <optional>
#include <string>

class UnmanagedWindows {
public:
    UnmanagedWindows();
    ~UnmanagedWindows();
    UnmanagedWindows(const UnmanagedWindows&) = delete;
    UnmanagedWindows& operator=(const UnmanagedWindows&) = delete;

private:
    std::optional<std::string> previous;
};
