#include "run_command.h"

#include <optional>

#include "find_games.h"
#include "install.h"
#include "running_game.h"
#include "steam_path.h"
#include "texts.h"
#include "uninstall.h"

namespace {

struct GameFacts {
    const texts::Game& texts;
    bool SteamAccount::*present;    // the game's folder is there
    bool SteamAccount::*installed;  // its backup archive is there
};

GameFacts FactsOf(const GameProfile& game)
{
    return {texts::Of(game), game.presentFlag, game.installedFlag};
}

const char* State(const SteamAccount& place, const GameFacts& facts)
{
    return place.*facts.installed ? "installed" : place.*facts.present ? "present" : "absent";
}

std::string List(const std::vector<SteamAccount>& places)
{
    std::string lines;
    for (std::size_t i = 0; i < places.size(); ++i)
        lines += std::to_string(i + 1) + "\t" + texts::ChooserLabel(places[i]) + "\tcs16=" +
                 State(places[i], FactsOf(cs16Profile)) + "\tcss=" + State(places[i], FactsOf(cssProfile)) + "\n";
    return lines;
}

CommandResult Stop(int status, const std::string& why) { return {status, std::string(), why}; }

// The place a command acts on: the one it names, or the one that fits (the game's folder for an
// install, its configuration for an uninstall). Nothing, with `refusal` set, when none does.
SteamAccount* PlaceFor(const Command& command, std::vector<SteamAccount>& places, int& number, CommandResult& refusal)
{
    const GameFacts facts = FactsOf(*command.game);
    const bool install = command.kind == Command::Kind::install;
    if (command.place != 0) {
        number = command.place;
        if (static_cast<std::size_t>(number) > places.size()) {
            refusal = Stop(exitStatus::noSuchPlace, texts::command::NoSuchPlace(number, places.size()));
            return nullptr;
        }
        SteamAccount& place = places[number - 1];
        const std::string named = texts::command::Place(number, place);
        if (install && !(place.*facts.present))
            refusal = Stop(exitStatus::noSuchPlace, texts::command::GameNotIn(facts.texts, named));
        else if (!install && !(place.*facts.installed))
            refusal = Stop(exitStatus::installedOrNot, texts::command::NotInstalledIn(facts.texts, named));
        else
            return &place;
        return nullptr;
    }
    std::string fitting;
    bool anywhere = false;
    for (std::size_t i = 0; i < places.size(); ++i) {
        anywhere = anywhere || places[i].*facts.present;
        if (places[i].*(install ? facts.present : facts.installed)) {
            fitting += "  " + std::to_string(i + 1) + "\t" + texts::ChooserLabel(places[i]) + "\n";
            number = number == 0 ? static_cast<int>(i + 1) : -1;
        }
    }
    if (number > 0)
        return &places[number - 1];
    if (number < 0)
        refusal = Stop(exitStatus::noSuchPlace, texts::command::NameOne(facts.texts, !install, fitting));
    else if (install || !anywhere)
        refusal = Stop(exitStatus::noSuchPlace, texts::command::GameNotThere(facts.texts));
    else
        refusal = Stop(exitStatus::installedOrNot, texts::command::NotInstalled(facts.texts));
    return nullptr;
}

}  // namespace

bool AmongGameFiles(const std::string& path, const std::vector<SteamAccount>& places)
{
    const std::string key = PlaceKey(sys::FullPath(path));
    for (const SteamAccount& place : places)
        for (const PlaceGame* game : {&cs16AtPlace, &cssAtPlace}) {
            const BackupFiles backup = BackupFilesOf(*game, place);
            const std::string folder = PlaceKey(place.*game->gameFolder) + "/";
            for (const std::string& ours : {backup.archive, backup.removalList, backup.removalList + ".new"})
                if (key == PlaceKey(ours))
                    return true;
            if (key.compare(0, folder.size(), folder) == 0)
                return true;
        }
    return false;
}

CommandResult RunCommand(const Command& command)
{
    if (command.kind == Command::Kind::usage)
        return {exitStatus::done, texts::command::usage, std::string()};
    const SteamPath steam = ReadSteamappsPath();
    if (steam.read != sys::RegistryRead::ok)
        return Stop(exitStatus::steamNotFound, texts::command::steamNotFound);
    std::vector<SteamAccount> places = FindGames(steam.steamappsPath).places;
    if (command.kind == Command::Kind::list)
        return {exitStatus::done, List(places), std::string()};

    // The log is never a player's file nor one of ours: refused before anything is written.
    std::optional<ActionLogFile> logFile;
    if (!command.logPath.empty()) {
        if (AmongGameFiles(command.logPath, places))
            return Stop(exitStatus::badCommandLine, texts::command::LogRefused(command.logPath));
        logFile.emplace(command.logPath);
        if (!logFile->IsOpen())
            return Stop(exitStatus::badCommandLine, texts::command::LogNotWritable(command.logPath));
    }
    const ActionLog log = logFile ? logFile->AsLog() : ActionLog();

    CommandResult refusal;
    int number = 0;
    SteamAccount* place = PlaceFor(command, places, number, refusal);
    if (!place)
        return refusal;
    const GameProfile& game = *command.game;
    const GameFacts facts = FactsOf(game);
    if (GameIsRunning(game))
        return Stop(exitStatus::gameRunning, texts::command::Running(facts.texts));
    if (command.kind == Command::Kind::install) {
        if (place->*facts.installed && !command.yes)
            return Stop(exitStatus::installedOrNot,
                        texts::command::InstalledAlready(facts.texts, texts::command::Place(number, *place)));
        const InstallOutcome outcome = InstallConfig(game, *place, log);
        if (outcome.result != InstallOutcome::Result::installed)
            return Stop(exitStatus::installStopped, texts::InstallStopped(outcome) + "\n");
        return {exitStatus::done, std::string(facts.texts.installed) + "\n", std::string()};
    }
    const UninstallOutcome outcome = UninstallConfig(game, *place, log);
    if (outcome.gameAway.Failed())
        return Stop(exitStatus::backupKept, texts::GameAway(outcome.gameAway.path) + "\n");
    const std::string said = texts::Uninstalled(facts.texts, outcome.backupKept) + "\n";
    return outcome.backupKept ? Stop(exitStatus::backupKept, said) : CommandResult{exitStatus::done, said, std::string()};
}
