#include "bench_games.h"

namespace bench {

namespace {

const BenchGame games[gameCount] = {
    {"cs16", "Counter-Strike 1.6", &cs16Profile},
    {"css", "Counter-Strike: Source", &cssProfile},
};

}  // namespace

const BenchGame& GameAt(int index) { return games[index]; }

const BenchGame* FindGame(const std::string& key)
{
    for (const BenchGame& game : games)
        if (key == game.key)
            return &game;
    return nullptr;
}

}  // namespace bench
