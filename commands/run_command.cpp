#include "run_command.h"

#include <optional>

#include "find_games.h"
#include "install.h"
#include "run_log.h"
#include "running_game.h"
#include "steam_path.h"
#include "texts.h"
#include "uninstall.h"
#include "verify.h"

namespace {

const char* State(const GameAtPlace& game) { return game.installed ? "installed" : game.present ? "present" : "absent"; }

// A place as a command names it: its label, paths in Windows form.
std::string Label(const SteamAccount& place) { return WindowsPath(texts::ChooserLabel(place)); }

std::string Where(int number, const SteamAccount& place)
{
    SteamAccount shown = place;
    shown.name = WindowsPath(place.name);
    return texts::command::Place(number, shown);
}

std::string List(const std::vector<SteamAccount>& places)
{
    std::string lines;
    for (std::size_t i = 0; i < places.size(); ++i)
        lines += std::to_string(i + 1) + "\t" + Label(places[i]) + "\tcs16=" + State(places[i].Game(GameId::cs16)) +
                 "\tcss=" + State(places[i].Game(GameId::css)) + "\n";
    return lines;
}

CommandResult Done(const std::string& out, const std::string& summary) { return {exitStatus::done, out, std::string(), summary}; }

// The place a command acts on: the one it names, or the one that fits (the game's folder for an
// install, its configuration for an uninstall or a verify). Nothing, with `refusal` set, when none
// does; an uninstall where the configuration is installed nowhere has nothing to do.
SteamAccount* PlaceFor(const Command& command, std::vector<SteamAccount>& places, int& number, CommandResult& refusal)
{
    const GameId game = command.game->id;
    const texts::Game& named = texts::Of(game);
    const bool install = command.kind == Command::Kind::install;
    const bool uninstall = command.kind == Command::Kind::uninstall;
    const CommandResult nothingToUninstall = Done(texts::command::notInstalled, texts::summary::notInstalled);
    if (command.place != 0) {
        number = command.place;
        if (static_cast<std::size_t>(number) > places.size()) {
            refusal = ErrorResult(exitStatus::noSuchPlace, texts::command::NoSuchPlace(number, places.size()));
            return nullptr;
        }
        SteamAccount& place = places[number - 1];
        const std::string where = Where(number, place);
        if (install && !place.Game(game).present)
            refusal = ErrorResult(exitStatus::noSuchPlace, texts::command::GameNotIn(named, where));
        else if (!install && !place.Game(game).installed)
            refusal = uninstall ? nothingToUninstall
                                : ErrorResult(exitStatus::installedOrNot, texts::command::NotInstalledIn(named, where));
        else
            return &place;
        return nullptr;
    }
    std::string fitting;
    bool anywhere = false;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const GameAtPlace& there = places[i].Game(game);
        anywhere = anywhere || there.present;
        if (install ? there.present : there.installed) {
            fitting += "  " + std::to_string(i + 1) + "\t" + Label(places[i]) + "\n";
            number = number == 0 ? static_cast<int>(i + 1) : -1;
        }
    }
    if (number > 0)
        return &places[number - 1];
    if (number < 0)
        refusal = ErrorResult(exitStatus::noSuchPlace, texts::command::NameOne(named, !install, fitting));
    else if (uninstall)
        refusal = nothingToUninstall;
    else if (install || !anywhere)
        refusal = ErrorResult(exitStatus::noSuchPlace, texts::command::GameNotThere(named));
    else
        refusal = ErrorResult(exitStatus::installedOrNot, texts::command::NotInstalled(named));
    return nullptr;
}

// The files of the set not as shipped, one line each, paths in Windows form.
std::string Differences(const std::vector<NotAsShipped>& differing)
{
    std::string lines;
    for (NotAsShipped file : differing) {
        file.path = WindowsPath(file.path);
        lines += texts::command::FileNotAsShipped(file);
    }
    return lines;
}

CommandResult Install(const GameProfile& game, SteamAccount& place, const std::vector<SteamAccount>& places,
                      const std::string& where, bool yes, const ActionLog& log)
{
    // Installed already with every file as shipped: nothing is written (a logon script's every
    // run), and the game may stay open.
    if (place.Game(game.id).installed && FilesNotAsShipped(game, place).empty())
        return Done(texts::command::alreadyInstalled, texts::summary::alreadyInstalled);
    // Only what changes files waits for the game to close.
    if (GameIsRunning(game))
        return ErrorResult(exitStatus::gameRunning, texts::command::Running(texts::Of(game.id)));
    InstallOutcome outcome = InstallConfig(game, place, log, places, yes ? Rewrite::whatDiffers : Rewrite::onlyOurs);
    if (outcome.result == InstallOutcome::Result::changedSince)
        return {exitStatus::installedOrNot, Differences(outcome.changed), texts::command::ChangedSince(texts::Of(game.id), where),
                texts::summary::ChangedSince(outcome.changed.size())};
    if (outcome.result != InstallOutcome::Result::installed) {
        const std::string summary = texts::summary::InstallStopped(outcome);
        outcome.path = WindowsPath(outcome.path);
        return ErrorResult(exitStatus::installStopped, texts::InstallStopped(outcome) + "\n", summary);
    }
    return Done(std::string(texts::Of(game.id).installed) + "\n", texts::summary::installed);
}

