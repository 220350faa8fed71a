#pragma once
// Ludax.exe started for one test, with its main window once it shows (terminated at the end
// of the test if it is still running).

#include <windows.h>

#include <string>

#include "launched_process.h"

struct RunningLudax {
    // Started with `arguments` (UTF-8; none by default).
    explicit RunningLudax(const std::string& arguments = std::string());

    LaunchedProcess process;
    HWND window = nullptr;  // the visible "Ludax" window, nullptr when none came
    std::string failure;    // why there is no window
};
