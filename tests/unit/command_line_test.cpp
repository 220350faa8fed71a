// The command line a LAN admin's script gives: what it asks for, the place it picks, and the
// exit status it ends with.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#ifndef _WIN32
#include <sys/stat.h>
#include <sys/utsname.h>
#endif

#include "command_line.h"
#include "fault_injection.h"
#include "game_profile.h"
#include "run_command.h"
#include "run_log.h"
#include "steam_layouts.h"
#include "test_registry.h"

namespace {

using Args = std::vector<std::string>;

// The folder the tests run in, for a while.
class InFolder {
public:
    explicit InFolder(const std::string& folder) : was(std::filesystem::current_path())
    {
        std::filesystem::current_path(std::filesystem::u8path(folder));
    }
    ~InFolder() { std::filesystem::current_path(was); }

private:
    std::filesystem::path was;
};


TEST(CommandLine, ReadsTheCommandsInAnyCaseWithEitherSignAndRefusesTheRest)
{
    const struct {
        Args args;
        Command::Kind kind;
        const GameProfile* game;
        int place;
        bool yes;
        std::string log;
        std::string steam = "";
    } accepted[] = {
        {{}, Command::Kind::window, nullptr, 0, false, ""},
        {{"/log", "C:/a b.log"}, Command::Kind::window, nullptr, 0, false, "C:/a b.log"},
        {{"/?"}, Command::Kind::usage, nullptr, 0, false, ""},
        {{"-LIST"}, Command::Kind::list, nullptr, 0, false, ""},
        {{"/install", "CS16"}, Command::Kind::install, &cs16Profile, 0, false, ""},
        {{"-Install", "css", "/PLACE", "12", "-yes", "/log", "x.log"}, Command::Kind::install, &cssProfile, 12, true, "x.log"},
        {{"/place", "2", "/uninstall", "cs16"}, Command::Kind::uninstall, &cs16Profile, 2, false, ""},
        {{"/Verify", "css", "/steam", "D:\\My Steam", "/log", "v.log"}, Command::Kind::verify, &cssProfile, 0, false, "v.log", "D:\\My Steam"},
        {{"-steam", "E:/Steam"}, Command::Kind::window, nullptr, 0, false, "", "E:/Steam"},
        {{"/list", "/log", "l.log"}, Command::Kind::list, nullptr, 0, false, "l.log"},
    };
    for (const auto& c : accepted) {
        Command command;
        std::string error;
        ASSERT_TRUE(ParseCommandLine(c.args, command, error)) << error;
        EXPECT_EQ(command.kind, c.kind);
        EXPECT_EQ(command.game, c.game);
        EXPECT_EQ(command.place, c.place);
        EXPECT_EQ(command.yes, c.yes);
        EXPECT_EQ(command.logPath, c.log);
        EXPECT_EQ(command.steamFolder, c.steam);
    }
    const struct {
        Args args;
        std::string error;
    } refused[] = {
        {{"/S"}, "not a command or option of this program: /S"},
        {{"/install"}, "/install needs a value after it"},
        {{"/install", "cs17"}, "no game called cs17: cs16 or css"},
        {{"/install", "cs16", "/uninstall", "cs16"}, "one command at a time: /uninstall"},
        {{"/install", "css", "/place", "0"}, "/place takes one number, 1 or more: 0"},
        {{"/install", "css", "/place", "1", "/PLACE", "2"}, "/PLACE given twice"},
        {{"/list", "/place", "1"}, "/place goes with /install, /uninstall or /verify"},
        {{"/verify", "css", "/yes"}, "/yes goes with /install"},
        {{"/list", "/steam"}, "/steam needs a value after it"},
        {{"/?", "/log", "x"}, "/? takes nothing else"},
        {{"/version", "/steam", "x"}, "/version takes nothing else"},
        {{"/log"}, "/log needs a value after it"},
    };
    for (const auto& c : refused) {
        Command command;
        std::string error;
        EXPECT_FALSE(ParseCommandLine(c.args, command, error)) << c.error;
        EXPECT_EQ(error, c.error);
    }
}

CommandResult Ask(const Args& args)
{
    Command command;
    std::string error;
    EXPECT_TRUE(ParseCommandLine(args, command, error)) << error;
    return RunCommand(command);
}

TEST(CommandLine, PicksThePlaceAndEndsWithTheStatusOfWhatHappened)
{
    // The usage fits an 80-column console and names the new status.
    const CommandResult usage = Ask({"/?"});
    EXPECT_EQ(usage.status, 0);
    for (std::size_t at = 0, end; (end = usage.out.find('\n', at)) != std::string::npos; at = end + 1)
        EXPECT_LE(end - at, 79u) << usage.out.substr(at, end - at);
    EXPECT_NE(usage.out.find("\n  9 a file is not as shipped (/verify)\n"), std::string::npos);

    DeleteUserRegistryKey(RegisteredSteam::key);
    EXPECT_EQ(Ask({"/list"}).status, 2);
    RegisteredSteam steam;
    EXPECT_EQ(Ask({"/list"}).out, "");
    EXPECT_EQ(Ask({"/install", "cs16"}).status, 3);  // no place holds the game
    const SteamAccount place = AccountFolderEntry(steam.Apps(), "player");
    WriteFile(place.Game(GameId::cs16).contentFolder + "config.cfg", "player's config");
    EXPECT_EQ(Ask({"/list"}).out, "1\tplayer\tcs16=present\tcss=absent\n");
    // Nothing installed: nothing for an uninstall to do, wherever it looks.
    for (const Args& nothing : {Args{"/uninstall", "cs16"}, Args{"/uninstall", "cs16", "/place", "1"}, Args{"/uninstall", "css"}}) {
        const CommandResult result = Ask(nothing);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.out + result.err, "not installed\n");
    }
    EXPECT_EQ(Ask({"/uninstall", "cs16", "/place", "2"}).status, 3);
    EXPECT_EQ(Ask({"/install", "css"}).status, 3);
    EXPECT_EQ(Ask({"/install", "css", "/place", "1"}).status, 3);

