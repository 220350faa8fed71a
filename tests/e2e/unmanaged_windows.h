#pragma once
// The virtual display has no window manager. Wine, left to expect one, waits two seconds for it
// whenever a window is hidden or closed; told that it manages its windows itself, it does not.
// Sets the prefix's "X11 Driver\Managed" value to "N" while it lives and removes it afterwards
// (a value only Wine reads, in a prefix the tests and the demo have to themselves).

class UnmanagedWindows {
public:
    UnmanagedWindows();
    ~UnmanagedWindows();
    UnmanagedWindows(const UnmanagedWindows&) = delete;
    UnmanagedWindows& operator=(const UnmanagedWindows&) = delete;
};
