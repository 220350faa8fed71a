// Which Steam accounts the chooser offers and which of the four buttons each account enables.

#include <gtest/gtest.h>

#include "ludax_window.h"
#include "running_ludax.h"
#include "steam_folder.h"
#include "text.h"
#include "window_finder.h"

namespace {

// The entries of `folder` other than "." and "..", in the order the file system lists them.
std::vector<std::wstring> ListingOrder(const std::string& folder)
{
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW entry;
    HANDLE search = FindFirstFileW((Widen(folder) + L"*.*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE)
        return names;
    do {
        std::wstring name = entry.cFileName;
        if (name != L"." && name != L"..")
            names.push_back(name);
    } while (FindNextFileW(search, &entry));
    FindClose(search);
    return names;
}

}  // namespace

TEST(Accounts, SingleAccountWithEverythingIsShownInADisabledChooserWithAllButtonsEnabled)
{
    SteamFolder steam;
    steam.AddAccount("ludaxplayer", cs16Game | cssGame | cs16Backup | cssBackup);
    steam.Register();

    RunningLudax ludax;
    ASSERT_NE(ludax.window, nullptr) << ludax.failure;
    LudaxControls controls = FindControls(ludax.window);
    ASSERT_NE(controls.chooser, nullptr);
    EXPECT_FALSE(IsWindowEnabled(controls.chooser));
    EXPECT_TRUE(IsWindowVisible(controls.chooser));
    EXPECT_EQ(ChooserEntries(controls.chooser), std::vector<std::wstring>{L"ludaxplayer"});
    EXPECT_EQ(ChooserSelection(controls.chooser), 0);
    EXPECT_EQ(ChooserText(controls.chooser), L"ludaxplayer");
    EXPECT_EQ(EnabledButtonsOf(controls), (EnabledButtons{true, true, true, true}));
}

TEST(Accounts, ChoosingAnAccountSetsTheButtonsFromItsGames)
{
    SteamFolder steam;
    MakeFolders(steam.Account("zoltan"));
    MakeFolders(steam.Account("anna"));
    MakeFolders(steam.Account("nogames") + "/half-life");
    WriteFile(steam.Steamapps() + "libraryfolders.vdf", "\"libraryfolders\"\r\n");
    // First and second as the file system lists them, whatever their names.
    std::vector<std::wstring> listed = ListingOrder(steam.Steamapps());
    std::vector<std::wstring> accounts;
    for (const std::wstring& name : listed)
        if (name == L"zoltan" || name == L"anna")
            accounts.push_back(name);
    ASSERT_EQ(accounts.size(), 2u);
    steam.AddAccount(Narrow(accounts[0]), cs16Game);
    steam.AddAccount(Narrow(accounts[1]), cssGame);
    steam.Register();

    RunningLudax ludax;
    ASSERT_NE(ludax.window, nullptr) << ludax.failure;
    LudaxControls controls = FindControls(ludax.window);
    ASSERT_NE(controls.chooser, nullptr);
    EXPECT_TRUE(IsWindowEnabled(controls.chooser));
    EXPECT_EQ(ChooserEntries(controls.chooser), accounts);
    EXPECT_EQ(ChooserSelection(controls.chooser), 0);
    EXPECT_EQ(ChooserText(controls.chooser), accounts[0]);
    EXPECT_EQ(EnabledButtonsOf(controls), (EnabledButtons{true, false, false, false}));

    ChooseEntry(controls.chooser, 1);
    EXPECT_EQ(ChooserSelection(controls.chooser), 1);
    EXPECT_EQ(EnabledButtonsOf(controls), (EnabledButtons{false, false, true, false}));

    ChooseEntry(controls.chooser, 0);
    EXPECT_EQ(EnabledButtonsOf(controls), (EnabledButtons{true, false, false, false}));
}

TEST(Accounts, BackupWithoutGameFolderOffersOnlyThatUninstall)
{
    SteamFolder steam;
    steam.AddAccount("leftover", cs16Backup);
    steam.Register();

    RunningLudax ludax;
    ASSERT_NE(ludax.window, nullptr) << ludax.failure;
    LudaxControls controls = FindControls(ludax.window);
    ASSERT_NE(controls.chooser, nullptr);
    EXPECT_EQ(ChooserEntries(controls.chooser), std::vector<std::wstring>{L"leftover"});
    EXPECT_EQ(EnabledButtonsOf(controls), (EnabledButtons{false, true, false, false}));
}
