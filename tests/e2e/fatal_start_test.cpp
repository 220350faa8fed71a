// The three ways the program refuses to start: each shows one ownerless message box instead
// of its window and ends with exit status -1 once the box is answered.

#include <gtest/gtest.h>

#include "launched_process.h"
#include "message_box_reader.h"
#include "steam_folder.h"
#include "window_finder.h"

namespace {

const wchar_t nothingInstalled[] =
    L"Nincs feltelepítve (és legalább egyszer elindítva) sem a Counter Strike sem a Counter Strike "
    L"Source!\nKilépek!";

void ExpectFatalBox(const std::wstring& text, const std::wstring& caption, BoxIcon icon)
{
    LaunchedProcess ludax(LudaxExePath());
    ASSERT_TRUE(ludax.Started()) << "Ludax.exe not found beside the build tree";
    HWND box = WaitForMessageBox(ludax);
    ASSERT_NE(box, nullptr) << "no message box appeared";

    MessageBoxContent content = ReadMessageBox(box);
    EXPECT_EQ(content.text, text);
    EXPECT_EQ(content.caption, caption);
    EXPECT_EQ(content.owner, nullptr);
    EXPECT_EQ(content.buttons, std::vector<int>{IDOK});
    EXPECT_EQ(content.icon, icon);
    // The box is all there is: the main window never opened.
    for (HWND shown : VisibleWindowsOf(ludax.Id()))
        EXPECT_EQ(shown, box) << "also shown: a window of class " << testing::PrintToString(ClassOf(shown));

    ASSERT_TRUE(PressButton(box, IDOK));
    EXPECT_EQ(ludax.WaitForExit(defaultTimeoutMs), std::optional<DWORD>(0xFFFFFFFF));
}

}  // namespace

TEST(FatalStart, NoSteamKeyIsARegistryError)
{
    RemoveSteamKey();
    ExpectFatalBox(L"Registry read failed!", L"Error!", BoxIcon::none);
}

TEST(FatalStart, UnreadableSteamPathIsARegistryErrorWithHungarianCaption)
{
    {
        SCOPED_TRACE("key without a SteamPath value");
        CreateSteamKeyWithoutPath();
        ExpectFatalBox(L"Registry read failed!", L"Hiba!", BoxIcon::none);
    }
    {
        SCOPED_TRACE("SteamPath of 260 characters: no room for its NUL in the 260-byte buffer");
        SetSteamPath("C:/" + std::string(257, 's'));
        ExpectFatalBox(L"Registry read failed!", L"Hiba!", BoxIcon::none);
    }
    {
        SCOPED_TRACE("SteamPath of 259 characters still fits, and names no Steam folder");
        SetSteamPath("C:/" + std::string(256, 's'));
        ExpectFatalBox(nothingInstalled, L"Hiba:", BoxIcon::error);
    }
}

TEST(FatalStart, NoAccountWithAGameOrBackupEndsTheProgram)
{
    SteamFolder steam;
    // Entries that must not count: a plain file, an account folder with other games and only
    // removal lists (the archive, not the list, marks an install).
    WriteFile(steam.Steamapps() + "libraryfolders.vdf", "\"libraryfolders\"\r\n{\r\n}\r\n");
    MakeFolders(steam.Account("someone") + "/half-life/valve");
    WriteFile(steam.Account("someone") + "/cs16ludax_1.bak", "");
    WriteFile(steam.Account("someone") + "/cssludax_1.bak", "");
    steam.Register();
    auto before = Snapshot(steam.Path());
    {
        SCOPED_TRACE("steamapps holds no qualifying account");
        ExpectFatalBox(nothingInstalled, L"Hiba:", BoxIcon::error);
    }
    EXPECT_EQ(Snapshot(steam.Path()), before) << "the refused start wrote to the Steam folder";
    {
        SCOPED_TRACE("SteamPath names a folder without steamapps");
        SetSteamPath(steam.Account("someone"));
        ExpectFatalBox(nothingInstalled, L"Hiba:", BoxIcon::error);
    }
}
