#pragma once
// A game left running: a copy of the test program under a game's program name ("hl.exe"), which
// then only waits (see main.cpp), until the test closes it.

#include <optional>
#include <string>

#include "launched_process.h"
#include "test_files.h"

class RunningGame {
public:
    explicit RunningGame(const std::string& name);
    bool Running() const { return game && game->Running(); }
    void Close() { game.reset(); }

private:
    TempFolder folder;
    std::optional<LaunchedProcess> game;
};
