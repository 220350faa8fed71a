#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "discovery.h"
#include "system.h"
#include "test_files.h"
#include "test_registry.h"

namespace {

const std::string testKey = "Software\\LudaxTest\\Steam";

const std::string noGameText =
    "Nincs feltelepítve (és legalább egyszer elindítva) sem a Counter Strike sem a Counter Strike "
    "Source!\nKilépek!";

std::vector<std::string> Names(const std::vector<SteamAccount>& accounts)
{
    std::vector<std::string> names;
    for (const SteamAccount& account : accounts)
        names.push_back(account.name);
    return names;
}

TEST(Discovery, SteamPathIsUsedExactlyAsStored)
{
    SetUserRegistryString(testKey, "SteamPath", "C:\\Program Files/Steam");
    EXPECT_EQ(ReadSteamappsPath(testKey), "C:\\Program Files/Steam/steamapps/");
    SetUserRegistryString(testKey, "SteamPath", "c:/games/steam/");
    EXPECT_EQ(ReadSteamappsPath(testKey), "c:/games/steam//steamapps/");

    // 259 characters and the NUL fill the 260-byte buffer; one more does not fit.
    std::string longest(259, 'x');
    SetUserRegistryString(testKey, "SteamPath", longest);
    std::string read;
    EXPECT_EQ(sys::ReadUserRegistryString(testKey, "SteamPath", read), sys::RegistryRead::ok);
    EXPECT_EQ(read, longest);
    SetUserRegistryString(testKey, "SteamPath", longest + "x");
    EXPECT_EQ(sys::ReadUserRegistryString(testKey, "SteamPath", read),
              sys::RegistryRead::valueUnreadable);
    EXPECT_EQ(sys::ReadUserRegistryString(testKey, "NoSuchValue", read),
              sys::RegistryRead::valueUnreadable);
    DeleteUserRegistryKey(testKey);
    EXPECT_EQ(sys::ReadUserRegistryString(testKey, "SteamPath", read),
              sys::RegistryRead::keyMissing);
}

TEST(Discovery, ListingKeepsEveryEntryAndTellsFilesFromFolders)
{
    TempFolder root;
    MakeFolders(root.Path() + "/one/two");
    WriteFile(root.Path() + "/file.txt", "x");
    std::vector<std::string> names = sys::ListFolder(root.Path() + "/");
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{".", "..", "file.txt", "one"}));
    EXPECT_TRUE(sys::ListFolder(root.Path() + "/missing/").empty());

    EXPECT_EQ(sys::FindEntry(root.Path() + "/one"), sys::EntryKind::folder);
    EXPECT_EQ(sys::FindEntry(root.Path() + "/file.txt"), sys::EntryKind::file);
    EXPECT_EQ(sys::FindEntry(root.Path() + "/nothing"), sys::EntryKind::none);
    EXPECT_FALSE(sys::PathExists(root.Path() + "/file.txt/below"));
}

TEST(Discovery, FindGamesKeepsQualifyingFoldersInListingOrder)
{
    TempFolder steam;
    std::string apps = steam.Path() + "/steamapps/";
    MakeFolders(apps + "alice/counter-strike");
    MakeFolders(apps + "bob/counter-strike source");
    WriteFile(apps + "bob/cssludax.bak", "\x01\0\0\0");
    WriteFile(apps + "carol/cs16ludax.bak", "");          // a backup with no game folder
    WriteFile(apps + "erin/counter-strike", "not a folder");  // a file counts as present
    MakeFolders(apps + "dave/half-life");                 // nothing of ours
    WriteFile(apps + "notes.txt", "a plain file holds no game");

    std::vector<SteamAccount> accounts = FindGames(apps);

    std::vector<std::string> expectedOrder;
    for (const std::string& name : sys::ListFolder(apps))
        if (name == "alice" || name == "bob" || name == "carol" || name == "erin")
            expectedOrder.push_back(name);
    ASSERT_EQ(Names(accounts), expectedOrder);
    for (const SteamAccount& a : accounts) {
        SCOPED_TRACE(a.name);
        EXPECT_EQ(a.hasCs16, a.name == "alice" || a.name == "erin");
        EXPECT_EQ(a.hasCss, a.name == "bob");
        EXPECT_EQ(a.hasCs16Backup, a.name == "carol");
        EXPECT_EQ(a.hasCssBackup, a.name == "bob");
    }
}

TEST(Discovery, DotEntriesAreTestedLikeAnyOther)
{
    TempFolder steam;
    std::string apps = steam.Path() + "/steamapps/";
    MakeFolders(apps + "counter-strike");                     // seen through "."
    MakeFolders(steam.Path() + "/counter-strike source");     // seen through ".."
    std::vector<SteamAccount> accounts = FindGames(apps);
    std::vector<std::string> names = Names(accounts);
    std::sort(names.begin(), names.end());
    ASSERT_EQ(names, (std::vector<std::string>{".", ".."}));
    for (const SteamAccount& a : accounts) {
        EXPECT_EQ(a.hasCs16, a.name == ".");
        EXPECT_EQ(a.hasCss, a.name == "..");
    }
}

TEST(Discovery, ButtonsFollowGameFoldersAndBackups)
{
    std::vector<SteamAccount> accounts(2);
    accounts[0].hasCs16 = true;
    accounts[0].hasCssBackup = true;
    accounts[1].hasCss = true;
    accounts[1].hasCs16Backup = true;

    ButtonStates first = SelectAccount(accounts, 0);
    EXPECT_TRUE(first.cs16Install);
    EXPECT_FALSE(first.cs16Uninstall);
    EXPECT_FALSE(first.cssInstall);
    EXPECT_TRUE(first.cssUninstall);

    ButtonStates second = SelectAccount(accounts, 1);
    EXPECT_FALSE(second.cs16Install);
    EXPECT_TRUE(second.cs16Uninstall);
    EXPECT_TRUE(second.cssInstall);
    EXPECT_FALSE(second.cssUninstall);

    for (int outside : {-1, 2}) {
        ButtonStates none = SelectAccount(accounts, outside);
        EXPECT_FALSE(none.cs16Install || none.cs16Uninstall || none.cssInstall || none.cssUninstall);
    }
}

#ifndef _WIN32
// The fatal paths show a message box on Windows; the end-to-end tests read those boxes.
TEST(DiscoveryDeathTest, FailuresEndTheProcessWithTheirMessage)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    DeleteUserRegistryKey(testKey);
    EXPECT_EXIT(ReadSteamappsPath(testKey), testing::ExitedWithCode(255),
                testing::HasSubstr("[Error!] (style 0x00)\nRegistry read failed!"));
    SetUserRegistryString(testKey, "SteamPath", std::string(260, 'x'));
    EXPECT_EXIT(ReadSteamappsPath(testKey), testing::ExitedWithCode(255),
                testing::HasSubstr("[Hiba!] (style 0x00)\nRegistry read failed!"));

    TempFolder steam;
    MakeFolders(steam.Path() + "/steamapps/empty-account");
    for (const std::string& apps : {steam.Path() + "/steamapps/", steam.Path() + "/missing/"})
        EXPECT_EXIT(FindGames(apps), testing::ExitedWithCode(255),
                    testing::HasSubstr("[Hiba:] (style 0x10)\n" + noGameText + "\n"));
}
#endif

}  // namespace
