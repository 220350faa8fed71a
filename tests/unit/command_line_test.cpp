// The command line a LAN admin's script gives: what it asks for, the place it picks, and the
// exit status it ends with.
#include <gtest/gtest.h>

#include <filesystem>

#include "command_line.h"
#include "game_profile.h"
#include "run_command.h"
#include "steam_layouts.h"
#include "test_registry.h"

namespace {

using Args = std::vector<std::string>;

TEST(CommandLine, ReadsTheCommandsInAnyCaseWithEitherSignAndRefusesTheRest)
{
    const struct {
        Args args;
        Command::Kind kind;
        const GameProfile* game;
        int place;
        bool yes;
        std::string log;
    } accepted[] = {
        {{}, Command::Kind::window, nullptr, 0, false, ""},
        {{"/log", "C:/a b.log"}, Command::Kind::window, nullptr, 0, false, "C:/a b.log"},
        {{"/?"}, Command::Kind::usage, nullptr, 0, false, ""},
        {{"-LIST"}, Command::Kind::list, nullptr, 0, false, ""},
        {{"/install", "CS16"}, Command::Kind::install, &cs16Profile, 0, false, ""},
        {{"-Install", "css", "/PLACE", "12", "-yes", "/log", "x.log"}, Command::Kind::install, &cssProfile, 12, true, "x.log"},
        {{"/place", "2", "/uninstall", "cs16"}, Command::Kind::uninstall, &cs16Profile, 2, false, ""},
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
        {{"/list", "/place", "1"}, "/place goes with /install or /uninstall"},
        {{"/uninstall", "css", "/yes"}, "/yes goes with /install"},
        {{"/?", "/log", "x"}, "/log goes with /install, /uninstall, or alone with the window"},
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
    DeleteUserRegistryKey(RegisteredSteam::key);
    EXPECT_EQ(Ask({"/list"}).status, 2);
    RegisteredSteam steam;
    EXPECT_EQ(Ask({"/list"}).out, "");
    EXPECT_EQ(Ask({"/install", "cs16"}).status, 3);  // no place holds the game
    const SteamAccount place = AccountFolderEntry(steam.Apps(), "player");
    WriteFile(place.cs16Content + "config.cfg", "player's config");
    EXPECT_EQ(Ask({"/list"}).out, "1\tplayer\tcs16=present\tcss=absent\n");
    EXPECT_EQ(Ask({"/uninstall", "cs16"}).status, 4);  // there, but installed nowhere
    EXPECT_EQ(Ask({"/uninstall", "cs16", "/place", "1"}).status, 4);
    EXPECT_EQ(Ask({"/install", "css"}).status, 3);
    EXPECT_EQ(Ask({"/uninstall", "css"}).status, 3);  // in no place, let alone installed
    EXPECT_EQ(Ask({"/install", "cs16", "/place", "2"}).status, 3);
    EXPECT_EQ(Ask({"/install", "css", "/place", "1"}).status, 3);

    const CommandResult installed = Ask({"/install", "cs16"});
    EXPECT_EQ(installed.status, 0);
    EXPECT_EQ(installed.out, "Counter Strike LUDAX config installed successfully!\n");
    EXPECT_EQ(Ask({"/list"}).out, "1\tplayer\tcs16=installed\tcss=absent\n");
    EXPECT_EQ(Ask({"/install", "cs16"}).status, 4);  // installed already
    EXPECT_EQ(Ask({"/install", "cs16", "/yes"}).status, 0);

    // A second place with the game: one of them must be named.
    WriteFile(AccountFolderEntry(steam.Apps(), "second").cs16Content + "config.cfg", "second's config");
    EXPECT_EQ(Ask({"/install", "cs16"}).status, 3);
    EXPECT_EQ(Ask({"/uninstall", "cs16"}).status, 0);  // installed in one place only
    EXPECT_EQ(ReadFile(place.cs16Content + "config.cfg"), "player's config");
    EXPECT_EQ(Ask({"/uninstall", "cs16"}).status, 4);
}

TEST(CommandLine, AnInstallThatStopsIs6AndAnUninstallThatKeepsItsBackupsIs7)
{
    RegisteredSteam steam;
    const SteamAccount place = AccountFolderEntry(steam.Apps(), "player");
    WriteFile(place.cs16Content + "config.cfg", "player's config");
    MakeFolders(place.cs16Content + "autobuy.txt/in the way");  // a folder where a file must go
    const CommandResult stopped = Ask({"/install", "cs16"});
    EXPECT_EQ(stopped.status, 6);
    EXPECT_EQ(stopped.err, "Could not back up the file\n" + place.cs16Content + "autobuy.txt\nNothing more was changed.\n");
    RemovePath(place.cs16Content + "autobuy.txt/in the way");
    RemovePath(place.cs16Content + "autobuy.txt");
    EXPECT_EQ(Ask({"/install", "cs16", "/yes"}).status, 0);
    RemovePath(place.cs16Content + "config.cfg");
    MakeFolders(place.cs16Content + "config.cfg/in the way");  // the player's file cannot come back
    const CommandResult kept = Ask({"/uninstall", "cs16"});
    EXPECT_EQ(kept.status, 7);
    EXPECT_EQ(kept.err, "Counter Strike LUDAX config uninstalled!\nSome files could not be put back or removed, so the "
                        "backup was kept. Close the programs that use the game's files, free some disk space, then "
                        "uninstall again.\n");

    // The game away: nothing changes, and the same status.
    RemovePath(place.cs16Content + "config.cfg/in the way");
    const std::string cstrike = place.cs16Game + "/cstrike";
    std::filesystem::rename(std::filesystem::u8path(cstrike), std::filesystem::u8path(place.cs16Game + "/parked"));
    const Tree away = Snapshot(steam.Apps());
    const CommandResult gone = Ask({"/uninstall", "cs16"});
    EXPECT_EQ(gone.status, 7);
    EXPECT_EQ(gone.err, "The game's folder is not there:\n" + cstrike +
                            "\nNothing was changed and the backup was kept. Put the game back where it was, then "
                            "uninstall again.\n");
    EXPECT_EQ(Snapshot(steam.Apps()), away);
    std::filesystem::rename(std::filesystem::u8path(place.cs16Game + "/parked"), std::filesystem::u8path(cstrike));
}

TEST(CommandLine, ALogAmongTheGamesFilesOrTheBackupFilesIsRefusedBeforeAnythingIsWritten)
{
    RegisteredSteam steam;
    const SteamAccount place = AccountFolderEntry(steam.Apps(), "player");
    WriteFile(place.cs16Content + "config.cfg", "player's config");
    WriteFile(place.cssContent + "cfg/config.cfg", "player's config");
    const Tree before = Snapshot(steam.Apps());
    for (const std::string& log : {place.cs16Content + "config.cfg", place.cssGame + "/new.log",
                                   place.folder + "/cssludax.bak", place.folder + "/cs16ludax_1.bak.new",
                                   place.cs16Game + "/./cstrike/../x.log"}) {
        const CommandResult refused = Ask({"/install", "cs16", "/log", log});
        EXPECT_EQ(refused.status, 1) << log;
        EXPECT_EQ(refused.err, "The log " + log +
                                   " would be written among a game's files or into the backup files: name a file "
                                   "elsewhere.\n");
    }
    EXPECT_EQ(Snapshot(steam.Apps()), before);
    // Beside the game's folder, and a name that only starts like a backup file's: a log.
    EXPECT_EQ(Ask({"/install", "cs16", "/log", place.folder + "/cs16ludax.bak.log"}).status, 0);
    EXPECT_TRUE(Exists(place.folder + "/cs16ludax.bak.log"));
}

}  // namespace
