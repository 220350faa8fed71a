// Steam as it has laid games out since 2013: one folder per game, shared by every account, in
// the Steam folder's steamapps/common and in further libraries that libraryfolders.vdf lists.

#include <gtest/gtest.h>

#include <algorithm>

#include "box_actions.h"
#include "little_endian.h"
#include "ludax_window.h"
#include "payload_files.h"
#include "running_ludax.h"
#include "steam_folder.h"
#include "text.h"
#include "window_finder.h"

namespace {

struct LibraryGame {
    const char* testName;
    const char* gameFolder;  // below the library's steamapps/common
    const char* content;     // where the files go, below the game folder
    const char* payload;     // payload/<payload>.manifest, payload/<payload>/
    const char* archive;
    const char* removalList;
    HWND LudaxControls::*install;
    HWND LudaxControls::*uninstall;
    const wchar_t* question;
    const wchar_t* installed;
    const wchar_t* uninstalled;
    int library;  // 0: the Steam folder's own common/, 1: the second library
};

const LibraryGame libraryGames[] = {
    {"CounterStrikeInTheSteamFolder", "Half-Life/cstrike", "", "cs16", "/cs16ludax.bak",
     "/cs16ludax_1.bak", &LudaxControls::cs16Install, &LudaxControls::cs16Uninstall,
     L"Counter Strike LUDAX config already installed, do you want to reinstall?",
     L"Counter Strike LUDAX config installed successfully!", L"Counter Strike LUDAX config uninstalled!", 0},
    {"CounterStrikeSourceInASecondLibrary", "Counter-Strike Source/cstrike", "custom/ludax/", "css",
     "/cssludax.bak", "/cssludax_1.bak", &LudaxControls::cssInstall, &LudaxControls::cssUninstall,
     L"Counter Strike Source LUDAX config already installed, do you want to reinstall?",
     L"Counter Strike Source LUDAX config installed successfully!",
     L"Counter Strike Source LUDAX config uninstalled!", 1},
};

// Steam writes library paths with backslashes, each doubled inside the file's quotes.
std::string Backslashed(std::string path)
{
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

std::string Quoted(const std::string& path)
{
    std::string escaped;
    for (char c : path)
        escaped += c == '\\' ? std::string("\\\\") : std::string(1, c);
    return "\"" + escaped + "\"";
}

// libraryfolders.vdf as Steam has written it since 2021, listing `libraries` in order.
std::string LibraryFoldersVdf(const std::vector<std::string>& libraries)
{
    std::string vdf = "\"libraryfolders\"\r\n{\r\n\t\"contentstatsid\"\t\t\"-4254418836617418516\"\r\n";
    for (std::size_t i = 0; i < libraries.size(); ++i)
        vdf += "\t\"" + std::to_string(i) + "\"\r\n\t{\r\n\t\t\"path\"\t\t" + Quoted(libraries[i]) +
               "\r\n\t\t\"label\"\t\t\"\"\r\n\t\t\"apps\"\r\n\t\t{\r\n\t\t\t\"10\"\t\t\"576266341\"\r\n"
               "\t\t\t\"240\"\t\t\"4553243251\"\r\n\t\t}\r\n\t}\r\n";
    return vdf + "}\r\n";
}

// Both games in a library's shared folder, each with files of the player's own; Counter-Strike:
// Source also with another add-on under custom/.
void AddBothGames(const std::string& library)
{
    const std::string common = library + "/steamapps/common/";
    WriteFile(common + "Half-Life/cstrike/config.cfg", "// the player's own\r\nexec autoexec.cfg\r\n");
    WriteFile(common + "Half-Life/cstrike/maps/de_own.bsp", std::string("\x00\x01player\xFF", 10));
    WriteFile(common + "Counter-Strike Source/cstrike/cfg/config.cfg", "name \"player\"\r\n");
    WriteFile(common + "Counter-Strike Source/cstrike/custom/myhud/resource/hud.res", "hud");
}

class LibraryInstall : public testing::TestWithParam<LibraryGame> {
protected:
    void SetUp() override
    {
        AddBothGames(steam.Path());
        AddBothGames(second.Path());
        // The Steam folder listed again, in Windows spelling, as Steam lists it.
        WriteFile(steam.Steamapps() + "libraryfolders.vdf",
                  LibraryFoldersVdf({Backslashed(steam.Path()), Backslashed(second.Path())}));
        steam.Register();
        libraries = {steam.Path(), Backslashed(second.Path())};
    }

    std::string Common(int library) const { return libraries[library] + "/steamapps/common"; }
    std::string Content() const
    {
        return Common(GetParam().library) + "/" + GetParam().gameFolder + "/" + GetParam().content;
    }

    // Opens the program on the game's library.
    void Choose(const LudaxControls& controls) const
    {
        ASSERT_EQ(ChooserEntries(controls.chooser),
                  (std::vector<std::wstring>{L"Steam library: " + Widen(libraries[0]),
                                             L"Steam library: " + Widen(libraries[1])}));
        EXPECT_TRUE(IsWindowEnabled(controls.chooser));
        if (GetParam().library != 0)
            ChooseEntry(controls.chooser, GetParam().library);
        EXPECT_EQ(ChooserSelection(controls.chooser), GetParam().library);
    }

    SteamFolder steam;
    TempFolder second;
    std::vector<std::string> libraries;  // as the program names them
};

// The removal list a first install must write: each payload target that did not exist, then
// each folder it had to make on the way (only '/' separates), the last made first.
std::string ExpectedRemovalList(const std::string& content, const std::vector<std::string>& records)
{
    std::string list;
    std::vector<std::string> made;
    for (const std::string& name : records) {
        const std::string target = content + name;
        if (Exists(target))
            continue;
        list += target + "\r\n";
    }
    for (const std::string& name : records) {
        const std::string target = content + name;
        for (std::size_t slash = target.find('/'); slash != std::string::npos; slash = target.find('/', slash + 1)) {
            const std::string folder = target.substr(0, slash);
            if (folder.size() > 3 && !Exists(folder) && std::find(made.begin(), made.end(), folder) == made.end())
                made.push_back(folder);
        }
    }
    for (auto folder = made.rbegin(); folder != made.rend(); ++folder)
        list += *folder + "\r\n";
    return list;
}

// The backup archive a first install must write: header 1, then each target that existed, in
// payload order, under its payload name with its former bytes.
std::string ExpectedArchive(const std::string& content, const std::vector<std::string>& records)
{
    std::string archive;
    AppendLittleEndian32(archive, 1);
    for (const std::string& name : records) {
        if (!Exists(content + name))
            continue;
        const std::string former = ReadFile(content + name);
        AppendLittleEndian32(archive, static_cast<std::uint32_t>(name.size()));
        archive += name;
        AppendLittleEndian32(archive, static_cast<std::uint32_t>(former.size()));
        archive += former;
    }
    return archive;
}

}  // namespace

TEST_P(LibraryInstall, FirstInstallReinstallRestartAndUninstallInASharedGameFolder)
{
    const LibraryGame& game = GetParam();
    const std::vector<std::string> records = ManifestNames(game.payload);
    ASSERT_FALSE(records.empty()) << "payload manifest not readable";
    const std::string common = Common(game.library);
    const std::string archive = common + game.archive;
    const std::string removalList = common + game.removalList;
    const auto before = Snapshot(common);
    const auto otherBefore = Snapshot(Common(1 - game.library));
    const std::string expectedArchive = ExpectedArchive(Content(), records);
    const std::string expectedList = ExpectedRemovalList(Content(), records);
    {
        SCOPED_TRACE("first install, then reinstall");
        RunningLudax ludax;
        ASSERT_NE(ludax.window, nullptr) << ludax.failure;
        LudaxControls controls = FindControls(ludax.window);
        Choose(controls);
        EXPECT_EQ(EnabledButtonsOf(controls), (EnabledButtons{true, false, true, false}));

        MessageBoxContent done = ClickAndAnswer(ludax, controls.*game.install, IDOK);
        ExpectBox(done, game.installed, L"Message", {IDOK}, BoxIcon::information, ludax.window);
        EXPECT_TRUE(IsWindowEnabled(controls.*game.uninstall));
        for (const std::string& name : records)
            EXPECT_EQ(ReadFile(Content() + name), PayloadBytes(game.payload, name)) << name;
        ASSERT_TRUE(Exists(archive));
        ASSERT_TRUE(Exists(removalList));
        EXPECT_EQ(ReadFile(archive), expectedArchive);
        EXPECT_EQ(ReadFile(removalList), expectedList);
        EXPECT_EQ(Snapshot(Common(1 - game.library)), otherBefore) << "the other library changed";

        WriteFile(Content() + records.front(), "changed by the player");
        ReinstallAnsweringYes(ludax, controls.*game.install, game.question, game.installed);
        EXPECT_EQ(ReadFile(Content() + records.front()), PayloadBytes(game.payload, records.front()));
        EXPECT_EQ(ReadFile(archive), expectedArchive) << "a reinstall rewrote the backup archive";
        EXPECT_EQ(ReadFile(removalList), expectedList) << "a reinstall rewrote the removal list";
        CloseThroughCloseCorner(ludax);
    }
    {
        SCOPED_TRACE("restart, then uninstall");
        RunningLudax ludax;
        ASSERT_NE(ludax.window, nullptr) << ludax.failure;
        LudaxControls controls = FindControls(ludax.window);
        Choose(controls);
        EXPECT_TRUE(IsWindowEnabled(controls.*game.uninstall)) << "the install did not survive a restart";

        MessageBoxContent done = ClickAndAnswer(ludax, controls.*game.uninstall, IDOK);
        ExpectBox(done, game.uninstalled, L"Message", {IDOK}, BoxIcon::information, ludax.window);
        EXPECT_EQ(EnabledButtonsOf(controls), (EnabledButtons{true, false, true, false}));
        EXPECT_EQ(Snapshot(common), before) << "the shared game folder is not as it was before the install";
        EXPECT_EQ(Snapshot(Common(1 - game.library)), otherBefore);
        CloseThroughCloseCorner(ludax);
    }
}

INSTANTIATE_TEST_SUITE_P(BothGames, LibraryInstall, testing::ValuesIn(libraryGames),
                         [](const testing::TestParamInfo<LibraryGame>& info) { return info.param.testName; });

TEST(Libraries, AccountFoldersComeFirstThenTheLibrariesAndCommonIsNeverAnAccount)
{
    SteamFolder steam;
    TempFolder second;
    steam.AddAccount("ludaxplayer", cs16Game);
    // The Steam folder's common/ holds Counter-Strike: Source, and a folder that the old test
    // for "counter-strike source" would match on a file system that ignores letter case.
    WriteFile(steam.Steamapps() + "common/Counter-Strike Source/cstrike/cfg/config.cfg", "x");
    WriteFile(second.Path() + "/steamapps/common/Half-Life/cstrike/config.cfg", "x");
    WriteFile(second.Path() + "/steamapps/common/cssludax.bak", std::string("\x01\0\0\0", 4));
    WriteFile(steam.Steamapps() + "libraryfolders.vdf", LibraryFoldersVdf({Backslashed(second.Path())}));
    steam.Register();

    RunningLudax ludax;
    ASSERT_NE(ludax.window, nullptr) << ludax.failure;
    LudaxControls controls = FindControls(ludax.window);
    ASSERT_EQ(ChooserEntries(controls.chooser),
              (std::vector<std::wstring>{L"ludaxplayer", L"Steam library: " + Widen(steam.Path()),
                                         L"Steam library: " + Widen(Backslashed(second.Path()))}));
    EXPECT_EQ(ChooserSelection(controls.chooser), 0);
    EXPECT_EQ(EnabledButtonsOf(controls), (EnabledButtons{true, false, false, false}));
    ChooseEntry(controls.chooser, 1);
    EXPECT_EQ(EnabledButtonsOf(controls), (EnabledButtons{false, false, true, false}));
    ChooseEntry(controls.chooser, 2);
    EXPECT_EQ(EnabledButtonsOf(controls), (EnabledButtons{true, false, false, true}));
}
