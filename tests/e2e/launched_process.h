#pragma once
// A program started for a test, on the tests' private desktop; killed if the test leaves it
// running.

#include <windows.h>

#include <optional>
#include <string>

class LaunchedProcess {
public:
    // Starts `exe` with `arguments` (none by default).
    explicit LaunchedProcess(const std::wstring& exe, const std::wstring& arguments = std::wstring());
    ~LaunchedProcess();
    LaunchedProcess(const LaunchedProcess&) = delete;
    LaunchedProcess& operator=(const LaunchedProcess&) = delete;

    DWORD Id() const { return id; }
    bool Running() const;

    // The exit code once the process has ended within `timeoutMs`, nothing otherwise.
    std::optional<DWORD> WaitForExit(DWORD timeoutMs);

private:
    HANDLE process = nullptr;
    DWORD id = 0;
};

// Where the product lies: Ludax.exe at the top of the build tree this test program sits in.
std::wstring LudaxExePath();
