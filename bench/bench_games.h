#pragma once
// The two games the benchmark runs, with the names its command line and table use.

#include <string>

#include "game_profile.h"

namespace bench {

struct BenchGame {
    const char* key;    // command-line name and the payload source folder's name
    const char* title;  // table heading
    const GameProfile* profile;
};

constexpr int gameCount = 2;
const BenchGame& GameAt(int index);

// The game of that key, or nullptr.
const BenchGame* FindGame(const std::string& key);

}  // namespace bench
