#include "command_run.h"

#include <windows.h>

#include <gtest/gtest.h>

#include "launched_process.h"
#include "test_files.h"
#include "text.h"

std::ostream& operator<<(std::ostream& out, const CommandRun& run)
{
    return out << "status " << run.status << ", out " << testing::PrintToString(run.out) << ", err "
               << testing::PrintToString(run.err);
}

CommandRun RunLudaxCommand(const std::string& arguments)
{
    const std::wstring exe = LudaxExePath();
    return RunCommandLine(exe, L"\"" + exe + L"\" " + Widen(arguments));
}

CommandRun RunCommandLine(const std::wstring& program, std::wstring commandLine)
{
    TempFolder folder;
    SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
    auto inherited = [&](const std::wstring& name, DWORD access, DWORD disposition) {
        return CreateFileW(name.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable, disposition, 0, nullptr);
    };
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = inherited(L"NUL", GENERIC_READ, OPEN_EXISTING);
    startup.hStdOutput = inherited(Widen(folder.Path() + "/out"), GENERIC_WRITE, CREATE_ALWAYS);
    startup.hStdError = inherited(Widen(folder.Path() + "/err"), GENERIC_WRITE, CREATE_ALWAYS);
    PROCESS_INFORMATION process{};
    CommandRun run;
    if (CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &process)) {
        DWORD status = 0;
        if (WaitForSingleObject(process.hProcess, 60000) == WAIT_OBJECT_0 && GetExitCodeProcess(process.hProcess, &status))
            run.status = status;
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
    }
    for (HANDLE handle : {startup.hStdInput, startup.hStdOutput, startup.hStdError})
        CloseHandle(handle);
    run.out = ReadFile(folder.Path() + "/out");
    run.err = ReadFile(folder.Path() + "/err");
    return run;
}

