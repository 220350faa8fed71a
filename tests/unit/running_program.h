#pragma once
// A program that waits under a name of the test's choosing, as the game would run (natively
// only: a copy of /bin/sleep started from a temporary folder).
#ifndef _WIN32

#include <sys/types.h>

#include <functional>
#include <string>

#include "test_files.h"

class RunningProgram {
public:
    explicit RunningProgram(const std::string& name);
    ~RunningProgram();
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    bool started = false;

private:
    TempFolder folder;
    pid_t pid = 0;
};

// True once `found` holds: a program just started may take a moment to show its name.
bool Soon(const std::function<bool()>& found);

#endif
