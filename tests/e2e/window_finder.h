#pragma once
// Finds the top-level windows a process shows, the way UI automation sees them.

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "launched_process.h"

constexpr DWORD defaultTimeoutMs = 10000;

std::wstring ClassOf(HWND window);
// The window's text as UTF-8.
std::string TextOf(HWND window);

// The process's visible top-level windows, topmost first.
std::vector<HWND> VisibleWindowsOf(DWORD processId);

// Polls until one of the process's visible top-level windows satisfies `accept`; nullptr on
// timeout, or at once when the process has ended.
HWND WaitForWindow(const LaunchedProcess& process, const std::function<bool(HWND)>& accept,
                   DWORD timeoutMs = defaultTimeoutMs);

// Polls `condition` every few milliseconds; true as soon as it holds, false after the timeout.
bool WaitUntil(const std::function<bool()>& condition, DWORD timeoutMs = defaultTimeoutMs);

// A fresh Wine prefix takes many seconds to show its first window (it builds its font cache):
// this pays for that once, before any time limit of a test or the demo starts.
void WarmUpWine();