CommandResult Uninstall(const GameProfile& game, SteamAccount& place, const std::vector<SteamAccount>& places,
                        const ActionLog& log)
{
    UninstallOutcome outcome = UninstallConfig(game, place, log, places);
    const std::string folder = WindowsPath(outcome.firstFailure.path);
    if (outcome.gameAway)
        return ErrorResult(exitStatus::backupKept, texts::GameAway(folder) + "\n", texts::summary::GameAway(folder));
    if (outcome.elsewhere)
        return ErrorResult(exitStatus::backupKept, texts::BelongsElsewhere(folder) + "\n",
                           texts::summary::BelongsElsewhere(folder));
    if (!outcome.backupKept)
        return Done(texts::Uninstalled(texts::Of(game.id), outcome) + "\n", texts::summary::uninstalled);
    const std::string summary = texts::summary::BackupKept(outcome.firstFailure);
    outcome.firstFailure.path = folder;
    return ErrorResult(exitStatus::backupKept, texts::Uninstalled(texts::Of(game.id), outcome) + "\n", summary);
}

CommandResult Verify(const GameProfile& game, const SteamAccount& place)
{
    const std::vector<NotAsShipped> differing = FilesNotAsShipped(game, place);
    if (differing.empty())
        return Done(std::string(), texts::summary::asShipped);
    return {exitStatus::notAsShipped, Differences(differing), std::string(), texts::summary::NotAsShipped(differing.size())};
}

// The command itself, with the places found and the log open.
CommandResult Run(const Command& command, std::vector<SteamAccount>& places, const ActionLog& log)
{
    if (command.kind == Command::Kind::list)
        return Done(List(places), texts::summary::PlacesListed(places.size()));
    CommandResult refusal;
    int number = 0;
    SteamAccount* place = PlaceFor(command, places, number, refusal);
    if (!place)
        return refusal;
    const GameProfile& game = *command.game;
    if (command.kind == Command::Kind::verify)
        return Verify(game, *place);
    if (command.kind == Command::Kind::uninstall && GameIsRunning(game))
        return ErrorResult(exitStatus::gameRunning, texts::command::Running(texts::Of(game.id)));
    if (command.kind == Command::Kind::install)
        return Install(game, *place, places, Where(number, *place), command.yes, log);
    return Uninstall(game, *place, places, log);
}

// Steam not found: no entry, or the folder one names is not there.
CommandResult SteamNotFound(const SteamPath& steam)
{
    const std::string folder = WindowsPath(steam.folderNotThere);
    return folder.empty() ? ErrorResult(exitStatus::steamNotFound, texts::command::steamNotFound, texts::summary::steamNotFound)
                          : ErrorResult(exitStatus::steamNotFound, texts::command::SteamFolderNotThere(folder),
                                        texts::summary::SteamFolderNotThere(folder));
}

}  // namespace

std::vector<SteamAccount> PlacesAt(const SteamPath& steam)
{
    return steam.read == sys::RegistryRead::ok ? FindGames(steam.steamappsPath).places : std::vector<SteamAccount>();
}

CommandResult Logged(const std::string& logPath, const std::optional<std::vector<SteamAccount>>& places, const std::string& commandLine,
                     const std::function<CommandResult(const ActionLog& log)>& run)
{
    if (logPath.empty())
        return run(ActionLog());
    // The log is never a player's file, one of ours nor anyone else's: refused before anything
    // is done.
    LogRefusal refusal = LogRefusal::none;
    std::optional<RunLog> log = RunLog::Open(logPath, places, commandLine, refusal);
    if (!log)
        return ErrorResult(exitStatus::badCommandLine, LogRefused(refusal, logPath));
    const CommandResult result = run(log->Actions());
    log->End(result.status, result.summary.empty() ? result.err + result.out : result.summary);
    return result;
}

std::string LogRefused(LogRefusal refusal, const std::string& path)
{
    return refusal == LogRefusal::amongGameFiles ? texts::command::LogAmongGameFiles(path)
           : refusal == LogRefusal::notALog      ? texts::command::NotALog(path)
                                                 : texts::command::LogNotWritable(path);
}

std::string BuildName()
{
    return texts::command::BuildName(ContainerId(*cs16Profile.payload), ContainerId(*cssProfile.payload));
}

CommandResult RunCommand(const Command& command, const std::string& commandLine)
{
    if (command.kind == Command::Kind::usage)
        return {exitStatus::done, texts::command::usage, std::string(), std::string()};
    if (command.kind == Command::Kind::version)
        return {exitStatus::done, BuildName() + "\n", std::string(), std::string()};
    const SteamPath steam = FindSteam(command.steamFolder);
    std::vector<SteamAccount> places = PlacesAt(steam);
    // The log is never among the games' files at the Steam the registry names either, when
    // /steam names another.
    std::vector<SteamAccount> logPlaces = places;
    if (!command.logPath.empty() && !command.steamFolder.empty()) {
        const std::vector<SteamAccount> registered = PlacesAt(FindSteam(std::string()));
        logPlaces.insert(logPlaces.end(), registered.begin(), registered.end());
    }
    return Logged(command.logPath, logPlaces, commandLine, [&](const ActionLog& log) {
        if (steam.read != sys::RegistryRead::ok)
            return SteamNotFound(steam);
        return Run(command, places, log);
    });
}
