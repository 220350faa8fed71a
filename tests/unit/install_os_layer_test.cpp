// The OS layer's file calls, which the install and the uninstall rely on to never write
// anywhere but a plain file of exactly the path they checked.
#include <gtest/gtest.h>

#include <algorithm>

#include "long_paths.h"
#include "system.h"
#include "test_files.h"

namespace {

TEST(OsLayer, NeverOpensAFolderADeviceOrAPathItCannotTest)
{
    TempFolder root;
    WriteFile(root.Path() + "/plain.cfg", "plain");
    EXPECT_FALSE(sys::File::OpenForReading(root.Path()).IsOpen());
    EXPECT_FALSE(sys::File::Create(root.Path()).IsOpen());
#ifdef _WIN32
    // Windows opens these as devices wherever they stand.
    for (const char* device : {"/nul", "/COM1", "/aux.txt", "/con"}) {
        EXPECT_FALSE(sys::File::Create(root.Path() + device).IsOpen()) << device;
        EXPECT_FALSE(sys::File::OpenForReading(root.Path() + device).IsOpen()) << device;
    }
#endif
    // A NUL byte would make the system see "plain.cfg" while the caller checked something else.
    const std::string cut = root.Path() + std::string("/plain.cfg\0/more", 15);
    EXPECT_EQ(sys::LookUp(cut).kind, sys::EntryKind::none);
    EXPECT_FALSE(sys::File::Create(cut).IsOpen());
    EXPECT_FALSE(sys::RemoveFile(cut));
    EXPECT_EQ(ReadFile(root.Path() + "/plain.cfg"), "plain");

    // Bytes that are not UTF-8 name nothing.
    EXPECT_FALSE(sys::File::Create(root.Path() + "/caf\xE9.cfg").IsOpen());
    EXPECT_EQ(sys::LookUp(root.Path() + "/caf\xE9.cfg").kind, sys::EntryKind::none);
    EXPECT_EQ(Snapshot(root.Path()), (std::map<std::string, std::string>{{"plain.cfg", "plain"}}));
}

TEST(OsLayer, PathsOfAnyLengthAndInAnyScript)
{
    TempFolder root;
    // Folders and a file far past Windows' 259 characters, with names in Hungarian and Russian.
    std::string folder = root.Path() + "/Játékok";
    for (int level = 0; level < 4; ++level)
        folder += "/" + std::string(60, static_cast<char>('a' + level)) + "_Игры";
    const std::string file = folder + "/config.cfg";
    ASSERT_GT(file.size(), 300u);
    for (std::size_t slash = file.find('/', root.Path().size() + 1); slash != std::string::npos;
         slash = file.find('/', slash + 1))
        EXPECT_TRUE(sys::MakeFolder(file.substr(0, slash))) << slash;
    sys::File out = sys::File::Create(file);
    ASSERT_TRUE(out.IsOpen());
    EXPECT_TRUE(out.Write("bind", 4));
    EXPECT_TRUE(out.Close());
    EXPECT_EQ(sys::LookUp(file).kind, sys::EntryKind::file);
    EXPECT_EQ(sys::LookUp(folder).kind, sys::EntryKind::folder);
    sys::File in = sys::File::OpenForReading(file);
    char bytes[4];
    EXPECT_TRUE(in.Read(bytes, 4));
    EXPECT_EQ(std::string(bytes, 4), "bind");
    EXPECT_TRUE(in.Close());
    std::vector<std::string> names;
    for (const sys::ListedEntry& entry : sys::ListFolder(root.Path() + "/"))
        names.push_back(entry.name);
    EXPECT_NE(std::find(names.begin(), names.end(), "Játékok"), names.end());
    EXPECT_TRUE(sys::MoveOver(file, folder + "/moved.cfg"));
    EXPECT_TRUE(sys::RemoveFile(folder + "/moved.cfg"));
    EXPECT_TRUE(sys::RemoveFolder(folder));
    EXPECT_EQ(sys::LookUp(folder).kind, sys::EntryKind::none);
}

TEST(OsLayer, TheExtendedLengthFormResolvesWhatWindowsResolvesInAPlainPath)
{
    const struct {
        const char* path;
        const char* extended;
    } cases[] = {
        {"C:/Steam/steamapps/common/Half-Life/cstrike/a.cfg", "\\\\?\\C:\\Steam\\steamapps\\common\\Half-Life\\cstrike\\a.cfg"},
        {"C:\\Program Files (x86)/Steam//steamapps/./x/../common/", "\\\\?\\C:\\Program Files (x86)\\Steam\\steamapps\\common\\"},
        {"d:/a/../../../b", "\\\\?\\d:\\b"},
        {"E:/Játékok/SteamLibrary/x.cfg. .", "\\\\?\\E:\\Játékok\\SteamLibrary\\x.cfg"},
        {"E:/folder/*.*", "\\\\?\\E:\\folder\\*.*"},
        {"\\\\server\\share\\games/../../../Steam", "\\\\?\\UNC\\server\\share\\Steam"},
        {"//server/share/x", "\\\\?\\UNC\\server\\share\\x"},
        // Already extended, relative or drive-relative: as they are.
        {"\\\\?\\C:\\a/./b", "\\\\?\\C:\\a/./b"},
        {"Steam/steamapps", "Steam/steamapps"},
        {"C:Steam", "C:Steam"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ExtendedLengthPath(c.path), c.extended) << c.path;
}

}  // namespace
