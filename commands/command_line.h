#pragma once
// What the program was asked to do: its window (no arguments, or just a log), or a command a LAN
// admin's script gives it.
//   Ludax.exe [/steam DIR] [/log FILE]
//   Ludax.exe /?
//   Ludax.exe /version
//   Ludax.exe /list [/steam DIR] [/log FILE]
//   Ludax.exe /install cs16|css [/place N] [/yes] [/steam DIR] [/log FILE]
//   Ludax.exe /uninstall cs16|css [/place N] [/steam DIR] [/log FILE]
//   Ludax.exe /verify cs16|css [/place N] [/steam DIR] [/log FILE]
// Names in any letter case; '-' works as well as '/'.

#include <string>
#include <vector>

#include "game_profile.h"

struct Command {
    enum class Kind { window, usage, version, list, install, uninstall, verify };
    Kind kind = Kind::window;
    const GameProfile* game = nullptr;  // install, uninstall and verify
    int place = 0;                      // the place /list numbers so, from 1; 0: none named
    bool yes = false;                   // install again where it is installed already
    std::string logPath;                // empty: no log
    std::string steamFolder;            // the Steam folder named with /steam; empty: the registry's
};

// Reads the arguments that follow the program's name (UTF-8). False, with `error` saying what is
// wrong, for a command line the program does not take.
bool ParseCommandLine(const std::vector<std::string>& args, Command& command, std::string& error);

// The value a command line gives the switch `name` ("log" for /log FILE), even in one the program
// does not take, whose refusal is logged too; empty when none.
std::string SwitchValue(const std::vector<std::string>& args, const std::string& name);

// The arguments as one command line, each holding a space or a quote in quotes.
std::string CommandLineText(const std::vector<std::string>& args);
