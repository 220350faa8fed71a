#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>

#include "fault_injection.h"
#include "find_games.h"
#include "steam_path.h"
#include "system.h"
#include "test_files.h"
#include "test_registry.h"

namespace {

const std::string testKey = "Software\\LudaxTest\\Steam";

// The places' names, a library's marked as one.
std::vector<std::string> Names(const std::vector<SteamAccount>& accounts)
{
    std::vector<std::string> names;
    for (const SteamAccount& account : accounts)
        names.push_back(account.library ? "library " + account.name : account.name);
    return names;
}

TEST(Discovery, SteamPathIsUsedExactlyAsStored)
{
    SetUserRegistryString(testKey, "SteamPath", "C:\\Program Files/Steam");
    EXPECT_EQ(ReadSteamappsPath(testKey).steamappsPath, "C:\\Program Files/Steam/steamapps/");
    SetUserRegistryString(testKey, "SteamPath", "c:/games/steam/");
    EXPECT_EQ(ReadSteamappsPath(testKey).steamappsPath, "c:/games/steam//steamapps/");
    EXPECT_EQ(ReadSteamappsPath(testKey).read, sys::RegistryRead::ok);

    // 259 characters and the NUL fill the 260-byte buffer; one more does not fit.
    std::string longest(259, 'x');
    SetUserRegistryString(testKey, "SteamPath", longest);
    EXPECT_EQ(sys::ReadRegistryString(sys::RegistryHive::user, testKey, "SteamPath").read, sys::RegistryRead::ok);
    EXPECT_EQ(sys::ReadRegistryString(sys::RegistryHive::user, testKey, "SteamPath").text, longest);
    SetUserRegistryString(testKey, "SteamPath", longest + "x");
    const sys::RegistryString tooLong = sys::ReadRegistryString(sys::RegistryHive::user, testKey, "SteamPath");
    EXPECT_EQ(tooLong.read, sys::RegistryRead::valueUnreadable);
    EXPECT_NE(tooLong.reason.code, 0u);
    // ERROR_FILE_NOT_FOUND on Windows, and ENOENT, its POSIX counterpart, in the stand-in: both 2.
    const sys::RegistryString noValue = sys::ReadRegistryString(sys::RegistryHive::user, testKey, "NoSuchValue");
    EXPECT_EQ(noValue.read, sys::RegistryRead::valueUnreadable);
    EXPECT_EQ(noValue.reason, sys::Reason::System(2));
    EXPECT_EQ(ReadSteamappsPath(testKey).read, sys::RegistryRead::valueUnreadable);
    DeleteUserRegistryKey(testKey);
    EXPECT_EQ(sys::ReadRegistryString(sys::RegistryHive::user, testKey, "SteamPath").read, sys::RegistryRead::keyMissing);
    const SteamPath noKey = ReadSteamappsPath(testKey);
    EXPECT_EQ(noKey.read, sys::RegistryRead::keyMissing);
    EXPECT_EQ(noKey.reason, sys::Reason::System(2));
    EXPECT_EQ(noKey.steamappsPath, "");
}

TEST(Discovery, ACommandTakesTheNamedSteamThenTheUsersThenTheMachines32BitEntryThenIts64BitOne)
{
    const std::string machineKey = "SOFTWARE\\Valve\\Steam";
    const auto clear = [&] {
        DeleteUserRegistryKey(RegisteredSteam::key);
        DeleteRegistryKey(RegistryHive::machine32, machineKey);
        DeleteRegistryKey(RegistryHive::machine64, machineKey);
    };
    clear();
    EXPECT_EQ(FindSteam("").read, sys::RegistryRead::keyMissing);
    EXPECT_EQ(FindSteam("").steamappsPath, "");
    // Each entry names a folder that is there (Steam writes its folders in many spellings).
    TempFolder machine64, machine32, user, named;
    SetRegistryString(RegistryHive::machine64, machineKey, "InstallPath", machine64.Path());
    EXPECT_EQ(FindSteam("").steamappsPath, machine64.Path() + "/steamapps/");
    SetRegistryString(RegistryHive::machine32, machineKey, "InstallPath", machine32.Path());
    EXPECT_EQ(FindSteam("").steamappsPath, machine32.Path() + "/steamapps/");
    // The window reads the user's entry only.
    EXPECT_EQ(ReadSteamappsPath().read, sys::RegistryRead::keyMissing);
    SetUserRegistryString(RegisteredSteam::key, "SteamPath", user.Path() + "/");
    EXPECT_EQ(FindSteam("").steamappsPath, user.Path() + "//steamapps/");
    // A named folder is taken as the system gives its full path (with '\\' on Windows).
#ifdef _WIN32
    const std::string full = Backslashed(named.Path());
#else
    const std::string full = named.Path();
#endif
    EXPECT_EQ(FindSteam(named.Path()).steamappsPath, full + "/steamapps/");
    EXPECT_EQ(FindSteam(named.Path()).read, sys::RegistryRead::ok);
    clear();
    // A named folder needs no registry at all.
    EXPECT_EQ(FindSteam(named.Path()).steamappsPath, full + "/steamapps/");
}

TEST(Discovery, FindGamesKeepsQualifyingFoldersInListingOrder)
{
    TempFolder steam;
    std::string apps = steam.Path() + "/steamapps/";
    MakeFolders(apps + "alice/counter-strike");
    MakeFolders(apps + "bob/counter-strike source");
    WriteFile(apps + "bob/cssludax.bak", archiveHeader);
    WriteFile(apps + "carol/cs16ludax.bak", "");          // a backup with no game folder
    WriteFile(apps + "frank/cssludax.bak", "");           // the other game's backup alone
    WriteFile(apps + "erin/counter-strike", "not a folder");  // a file counts as present
    MakeFolders(apps + "dave/half-life");                 // nothing of ours
    MakeFolders(apps + "COMMON/counter-strike");          // a library's shared folder, in any case
    WriteFile(apps + "notes.txt", "a plain file holds no game");
    MakeFolders(apps + "counter-strike");                  // "." and ".." are tested like any other entry
    MakeFolders(steam.Path() + "/counter-strike source");

    const FoundGames found = FindGames(apps);
    const std::vector<SteamAccount>& accounts = found.places;
    EXPECT_FALSE(found.failure.Failed());

    std::vector<std::string> expectedOrder, named;
    for (const std::string& name : NamesIn(apps))
        if (name == "alice" || name == "bob" || name == "carol" || name == "erin" || name == "frank")
            expectedOrder.push_back(name);
    for (const std::string& name : Names(accounts))
        if (name != "." && name != "..")
            named.push_back(name);
    EXPECT_EQ(named, expectedOrder);
    ASSERT_EQ(accounts.size(), expectedOrder.size() + 2);
    for (const SteamAccount& a : accounts) {
        SCOPED_TRACE(a.name);
        EXPECT_EQ(a.hasCs16(), a.name == "alice" || a.name == "erin" || a.name == ".");
        EXPECT_EQ(a.hasCss(), a.name == "bob" || a.name == "..");
        EXPECT_EQ(a.hasCs16Backup(), a.name == "carol");
        EXPECT_EQ(a.hasCssBackup(), a.name == "bob" || a.name == "frank");
    }
    // No steamapps: nothing found, and why.
    const FoundGames none = FindGames(steam.Path() + "/missing/");
    EXPECT_TRUE(none.places.empty());
    EXPECT_EQ(none.failure.path, steam.Path() + "/missing/");
    EXPECT_NE(none.failure.reason.code, 0u);
}

#ifndef _WIN32
// A look-up the system cannot answer names the path and the reason, and what stands there is not
// offered: a failing call at each point in turn.
TEST(Discovery, ALookUpTheSystemCannotAnswerIsNamedWithItsReason)
{
    TempFolder steam;
    const std::string apps = steam.Path() + "/steamapps/";
    MakeFolders(apps + "alice/counter-strike");
    const std::string marker = apps + "alice/counter-strike";
    bool met = false;
    for (std::uint64_t nth = 1; nth < 40 && !met; ++nth) {
        sys::faults::Arm(nth, sys::faults::Mode::fail);
        const FoundGames found = FindGames(apps);
        sys::faults::Arm(0, sys::faults::Mode::fail);
        if (found.failure.path != marker)
            continue;
        met = true;
        EXPECT_EQ(found.failure.reason, sys::Reason::System(EIO));
        EXPECT_TRUE(found.places.empty()) << "alice holds nothing else: not offered";
    }
    EXPECT_TRUE(met) << "no failing call was the look-up of " << marker;
    EXPECT_EQ(Names(FindGames(apps).places), std::vector<std::string>{"alice"});
}
#endif

// A Steam library with Counter-Strike 1.6 and/or Counter-Strike: Source in its shared game folder.
void AddLibraryGames(const std::string& library, bool cs16, bool css)
{
    if (cs16)
        WriteFile(library + "/steamapps/common/Half-Life/cstrike/config.cfg", "x");
    if (css)
        WriteFile(library + "/steamapps/common/Counter-Strike Source/cstrike/cfg/config.cfg", "x");
}

TEST(Discovery, AccountFoldersFirstThenEveryLibraryInOrder)
{
    TempFolder steam, second, third, stale, backupOnly;
    const std::string apps = steam.Path() + "/steamapps/";
    MakeFolders(apps + "alice/counter-strike");            // the layout before shared folders
    AddLibraryGames(steam.Path(), true, true);              // the Steam folder's own common/
    MakeFolders(apps + "common/counter-strike source");     // never an account, whatever it holds
    AddLibraryGames(second.Path(), false, true);            // only Counter-Strike: Source
    MakeFolders(third.Path() + "/steamapps/common/Half-Life/valve");  // no cstrike: nothing of ours
    WriteFile(backupOnly.Path() + "/steamapps/common/cs16ludax.bak", "\x01");

    // Paths as Steam writes them, the Steam folder listed again in another spelling, one library
    // four times in the ways Windows names a folder, and one that no longer exists.
    std::string steamAgain = steam.Path();
    for (char& c : steamAgain)
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    const std::string secondName = second.Path().substr(second.Path().rfind('/') + 1);
    WriteFile(apps + "libraryfolders.vdf",
              LibraryList({steamAgain + "/", second.Path(), stale.Path() + "/gone", third.Path(), second.Path() + "/",
                           backupOnly.Path(), second.Path() + "/.", second.Path() + "/../" + secondName,
                           second.Path() + "//x/.."}));

    const std::string secondAsWritten = AsSteamWritesIt(second.Path());
    const std::string backupOnlyAsWritten = AsSteamWritesIt(backupOnly.Path());

    std::vector<SteamAccount> found = FindGames(apps).places;
    ASSERT_EQ(Names(found), (std::vector<std::string>{"alice", "library " + steam.Path(),
                                                       "library " + secondAsWritten,
                                                       "library " + backupOnlyAsWritten}));

    const SteamAccount& alice = found[0];
    EXPECT_EQ(alice.folder, apps + "alice");
    EXPECT_EQ(alice.Game(GameId::cs16).contentFolder, apps + "alice/counter-strike/cstrike/");
    EXPECT_EQ(alice.Game(GameId::css).contentFolder, apps + "alice/counter-strike source/cstrike/");

    const SteamAccount& own = found[1];
    EXPECT_EQ(own.folder, steam.Path() + "/steamapps/common");
    EXPECT_EQ(own.Game(GameId::cs16).contentFolder, steam.Path() + "/steamapps/common/Half-Life/cstrike/");
    EXPECT_EQ(own.Game(GameId::css).contentFolder, steam.Path() + "/steamapps/common/Counter-Strike Source/cstrike/custom/ludax/");
    EXPECT_TRUE(own.hasCs16() && own.hasCss() && !own.hasCs16Backup() && !own.hasCssBackup());

    const SteamAccount& library = found[2];
    EXPECT_EQ(library.folder, secondAsWritten + "/steamapps/common");
    EXPECT_EQ(library.Game(GameId::css).contentFolder, secondAsWritten + "/steamapps/common/Counter-Strike Source/cstrike/custom/ludax/");
    EXPECT_TRUE(!library.hasCs16() && library.hasCss() && !library.hasCs16Backup() && !library.hasCssBackup());

    const SteamAccount& leftover = found[3];
    EXPECT_TRUE(!leftover.hasCs16() && !leftover.hasCss() && leftover.hasCs16Backup() && !leftover.hasCssBackup());
}

TEST(Discovery, LibraryListsAreReadFromSteamappsThenConfigEachLibraryOnce)
{
    TempFolder steam, inConfig, inSteamapps, inBoth;
    const std::string apps = steam.Path() + "/steamapps/";
    WriteFile(steam.Path() + "/config/libraryfolders.vdf",
              "\"LibraryFolders\" { \"1\" \"" + inBoth.Path() + "\" \"2\" \"" + inConfig.Path() + "\" }");
    EXPECT_EQ(SteamLibraries(apps), (std::vector<std::string>{steam.Path(), inBoth.Path(), inConfig.Path()}));

    WriteFile(apps + "libraryfolders.vdf",
              "\"LibraryFolders\" { \"1\" \"" + inSteamapps.Path() + "\" \"2\" \"" + inBoth.Path() + "\" }");
    EXPECT_EQ(SteamLibraries(apps),
              (std::vector<std::string>{steam.Path(), inSteamapps.Path(), inBoth.Path(), inConfig.Path()}));

    // A huge list is read only as far as it goes in its first megabyte.
    const std::string huge = "\"LibraryFolders\" { \"junk\" \"" + std::string(900 << 10, 'x') + "\" \"1\" \"" +
                             inSteamapps.Path() + "\" \"more\" \"" + std::string(300 << 10, 'x') + "\" \"2\" \"" +
                             steam.Path() + "/beyond\" }";
    WriteFile(apps + "libraryfolders.vdf", huge);
    EXPECT_EQ(SteamLibraries(apps),
              (std::vector<std::string>{steam.Path(), inSteamapps.Path(), inBoth.Path(), inConfig.Path()}));

    // No more libraries than any PC holds: a longer list is damage, read no further.
    std::string many = "\"LibraryFolders\" {";
    for (int i = 1; i <= 1100; ++i)
        many += " \"" + std::to_string(i) + "\" \"" + steam.Path() + "/lib" + std::to_string(i) + "\"";
    WriteFile(apps + "libraryfolders.vdf", many + " }");
    const std::vector<std::string> capped = SteamLibraries(apps);
    ASSERT_EQ(capped.size(), 1000u);
    EXPECT_EQ(capped.back(), steam.Path() + "/lib999");
}

}  // namespace
