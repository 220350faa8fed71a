#include "ludax_command.h"

#include <windows.h>

#include <thread>

#include "launched_process.h"
#include "text.h"

namespace {

// Reads a pipe to its end (on a thread of its own, so that neither pipe can fill up and stall
// the program while the other is read).
void ReadAll(HANDLE pipe, std::string& into)
{
    char block[4096];
    DWORD got = 0;
    while (ReadFile(pipe, block, sizeof block, &got, nullptr) && got > 0)
        into.append(block, got);
}

}  // namespace

CommandRun RunLudaxCommand(const std::string& arguments)
{
    CommandRun run;
    SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    HANDLE outRead, outWrite, errRead, errWrite;
    if (!CreatePipe(&outRead, &outWrite, &inheritable, 0) || !CreatePipe(&errRead, &errWrite, &inheritable, 0))
        return run;
    SetHandleInformation(outRead, HANDLE_FLAG_INHERIT, 0);
    SetHandleInformation(errRead, HANDLE_FLAG_INHERIT, 0);
    HANDLE nothing = CreateFileW(L"NUL", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable, OPEN_EXISTING, 0,
                                 nullptr);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = nothing;
    startup.hStdOutput = outWrite;
    startup.hStdError = errWrite;
    const std::wstring exe = LudaxExePath();
    std::wstring commandLine = L"\"" + exe + L"\" " + Widen(arguments);
    PROCESS_INFORMATION process{};
    const bool started = CreateProcessW(exe.c_str(), commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                        &startup, &process);
    CloseHandle(outWrite);
    CloseHandle(errWrite);
    CloseHandle(nothing);
    if (started) {
        std::thread errors(ReadAll, errRead, std::ref(run.err));
        ReadAll(outRead, run.out);
        errors.join();
        DWORD status = 0;
        if (WaitForSingleObject(process.hProcess, 30000) == WAIT_OBJECT_0 && GetExitCodeProcess(process.hProcess, &status))
            run.status = status;
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
    }
    CloseHandle(outRead);
    CloseHandle(errRead);
    return run;
}
