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
    sys::FileHandle file;
    ASSERT_TRUE(sys::OpenForWriting(path, file));
    EXPECT_TRUE(sys::WriteExactly(file, "0123456789", 10));
    EXPECT_TRUE(sys::CloseFile(file));
    EXPECT_FALSE(file.open);

    std::uint64_t size = 0;
    ASSERT_TRUE(sys::OpenForReading(path, file, size));
    EXPECT_EQ(size, 10u);
    char bytes[4];
    EXPECT_TRUE(sys::Skip(file, 3));
    EXPECT_TRUE(sys::ReadExactly(file, bytes, 4));
    EXPECT_EQ(std::string(bytes, 4), "3456");
    EXPECT_FALSE(sys::ReadExactly(file, bytes, 4));  // only three are left
    EXPECT_TRUE(sys::CloseFile(file));
    EXPECT_FALSE(sys::CloseFile(file));  // nothing open any more
}

TEST(OsLayer, NeverOpensAFolderADeviceOrAPathItCannotTest)
{
    TempFolder root;
    WriteFile(root.Path() + "/plain.cfg", "plain");
    sys::FileHandle file;
    std::uint64_t size = 0;
    EXPECT_FALSE(sys::OpenForReading(root.Path(), file, size));
    EXPECT_FALSE(sys::OpenForWriting(root.Path(), file));
#ifdef _WIN32
    // Windows opens these as devices wherever they stand.
    for (const char* device : {"/nul", "/COM1", "/aux.txt", "/con"}) {
        EXPECT_FALSE(sys::OpenForWriting(root.Path() + device, file)) << device;
        EXPECT_FALSE(sys::OpenForReading(root.Path() + device, file, size)) << device;
    }
#else
    EXPECT_FALSE(sys::OpenForWriting("/dev/null", file));
    EXPECT_FALSE(sys::OpenForReading("/dev/zero", file, size));
    ASSERT_EQ(mkfifo((root.Path() + "/pipe").c_str(), 0644), 0);
    EXPECT_FALSE(sys::OpenForReading(root.Path() + "/pipe", file, size));  // and does not wait
    EXPECT_FALSE(sys::OpenForWriting(root.Path() + "/pipe", file));
    sys::RemoveFile(root.Path() + "/pipe");
#endif
    // A NUL byte would make the system see "plain.cfg" while the caller checked something else.
    const std::string cut = root.Path() + std::string("/plain.cfg\0/more", 15);
    EXPECT_EQ(sys::FindEntry(cut), sys::EntryKind::none);
    EXPECT_FALSE(sys::OpenForWriting(cut, file));
    sys::RemoveFile(cut);
    EXPECT_EQ(ReadFile(root.Path() + "/plain.cfg"), "plain");

    // One character past the longest path: not found, not made, not written.
    std::string tooLong = root.Path() + "/";
    tooLong += std::string(sys::maxPathLength + 1 - tooLong.size(), 'x');
    EXPECT_FALSE(sys::MakeFolder(tooLong));
    EXPECT_FALSE(sys::OpenForWriting(tooLong, file));
    EXPECT_EQ(sys::FindEntry(tooLong), sys::EntryKind::none);
    EXPECT_EQ(Snapshot(root.Path()), (std::map<std::string, std::string>{{"plain.cfg", "plain"}}));
    // One shorter is an ordinary path.
    tooLong.pop_back();
    EXPECT_TRUE(sys::OpenForWriting(tooLong, file));
    EXPECT_TRUE(sys::CloseFile(file));
    EXPECT_EQ(sys::FindEntry(tooLong), sys::EntryKind::file);
}

}  // namespace
