#pragma once
// What the program was asked to do: its window (no arguments, or just a log), or a command a LAN
// admin's script gives it.
//   Ludax.exe [/log FILE]
//   Ludax.exe /?
//   Ludax.exe /list
//   Ludax.exe /install cs16|css [/place N] [/yes] [/log FILE]
//   Ludax.exe /uninstall cs16|css [/place N] [/log FILE]
// Names in any letter case; '-' works as well as '/'.

#include <string>
#include <vector>

#include "game_profile.h"

struct Command {
    enum class Kind { window, usage, list, install, uninstall };
    Kind kind = Kind::window;
    const GameProfile* game = nullptr;  // install and uninstall
    int place = 0;                      // the place /list numbers so, from 1; 0: none named
    bool yes = false;                   // install again where it is installed already
    std::string logPath;                // empty: no log
};

// Reads the arguments that follow the program's name (UTF-8). False, with `error` saying what is
// wrong, for a command line the program does not take.
bool ParseCommandLine(const std::vector<std::string>& args, Command& command, std::string& error);
