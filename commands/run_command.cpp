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

const char* State(const SteamAccount& place, const PlaceGame& game)
{
    return place.*game.installedFlag ? "installed" : place.*game.presentFlag ? "present" : "absent";
}

std::string List(const std::vector<SteamAccount>& places)
{
    std::string lines;
    for (std::size_t i = 0; i < places.size(); ++i)
        lines += std::to_string(i + 1) + "\t" + texts::ChooserLabel(places[i]) + "\tcs16=" +
                 State(places[i], cs16Profile) + "\tcss=" + State(places[i], cssProfile) + "\n";
    return lines;
}

CommandResult Done(const std::string& out, const std::string& summary) { return {exitStatus::done, out, std::string(), summary}; }

// The place a command acts on: the one it names, or the one that fits (the game's folder for an
// install, its configuration for an uninstall or a verify). Nothing, with `refusal` set, when none
// does.
SteamAccount* PlaceFor(const Command& command, std::vector<SteamAccount>& places, int& number, CommandResult& refusal)
{
    const PlaceGame& game = *command.game;
    const texts::Game& named = texts::Of(game);
    const bool install = command.kind == Command::Kind::install;
    if (command.place != 0) {
        number = command.place;
        if (static_cast<std::size_t>(number) > places.size()) {
            refusal = ErrorResult(exitStatus::noSuchPlace, texts::command::NoSuchPlace(number, places.size()));
            return nullptr;
        }
        SteamAccount& place = places[number - 1];
        const std::string where = texts::command::Place(number, place);
        if (install && !(place.*game.presentFlag))
            refusal = ErrorResult(exitStatus::noSuchPlace, texts::command::GameNotIn(named, where));
        else if (!install && !(place.*game.installedFlag))
            refusal = ErrorResult(exitStatus::installedOrNot, texts::command::NotInstalledIn(named, where));
        else
            return &place;
        return nullptr;
    }
    std::string fitting;
    bool anywhere = false;
    for (std::size_t i = 0; i < places.size(); ++i) {
        anywhere = anywhere || places[i].*game.presentFlag;
        if (places[i].*(install ? game.presentFlag : game.installedFlag)) {
            fitting += "  " + std::to_string(i + 1) + "\t" + texts::ChooserLabel(places[i]) + "\n";
            number = number == 0 ? static_cast<int>(i + 1) : -1;
        }
    }
    if (number > 0)
        return &places[number - 1];
    if (number < 0)
        refusal = ErrorResult(exitStatus::noSuchPlace, texts::command::NameOne(named, !install, fitting));
    else if (install || !anywhere)
        refusal = ErrorResult(exitStatus::noSuchPlace, texts::command::GameNotThere(named));
    else
        refusal = ErrorResult(exitStatus::installedOrNot, texts::command::NotInstalled(named));
    return nullptr;
}

// The files of the set not as shipped, one line each.
std::string Differences(const std::vector<NotAsShipped>& differing)
{
    std::string lines;
    for (const NotAsShipped& file : differing)
        lines += texts::command::FileNotAsShipped(file);
    return lines;
}

std::string NotAsShippedCount(const std::vector<NotAsShipped>& differing)
{
    return std::to_string(differing.size()) + " of the files not as shipped";
}

// What a failure says in the log: where, and why.
std::string AtWhy(const sys::Failure& failure)
{
    return WindowsPath(failure.path) + ": " + texts::Why(failure.reason);
}

CommandResult Install(const GameProfile& game, SteamAccount& place, const std::vector<SteamAccount>& places,
                      const std::string& where, bool yes, const ActionLog& log)
{
    if (place.*game.installedFlag) {
        // Installed already: as shipped, nothing is written (a logon script's every run); else
        // only a reinstall the script asks for changes anything.
        const std::vector<NotAsShipped> differing = FilesNotAsShipped(game, place);
        if (differing.empty())
            return Done(texts::command::alreadyInstalled, "already installed, every file as shipped");
        if (!yes)
            return ErrorResult(exitStatus::installedOrNot,
                               texts::command::InstalledAlready(texts::Of(game), where) + Differences(differing),
                               "installed already, " + NotAsShippedCount(differing));
    }
    // Only what changes files waits for the game to close.
    if (GameIsRunning(game))
        return ErrorResult(exitStatus::gameRunning, texts::command::Running(texts::Of(game)));
    const InstallOutcome outcome = InstallConfig(game, place, log, places);
    if (outcome.result != InstallOutcome::Result::installed)
        return ErrorResult(exitStatus::installStopped, texts::InstallStopped(outcome) + "\n",
                           "the install stopped at " + AtWhy({outcome.path, outcome.reason}));
    return Done(std::string(texts::Of(game).installed) + "\n", "installed");
}

CommandResult Uninstall(const GameProfile& game, SteamAccount& place, const std::vector<SteamAccount>& places,
                        const ActionLog& log)
{
    const UninstallOutcome outcome = UninstallConfig(game, place, log, places);
    if (outcome.gameAway)
        return ErrorResult(exitStatus::backupKept, texts::GameAway(outcome.firstFailure.path) + "\n",
                           "nothing changed, the game's folder is not there: " + WindowsPath(outcome.firstFailure.path));
    if (outcome.elsewhere)
        return ErrorResult(exitStatus::backupKept, texts::BelongsElsewhere(outcome.firstFailure.path) + "\n",
                           "nothing changed, the backup files belong to the game at " +
                               WindowsPath(outcome.firstFailure.path));
    const std::string said = texts::Uninstalled(texts::Of(game), outcome) + "\n";
    if (!outcome.backupKept)
        return Done(said, "uninstalled");
    return ErrorResult(exitStatus::backupKept, said, "the uninstall kept the backup files, first at " + AtWhy(outcome.firstFailure));
}

CommandResult Verify(const GameProfile& game, const SteamAccount& place)
{
    const std::vector<NotAsShipped> differing = FilesNotAsShipped(game, place);
    if (differing.empty())
        return Done(std::string(), "every file as shipped");
    return {exitStatus::notAsShipped, Differences(differing), std::string(), NotAsShippedCount(differing)};
}

// The command itself, with the places found and the log open.
CommandResult Run(const Command& command, std::vector<SteamAccount>& places, const ActionLog& log)
{
    if (command.kind == Command::Kind::list)
        return Done(List(places), std::to_string(places.size()) + " places listed");
    CommandResult refusal;
    int number = 0;
    SteamAccount* place = PlaceFor(command, places, number, refusal);
    if (!place)
        return refusal;
    const GameProfile& game = *command.game;
    if (command.kind == Command::Kind::verify)
        return Verify(game, *place);
    if (command.kind == Command::Kind::uninstall && GameIsRunning(game))
        return ErrorResult(exitStatus::gameRunning, texts::command::Running(texts::Of(game)));
    if (command.kind == Command::Kind::install)
        return Install(game, *place, places, texts::command::Place(number, *place), command.yes, log);
    return Uninstall(game, *place, places, log);
}

}  // namespace

std::vector<SteamAccount> PlacesAt(const SteamPath& steam)
{
    return steam.read == sys::RegistryRead::ok ? FindGames(steam.steamappsPath).places : std::vector<SteamAccount>();
}

CommandResult Logged(const std::string& logPath, const std::vector<SteamAccount>& places, const std::string& commandLine,
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

CommandResult RunCommand(const Command& command, const std::string& commandLine)
{
    if (command.kind == Command::Kind::usage)
        return {exitStatus::done, texts::command::usage, std::string(), std::string()};
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
            return ErrorResult(exitStatus::steamNotFound, texts::command::steamNotFound);
        return Run(command, places, log);
    });
}
