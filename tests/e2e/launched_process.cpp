#include "launched_process.h"

#include <vector>

#include "private_desktop.h"

LaunchedProcess::LaunchedProcess(const std::wstring& exe, const std::wstring& arguments)
{
    std::wstring commandLine = L"\"" + exe + L"\"" + (arguments.empty() ? L"" : L" " + arguments);
    std::wstring desktop = PrivateDesktopName();
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.lpDesktop = desktop.data();
    PROCESS_INFORMATION info{};
    if (!CreateProcessW(exe.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr,
                        nullptr, &startup, &info))
        return;
    CloseHandle(info.hThread);
    process = info.hProcess;
    id = info.dwProcessId;
}

LaunchedProcess::~LaunchedProcess()
{
    if (!process)
        return;
    if (Running()) {
        TerminateProcess(process, 0xDEAD);
        WaitForSingleObject(process, 10000);
    }
    CloseHandle(process);
}

bool LaunchedProcess::Running() const
{
    return process && WaitForSingleObject(process, 0) == WAIT_TIMEOUT;
}

std::optional<DWORD> LaunchedProcess::WaitForExit(DWORD timeoutMs)
{
    if (!process || WaitForSingleObject(process, timeoutMs) != WAIT_OBJECT_0)
        return std::nullopt;
    DWORD code = 0;
    GetExitCodeProcess(process, &code);
    return code;
}

std::wstring LudaxExePath()
{
    std::vector<wchar_t> buffer(32768);
    std::wstring folder(buffer.data(), GetModuleFileNameW(nullptr, buffer.data(), static_cast<DWORD>(buffer.size())));
    // This program lives below the build tree (in tests/e2e/); the product at its top.
    for (std::size_t slash; (slash = folder.find_last_of(L"\\/")) != std::wstring::npos;) {
        folder.resize(slash);
        if (GetFileAttributesW((folder + L"\\Ludax.exe").c_str()) != INVALID_FILE_ATTRIBUTES)
            return folder + L"\\Ludax.exe";
    }
    return L"";
}
