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
    DWORD length = GetModuleFileNameW(nullptr, buffer.data(), static_cast<DWORD>(buffer.size()));
    std::wstring folder(buffer.data(), length);
    // This program lives in <build>/tests/e2e/; the product in <build>/.
    for (int up = 0; up < 4; ++up) {
        std::size_t slash = folder.find_last_of(L"\\/");
        if (slash == std::wstring::npos)
            break;
        folder.resize(slash);
        std::wstring candidate = folder + L"\\Ludax.exe";
        if (GetFileAttributesW(candidate.c_str()) != INVALID_FILE_ATTRIBUTES)
            return candidate;
    }
    return L"";
}
