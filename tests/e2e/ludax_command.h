#pragma once
// Ludax.exe started as a LAN admin's script starts it: with arguments, its standard output and
// error redirected, waited for, its exit status read.

#include <string>

struct CommandRun {
    unsigned long status = 0xFFFFFFFF;  // the exit status; 0xFFFFFFFF when it did not end in time
    std::string out;                    // standard output, as the program wrote it
    std::string err;                    // standard error
};

// `arguments` as a command line gives them (quoted where a value holds spaces), UTF-8.
CommandRun RunLudaxCommand(const std::string& arguments);
