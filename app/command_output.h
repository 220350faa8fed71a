#pragma once
// Where a command's text goes: the standard handle the program inherited when a script
// redirected it (UTF-8), else the console of the program that started it (a window program has
// none of its own; shown in UTF-16, so every letter reads right).

#include <windows.h>

#include <string>

#include "scoped_handle.h"

class CommandOutput {
public:
    explicit CommandOutput(DWORD which);  // STD_OUTPUT_HANDLE or STD_ERROR_HANDLE
    // False when the text would reach nobody: nothing redirected and no console to attach to (a
    // start from Explorer or a shortcut).
    bool Reaches() const { return handle != nullptr && handle != INVALID_HANDLE_VALUE; }
    // Writes `text`, each '\n' as CR LF.
    void Write(const std::string& text);

private:
    HANDLE handle = nullptr;
    ScopedFileHandle console;  // the parent's console, opened here, when nothing was redirected
};
