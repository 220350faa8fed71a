// The OS layer's file calls, which the install and the uninstall rely on to never write
// anywhere but a plain file of exactly the path they checked.
#include <gtest/gtest.h>

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
    EXPECT_FALSE(sys::File::Create(root.Path() + "/" + Western("café.cfg")).IsOpen());
    EXPECT_EQ(sys::LookUp(root.Path() + "/" + Western("café.cfg")).kind, sys::EntryKind::none);
    EXPECT_EQ(Snapshot(root.Path()), (Tree{{"plain.cfg", "plain"}}));
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