    const CommandResult installed = Ask({"/install", "cs16"});
    EXPECT_EQ(installed.status, 0);
    EXPECT_EQ(installed.out, "Counter Strike LUDAX config installed successfully!\n");
    EXPECT_EQ(Ask({"/list"}).out, "1\tplayer\tcs16=installed\tcss=absent\n");

    // Installed, every file as shipped: a logon script's every later run is a success that writes
    // nothing, /yes or not.
    const std::string config = place.Game(GameId::cs16).contentFolder + "config.cfg", ludaxCfg = place.Game(GameId::cs16).contentFolder + "ludax.cfg";
    const Tree asShipped = Snapshot(steam.Apps());
    for (const Args& again : {Args{"/install", "cs16"}, Args{"/install", "cs16", "/yes"}}) {
        const CommandResult result = Ask(again);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.out, "already installed\n");
    }
    EXPECT_EQ(Snapshot(steam.Apps()), asShipped);
    const CommandResult verified = Ask({"/verify", "cs16"});
    EXPECT_EQ(verified.status, 0);
    EXPECT_EQ(verified.out + verified.err, "");

    // Files changed and one deleted: /verify names them all (9) on standard output, paths in
    // Windows form; /install names the changed ones there too and writes nothing (4) unless /yes.
    WriteFile(config, "changed by hand");
    RemovePath(ludaxCfg);
    std::string autobuy = ReadFile(place.Game(GameId::cs16).contentFolder + "autobuy.txt");  // its size kept, one byte not
    autobuy.back() ^= 1;
    WriteFile(place.Game(GameId::cs16).contentFolder + "autobuy.txt", autobuy);
    const std::string userconfig = place.Game(GameId::cs16).contentFolder + "userconfig.cfg";  // a line added at its end
    WriteFile(userconfig, ReadFile(userconfig) + "bind x quit\r\n");
    const std::string menu = place.Game(GameId::cs16).contentFolder + "commandmenu.txt";  // a folder in its place: there, not as shipped
    RemovePath(menu);
    MakeFolders(menu);
    const CommandResult differs = Ask({"/verify", "cs16", "/place", "1"});
    EXPECT_EQ(differs.status, 9);
    const auto has = [](const std::string& text, const std::string& line) { return text.find(line) != std::string::npos; };
    EXPECT_TRUE(has(differs.out, "changed\t" + Backslashed(config) + "\n")) << differs.out;
    EXPECT_TRUE(has(differs.out, "missing\t" + Backslashed(ludaxCfg) + "\n")) << differs.out;
    EXPECT_TRUE(has(differs.out, "changed\t" + Backslashed(place.Game(GameId::cs16).contentFolder + "autobuy.txt") + "\n")) << differs.out;
    EXPECT_TRUE(has(differs.out, "changed\t" + Backslashed(userconfig) + "\n")) << differs.out;
    EXPECT_TRUE(has(differs.out, "changed\t" + Backslashed(menu) + "\n")) << differs.out;
    EXPECT_EQ(std::count(differs.out.begin(), differs.out.end(), '\n'), 5) << differs.out;
    EXPECT_EQ(differs.err, "");
    RemovePath(menu);
    const CommandResult refused = Ask({"/install", "cs16"});
    EXPECT_EQ(refused.status, 4);
    EXPECT_EQ(refused.out, "changed\t" + Backslashed(place.Game(GameId::cs16).contentFolder + "autobuy.txt") + "\nchanged\t" +
                               Backslashed(config) + "\nchanged\t" + Backslashed(userconfig) + "\n");
    EXPECT_EQ(refused.err, "Files of the configuration of Counter-Strike 1.6 in place 1 (player) were changed since it "
                           "was installed (listed on standard output): add /yes to write them over.\n");
    EXPECT_EQ(ReadFile(config), "changed by hand");
    EXPECT_FALSE(Exists(ludaxCfg));
    TempFolder logs;  // /yes writes the five files not as shipped, and only those
    EXPECT_EQ(Ask({"/install", "cs16", "/yes", "/log", logs.Path() + "/yes.log"}).status, 0);
    const auto logged = LogFields(ReadFile(logs.Path() + "/yes.log"));
    EXPECT_EQ(std::count_if(logged.begin(), logged.end(), [](const auto& line) { return line[0] == "wrote"; }), 5);
    EXPECT_EQ(Ask({"/verify", "cs16"}).status, 0);
    EXPECT_EQ(Ask({"/verify", "css"}).status, 3);  // in no place

    // A second place with the game: one of them must be named.
    WriteFile(AccountFolderEntry(steam.Apps(), "second").Game(GameId::cs16).contentFolder + "config.cfg", "second's config");
    EXPECT_EQ(Ask({"/install", "cs16"}).status, 3);
    EXPECT_EQ(Ask({"/uninstall", "cs16"}).status, 0);  // installed in one place only
    EXPECT_EQ(ReadFile(place.Game(GameId::cs16).contentFolder + "config.cfg"), "player's config");
    EXPECT_EQ(Ask({"/uninstall", "cs16"}).out, "not installed\n");
    EXPECT_EQ(Ask({"/verify", "cs16", "/place", "1"}).status, 4);  // not installed
    EXPECT_EQ(Ask({"/verify", "cs16"}).status, 4);
    // Every file as shipped, but no backup files: not installed, so the install makes them, the
    // files it finds kept as the player's.
    const std::string player = Ask({"/list"}).out.rfind("1\tplayer", 0) == 0 ? "1" : "2";  // in listing order
    ASSERT_EQ(Ask({"/install", "cs16", "/place", player}).status, 0);
    for (const char* backup : cs16BackupFiles)
        RemovePath(place.folder + backup);
    EXPECT_EQ(Ask({"/install", "cs16", "/place", player}).out, "Counter Strike LUDAX config installed successfully!\n");
    EXPECT_TRUE(Exists(place.folder + "/cs16ludax.bak"));
}


