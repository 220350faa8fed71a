#pragma once
// Removal lists as large as the uninstall reads (linesFileLimit, 8 MB), each built to cost it
// the most in one way; the benchmark times the uninstall over each. Every line is in the drive
// form "C:\...", which the uninstall takes natively too, and ends with a bare LF, which it
// reads as CR LF: one byte less a line, so more lines fit.

#include <cstdint>
#include <string>

#include "game_profile.h"

namespace bench {

struct WorstList {
    const char* name;  // its row in the table
    const char* cost;  // what it makes the uninstall do, printed under the table
};

constexpr int worstListCount = 4;
const WorstList& WorstListAt(int index);

// Writes list `index` for `game` to `path`, exactly `bytes` long (a smaller size for a trial).
void WriteWorstList(int index, const GameProfile& game, const std::string& path,
                    std::uint64_t bytes);

}  // namespace bench
