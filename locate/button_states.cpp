#include "button_states.h"

ButtonStates SelectAccount(const std::vector<SteamAccount>& accounts, int index)
{
    ButtonStates states;
    if (index < 0 || static_cast<std::size_t>(index) >= accounts.size())
        return states;
    for (GameId id : bothGames) {
        const GameAtPlace& game = accounts[static_cast<std::size_t>(index)].Game(id);
        states[static_cast<std::size_t>(id)] = {game.present, game.installed};
    }
    return states;
}
