// The OS layer's file calls, which the install and the uninstall rely on to never write
// anywhere but a plain file of exactly the path they checked.
#include <gtest/gtest.h>

#ifndef _WIN32
#include <sys/stat.h>
#endif

#include "system.h"
#include "test_files.h"

namespace {

TEST(OsLayer, ReadsAndWritesPlainFilesWhole)
{
    TempFolder root;
    const std::string path = root.Path() + "/file.bin";
    sys::File file = sys::File::Create(path);
    ASSERT_TRUE(file.IsOpen());
    EXPECT_TRUE(file.Write("0123456789", 10));
    EXPECT_TRUE(file.Close());
    EXPECT_FALSE(file.IsOpen());
    EXPECT_FALSE(file.Write("x", 1));  // closed

    file = sys::File::OpenForReading(path);
    ASSERT_TRUE(file.IsOpen());
    EXPECT_EQ(file.Size(), 10u);
    char bytes[4];
    EXPECT_TRUE(file.Skip(3));
    EXPECT_TRUE(file.Read(bytes, 4));
    EXPECT_EQ(std::string(bytes, 4), "3456");
    EXPECT_FALSE(file.Read(bytes, 4));  // only three are left
    EXPECT_TRUE(file.Close());
    EXPECT_FALSE(file.Close());  // nothing open any more
}

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
#else
    EXPECT_FALSE(sys::File::Create("/dev/null").IsOpen());
    EXPECT_FALSE(sys::File::OpenForReading("/dev/zero").IsOpen());
    ASSERT_EQ(mkfifo((root.Path() + "/pipe").c_str(), 0644), 0);
    EXPECT_FALSE(sys::File::OpenForReading(root.Path() + "/pipe").IsOpen());  // and does not wait
    EXPECT_FALSE(sys::File::Create(root.Path() + "/pipe").IsOpen());
    EXPECT_TRUE(sys::RemoveFile(root.Path() + "/pipe"));
#endif
    // A NUL byte would make the system see "plain.cfg" while the caller checked something else.
    const std::string cut = root.Path() + std::string("/plain.cfg\0/more", 15);
    EXPECT_EQ(sys::LookUp(cut).kind, sys::EntryKind::none);
    EXPECT_FALSE(sys::File::Create(cut).IsOpen());
    EXPECT_FALSE(sys::RemoveFile(cut));
    EXPECT_EQ(ReadFile(root.Path() + "/plain.cfg"), "plain");

    // One character past the longest path: not found, not made, not written.
    std::string tooLong = root.Path() + "/";
    tooLong += std::string(sys::maxPathLength + 1 - tooLong.size(), 'x');
    EXPECT_FALSE(sys::MakeFolder(tooLong));
    EXPECT_FALSE(sys::File::Create(tooLong).IsOpen());
    EXPECT_EQ(sys::LookUp(tooLong).kind, sys::EntryKind::none);
    EXPECT_EQ(Snapshot(root.Path()), (std::map<std::string, std::string>{{"plain.cfg", "plain"}}));
    // One shorter is an ordinary path.
    tooLong.pop_back();
    sys::File longest = sys::File::Create(tooLong);
    EXPECT_TRUE(longest.IsOpen());
    EXPECT_TRUE(longest.Close());
    EXPECT_EQ(sys::LookUp(tooLong).kind, sys::EntryKind::file);
}

}  // namespace
