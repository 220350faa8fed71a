#include "command_output.h"

#include "wide_text.h"

CommandOutput::CommandOutput(DWORD which) : handle(GetStdHandle(which))
{
    if (handle != nullptr && handle != INVALID_HANDLE_VALUE && GetFileType(handle) != FILE_TYPE_UNKNOWN)
        return;
    // Not redirected: the console of the program that started this one, if it has one.
    AttachConsole(ATTACH_PARENT_PROCESS);
    console = ScopedFileHandle(
        CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr));
    handle = console.Get();
}

void CommandOutput::Write(const std::string& text)
{
    if (text.empty() || !Reaches())
        return;
    std::string lines;
    for (char c : text)
        lines += c == '\n' ? std::string("\r\n") : std::string(1, c);
    DWORD mode = 0, written = 0;
    if (GetConsoleMode(handle, &mode)) {
        const std::wstring wide = Wide(lines);
        WriteConsoleW(handle, wide.c_str(), static_cast<DWORD>(wide.size()), &written, nullptr);
    } else {
        WriteFile(handle, lines.data(), static_cast<DWORD>(lines.size()), &written, nullptr);
    }
}
