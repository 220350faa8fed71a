#include "running_game.h"

#include <windows.h>

#include "text.h"

RunningGame::RunningGame(const std::string& name)
{
    const std::wstring path = Widen(folder.Path() + "/" + name);
    wchar_t self[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, self, MAX_PATH);
    if (CopyFileW(self, path.c_str(), FALSE))
        game.emplace(path);
}