TEST(CommandLine, TheRecordOfARealInstallHoldsEachShippedFilesSum)
{
    RegisteredSteam steam;
    const SteamAccount place = AccountFolderEntry(steam.Apps(), "player");
    MakeFolders(place.Game(GameId::cs16).contentFolder);
    ASSERT_EQ(Ask({"/install", "cs16"}).status, 0);
    const std::string oracle = ContainerSums(LUDAX_CONTAINER_SUMS);
    std::size_t files = 0;
    const std::string record = ReadFile(place.folder + "/cs16ludax_2.bak");
    for (std::size_t at = 0, end; (end = record.find("\r\n", at)) != std::string::npos; at = end + 2) {
        const std::string line = record.substr(at, end - at);
        if (line.rfind("file\t", 0) != 0)
            continue;
        const std::string name = line.substr(line.rfind('\t') + 1 + std::string("cstrike/").size());
        const std::string digest = line.substr(line.find('\t', 5) + 1, 64);
        EXPECT_NE(oracle.find("cs16/" + name + " " + digest + "\n"), std::string::npos) << line;
        ++files;
    }
    EXPECT_GT(files, 30u);
}

TEST(CommandLine, VersionAndSteamsFolder)
{
    // The build names its file sets; the usage says how to ask.
    EXPECT_EQ(BuildName(LUDAX_CONTAINER_SUMS).size(), std::string("Ludax config. 1.02 (cs16 0123456789ab, css 0123456789ab)").size());
    const CommandResult version = Ask({"/version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.out, BuildName(LUDAX_CONTAINER_SUMS) + "\n");
    EXPECT_NE(Ask({"/?"}).out.find("\n  Ludax.exe /version "), std::string::npos);

    // /steam naming no folder, relative or absolute; SteamPath naming none goes on to the machine's
    // entry, and status 2 names the folder when that is not there either.
    TempFolder elsewhere;
    const std::string gone = elsewhere.Path() + "/Steam";
    for (const Args& args : {Args{"/list", "/steam", gone}, Args{"/install", "cs16", "/steam", gone}}) {
        const CommandResult result = Ask(args);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.err, "Steam's folder is not there: " + Backslashed(gone) + "\n");
    }
    {
        InFolder beside(elsewhere.Path());
        EXPECT_EQ(Ask({"/list", "/steam", "Steam"}).err, "Steam's folder is not there: " + Backslashed(gone) + "\n");
    }
    const std::string machineKey = "SOFTWARE\\Valve\\Steam";
    TempFolder machineSteam;
    WriteFile(machineSteam.Path() + "/steamapps/player/counter-strike/cstrike/config.cfg", "player's config");
    SetUserRegistryString(RegisteredSteam::key, "SteamPath", gone);
    SetRegistryString(RegistryHive::machine32, machineKey, "InstallPath", machineSteam.Path());
    EXPECT_EQ(Ask({"/list"}).out, "1\tplayer\tcs16=present\tcss=absent\n");
    SetRegistryString(RegistryHive::machine32, machineKey, "InstallPath", gone + "2");
    SetRegistryString(RegistryHive::machine64, machineKey, "InstallPath", gone + "3");
    const CommandResult none = Ask({"/list"});
    EXPECT_EQ(none.status, 2);
    EXPECT_EQ(none.err, "Steam's folder is not there: " + Backslashed(gone) + "\n");
    DeleteRegistryKey(RegistryHive::machine32, machineKey);
    DeleteRegistryKey(RegistryHive::machine64, machineKey);
    DeleteUserRegistryKey(RegisteredSteam::key);
}

TEST(CommandLine, ALibraryIsNamedInWindowsFormAndBackupFilesCopiedFromAnotherChangeNothing)
{
    RegisteredSteam steam;
    TempFolder disk;
    const SteamAccount first = LibraryEntry(disk.Path() + "/A"), second = LibraryEntry(disk.Path() + "/B");
    WriteFile(steam.Apps() + "libraryfolders.vdf", LibraryList({disk.Path() + "/A", disk.Path() + "/B"}));
    for (const SteamAccount& library : {first, second})
        WriteFile(library.Game(GameId::cs16).contentFolder + "config.cfg", "the player's");
    EXPECT_EQ(Ask({"/list"}).out, "1\tSteam library: " + Backslashed(disk.Path()) + "\\A\tcs16=present\tcss=absent\n2\tSteam library: " +
                                      Backslashed(disk.Path()) + "\\B\tcs16=present\tcss=absent\n");
    ASSERT_EQ(Ask({"/install", "cs16", "/place", "1"}).status, 0);
    WriteFile(first.Game(GameId::cs16).contentFolder + "ludax.cfg", "changed");
    EXPECT_EQ(Ask({"/install", "cs16", "/place", "1"}).err,
              "Files of the configuration of Counter-Strike 1.6 in place 1 (Steam library: " + Backslashed(disk.Path()) +
                  "\\A) were changed since it was installed (listed on standard output): add /yes to write them over.\n");
    for (const char* backup : cs16BackupFiles)
        WriteFile(second.folder + backup, ReadFile(first.folder + backup));
    const Tree copied = Snapshot(disk.Path() + "/B");
    const CommandResult elsewhere = Ask({"/uninstall", "cs16", "/place", "2"});
    EXPECT_EQ(elsewhere.status, 7);
    EXPECT_EQ(elsewhere.err, "These backup files belong to the game at\n" + Backslashed(first.Game(GameId::cs16).gameFolder) +
                                 "\nNothing was changed.\n");
    EXPECT_EQ(Snapshot(disk.Path() + "/B"), copied);
}

TEST(CommandLine, AFileThatCannotBeReadIsNamedWithTheReasonNotCalledChanged)
{
    RegisteredSteam steam;
    const SteamAccount place = AccountFolderEntry(steam.Apps(), "player");
    WriteFile(place.Game(GameId::cs16).contentFolder + "config.cfg", "player's config");
    ASSERT_EQ(Ask({"/install", "cs16"}).status, 0);
    const std::string config = place.Game(GameId::cs16).contentFolder + "config.cfg";
    const std::string unreadable = "unreadable\t" + Backslashed(config) + "\t";
#ifdef _WIN32
    // Another program holds it open, letting nobody in.
    LockedFile held(config);
    ASSERT_TRUE(held.Locked());
    const std::string reason = "Sharing violation.\n";
    const CommandResult verified = Ask({"/verify", "cs16"});
    const CommandResult installed = Ask({"/install", "cs16"});
#else
    // A pipe stands in its place (as root, nothing is unreadable by its permissions).
    RemovePath(config);
    ASSERT_EQ(mkfifo(config.c_str(), 0644), 0);
    const std::string reason = "It is a device, a pipe or a folder, not a file on a disk.\n";
    const CommandResult verified = Ask({"/verify", "cs16"});
    const CommandResult installed = Ask({"/install", "cs16"});
#endif
    EXPECT_EQ(verified.status, 9);
    EXPECT_EQ(verified.out, unreadable + reason);
    EXPECT_EQ(installed.status, 4);
    EXPECT_EQ(installed.out, unreadable + reason);
}

TEST(CommandLine, AnInstallThatStopsIs6AndAnUninstallThatKeepsItsBackupsIs7)
{
    // The system's own words for a folder where a file must be.
#ifdef _WIN32
    const std::string folderInTheWay = "Access denied.";
#else
    const std::string folderInTheWay = "Is a directory";
#endif
    RegisteredSteam steam;
    const SteamAccount place = AccountFolderEntry(steam.Apps(), "player");
    WriteFile(place.Game(GameId::cs16).contentFolder + "config.cfg", "player's config");
    MakeFolders(place.Game(GameId::cs16).contentFolder + "autobuy.txt/in the way");  // a folder where a file must go
    TempFolder logs;
    const std::string log = logs.Path() + "/ludax.log";
    const CommandResult stopped = Ask({"/install", "cs16", "/log", log});
    EXPECT_EQ(stopped.status, 6);
    EXPECT_EQ(LogFields(ReadFile(log)).back(),
              (std::vector<std::string>{"ended", "6", "the install stopped at " + Backslashed(place.Game(GameId::cs16).contentFolder) +
                                                          "autobuy.txt: " + folderInTheWay}));
    EXPECT_EQ(stopped.err, "Could not back up the file\n" + Backslashed(place.Game(GameId::cs16).contentFolder) + "autobuy.txt\n" +
                               folderInTheWay + "\nNothing more was changed.\n");
    RemovePath(place.Game(GameId::cs16).contentFolder + "autobuy.txt/in the way");
    RemovePath(place.Game(GameId::cs16).contentFolder + "autobuy.txt");
    EXPECT_EQ(Ask({"/install", "cs16", "/yes"}).status, 0);
    RemovePath(place.Game(GameId::cs16).contentFolder + "config.cfg");
    MakeFolders(place.Game(GameId::cs16).contentFolder + "config.cfg/in the way");  // the player's file cannot come back
    const CommandResult kept = Ask({"/uninstall", "cs16"});
    EXPECT_EQ(kept.status, 7);
    EXPECT_EQ(kept.err, "Counter Strike LUDAX config could not be fully uninstalled.\nSome files could not be put back "
                        "or removed, so the backup was kept. Close the programs that use the game's files, free some "
                        "disk space, then uninstall again.\n" + Backslashed(place.Game(GameId::cs16).contentFolder) + "config.cfg\n" +
                            folderInTheWay + "\n");
}

TEST(CommandLine, ALogIsRefusedByWhatTheSystemFindsNotBySpelling)
{
    // An installed place: both games, backup files, a player's config, and a folder beside Steam.
    RegisteredSteam steam;
    const SteamAccount place = AccountFolderEntry(steam.Apps(), "player");
    WriteFile(place.Game(GameId::cs16).contentFolder + "config.cfg", "player's config");
    WriteFile(place.Game(GameId::css).contentFolder + "cfg/config.cfg", "player's config");
    ASSERT_EQ(Ask({"/install", "cs16"}).status, 0);
    TempFolder elsewhere;
    const std::string e = elsewhere.Path();
    const Tree before = Snapshot(steam.Apps());

    std::vector<std::string> refused = {
        place.Game(GameId::cs16).contentFolder + "config.cfg", place.Game(GameId::css).gameFolder + "/new.log", place.folder + "/cssludax.bak",
        place.folder + "/cs16ludax_1.bak.new", place.folder + "/cs16ludax_2.bak", place.Game(GameId::cs16).gameFolder + "/./cstrike/../x.log",
        e + "/game/x.log",     // a link to the game's folder
        e + "/archive.log",    // a link to the archive
        e + "/list.log",       // a second name (hard link) of the removal list
    };
    ASSERT_TRUE(MakeLink(place.Game(GameId::cs16).gameFolder, e + "/game"));
    ASSERT_TRUE(MakeLink(place.folder + "/cs16ludax.bak", e + "/archive.log"));
    std::filesystem::create_hard_link(std::filesystem::u8path(place.folder + "/cs16ludax_1.bak"),
                                      std::filesystem::u8path(e + "/list.log"));
#ifdef _WIN32
    // Another drive for the same folder, the 8.3 short names, and the "\\?\" and "\\.\" forms.
    ASSERT_TRUE(MapDrive("M", steam.Apps()));
    for (const std::string& file : {place.folder + "/cs16ludax.bak", place.folder + "/cs16ludax_1.bak",
                                    place.Game(GameId::cs16).contentFolder + "config.cfg"}) {
        const std::string shortName = ShortPath(file);
        ASSERT_FALSE(shortName.empty()) << file;
        refused.push_back(shortName);
    }
    refused.insert(refused.end(), {place.folder + "/CSSLUDAX_2.BAK", "M:\\player\\cs16ludax.bak", "M:\\player\\counter-strike\\cstrike\\m.log",
                                   "\\\\?\\" + Backslashed(place.folder + "/cs16ludax.bak"),
                                   "\\\\.\\" + Backslashed(place.folder + "/cs16ludax_1.bak")});
#endif
    for (const std::string& log : refused) {
        const CommandResult result = Ask({"/verify", "cs16", "/log", log});
        EXPECT_EQ(result.status, 1) << log;
        EXPECT_EQ(result.err, "The log " + log +
                                  " would be written among a game's files or into the backup files: name a file "
                                  "elsewhere.\n");
    }
    {
        // Relative: a log from inside the game's folder, and Steam named relative to where the
        // script runs (the registry's Steam too).
        InFolder inGame(place.Game(GameId::cs16).contentFolder);
        EXPECT_EQ(Ask({"/verify", "cs16", "/log", "x.log"}).status, 1);
        InFolder beside(steam.Apps() + "..");
        EXPECT_EQ(Ask({"/verify", "cs16", "/steam", ".", "/log", place.Game(GameId::cs16).contentFolder + "x.log"}).status, 1);
        EXPECT_EQ(Ask({"/verify", "cs16", "/steam", elsewhere.Path(), "/log", place.Game(GameId::cs16).contentFolder + "x.log"}).status, 1);
    }
#ifdef _WIN32
    EXPECT_TRUE(MapDrive("M", ""));
#endif
    EXPECT_TRUE(Snapshot(steam.Apps()) == before) << "a log was written among the games' files";

    // A file that is not this program's log is nobody's to add to; an empty one, or a log this
    // program began, is.
    WriteFile(e + "/notes.txt", "my notes\r\n");
    const CommandResult notALog = Ask({"/verify", "cs16", "/log", e + "/notes.txt"});
    EXPECT_EQ(notALog.status, 1);
    EXPECT_EQ(notALog.err, "The log " + e + "/notes.txt is not a log of this program: name a new file, or a log this "
                                            "program wrote.\n");
    EXPECT_EQ(ReadFile(e + "/notes.txt"), "my notes\r\n");
    WriteFile(e + "/empty.log", "");
    for (int run = 0; run < 2; ++run)
        EXPECT_EQ(Ask({"/verify", "cs16", "/log", e + "/empty.log"}).status, 0);
    EXPECT_EQ(LogFields(ReadFile(e + "/empty.log")).size(), 4u);
    // Beside the game's folder, in a folder whose name only starts like it, a name that only
    // starts like a backup file's, and a backup file's name in another folder: a log.
    for (const std::string& log : {place.folder + "/cs16ludax.bak.log", place.Game(GameId::cs16).gameFolder + " logs/x.log",
                                   e + "/cs16ludax_1.bak"}) {
        MakeFolders(log.substr(0, log.rfind('/')));
        EXPECT_EQ(Ask({"/verify", "cs16", "/log", log}).status, 0) << log;
        EXPECT_TRUE(Exists(log)) << log;
    }
    // A first line that is not a "started" line of this program's, or ends without its CR.
    const std::string started = ReadFile(e + "/empty.log").substr(0, ReadFile(e + "/empty.log").find('\r'));
    for (const std::string& first : {started + "\n", "yesterday" + started.substr(20) + "\r\n",
                                     started.substr(0, 21) + "ended" + started.substr(28) + "\r\n"}) {
        WriteFile(e + "/other.log", first);
        EXPECT_EQ(Ask({"/verify", "cs16", "/log", e + "/other.log"}).status, 1) << first;
        EXPECT_EQ(ReadFile(e + "/other.log"), first);
    }

    // A refused command line looks for no places: a new log is made and a log of this program
    // goes on, but an empty file nobody can tell about is nobody's to add to.
    const auto refusedRun = [&](const std::string& log) {
        return Logged(log, std::nullopt, "/bad", [](const ActionLog&) { return ErrorResult(1, "bad\n", "bad"); });
    };
    EXPECT_EQ(refusedRun(e + "/new.log").err, "bad\n");
    EXPECT_EQ(refusedRun(e + "/new.log").err, "bad\n");
    EXPECT_EQ(LogFields(ReadFile(e + "/new.log")).size(), 4u);
    WriteFile(e + "/someone's.txt", "");
    EXPECT_EQ(refusedRun(e + "/someone's.txt").err, "The log " + e + "/someone's.txt is not a log of this program: name a new "
                                                   "file, or a log this program wrote.\n");
    EXPECT_EQ(ReadFile(e + "/someone's.txt"), "");
#ifndef _WIN32
    // A log that cannot take its first line (a full disk, a write landing half): refused before
    // anything is done; a log file it made goes again, one it found keeps what it held.
    const std::string held = ReadFile(e + "/empty.log");
    int full = 0;
    for (std::uint64_t nth = 1; nth < 40; ++nth)
        for (const std::string& log : {e + "/full.log", e + "/held.log"}) {
            RemovePath(e + "/full.log");
            WriteFile(e + "/held.log", held);
            LogRefusal refusal = LogRefusal::none;
            sys::faults::Arm(nth, sys::faults::Mode::partialWrite);
            const bool opened = RunLog::Open(log, std::vector<SteamAccount>{}, "/list", refusal).has_value();
            sys::faults::Arm(0, sys::faults::Mode::fail);
            if (!opened && refusal == LogRefusal::notWritable && Exists(e)) {
                ++full;
                EXPECT_FALSE(Exists(e + "/full.log")) << log << ", call " << nth;
                EXPECT_EQ(ReadFile(e + "/held.log"), held) << log << ", call " << nth;
            }
        }
    EXPECT_GT(full, 0);
#endif
}

TEST(CommandLine, TheLogRecordsEachRunFromItsStartToItsEndRefusedRunsIncluded)
{
    RegisteredSteam steam;
    WriteFile(AccountFolderEntry(steam.Apps(), "player").Game(GameId::cs16).contentFolder + "config.cfg", "player's config");
    TempFolder share;
    const std::string log = share.Path() + "/pc37.log";
    for (Args args : {Args{"/install", "cs16"}, Args{"/install", "cs16"}, Args{"/install", "css"}}) {
        args.insert(args.end(), {"/log", log});
        Command command;
        std::string error;
        EXPECT_TRUE(ParseCommandLine(args, command, error)) << error;
        RunCommand(command, CommandLineText(args));
    }
    const auto lines = LogFields(ReadFile(log));
    ASSERT_GE(lines.size(), 4u);
#ifdef _WIN32
    const char* user = std::getenv("USERNAME");
    const char* computer = std::getenv("COMPUTERNAME");
#else
    const char* user = std::getenv("USER");
    utsname machine{};
    uname(&machine);
    const char* computer = machine.nodename;
#endif
    EXPECT_EQ(lines.front(), (std::vector<std::string>{"started", BuildName(LUDAX_CONTAINER_SUMS), computer, user ? user : "",
                                                       "/install cs16 /log " + log}));
    // The three runs' ends, in the order they ran, each on one line: a refusal's is its message.
    std::vector<std::vector<std::string>> ends;
    for (const auto& line : lines)
        if (line[0] == "ended")
            ends.push_back(line);
    EXPECT_EQ(ends, (std::vector<std::vector<std::string>>{{"ended", "0", "installed"},
                                                           {"ended", "0", "already installed, every file as shipped"},
                                                           {"ended", "3", "Counter-Strike: Source is in no place Steam holds."}}));
    EXPECT_EQ(lines.back()[0], "ended");
}

}  // namespace
