#include <gtest/gtest.h>

#include <utility>

#include "backup_archive.h"
#include "install_scene.h"
#include "removal_list.h"
#include "test_files.h"

namespace {

using Lines = std::vector<std::string>;

// The longest path the program takes: 32,767 UTF-16 units of at most three UTF-8 bytes each.
constexpr std::size_t longestPathBytes = 98301;

// The paths of a removal list's bytes, fed in one piece.
Lines ReadRemovalList(const std::string& bytes)
{
    Lines paths;
    RemovalListReader lines([&](const std::string& path) { paths.push_back(path); });
    lines.Feed(bytes.data(), bytes.size());
    lines.Finish();
    return paths;
}

std::string Repeated(const std::string& text, std::size_t times)
{
    std::string repeated;
    for (std::size_t i = 0; i < times; ++i)
        repeated += text;
    return repeated;
}

TEST(RemovalList, LinesEndAtLfLoseEveryCrAndPassEmptyOnesOver)
{
    EXPECT_EQ(ReadRemovalList("C:/a/b.cfg\r\nC:/a\r\n"), (Lines{"C:/a/b.cfg", "C:/a"}));
    EXPECT_EQ(ReadRemovalList("one\ntwo\n"), (Lines{"one", "two"}));
    EXPECT_EQ(ReadRemovalList("one\r\ntwo"), (Lines{"one", "two"}));  // last line without LF
    EXPECT_EQ(ReadRemovalList("o\rne\r\r\n\rtwo\r\n"), (Lines{"one", "two"}));
    // An empty line (only CRs are one too) ends nothing: the lines after it count.
    EXPECT_EQ(ReadRemovalList("one\r\n\r\nthree\r\n"), (Lines{"one", "three"}));
    EXPECT_EQ(ReadRemovalList("one\r\n\r\r\nthree"), (Lines{"one", "three"}));
    EXPECT_EQ(ReadRemovalList("\n\nnow"), Lines{"now"});
    EXPECT_EQ(ReadRemovalList(""), Lines{});
    EXPECT_EQ(ReadRemovalList(std::string("a\0b\n", 4)), Lines{std::string("a\0b", 3)});
    // UTF-8 as it is; a line that is not, from an earlier version, in the ANSI code page (the
    // letters below are the same in the Hungarian and the Western one).
    EXPECT_EQ(ReadRemovalList("E:/Játékok/a.cfg\r\n" + Western("E:/Játékok/b.cfg") + "\r\n"),
              (Lines{"E:/Játékok/a.cfg", "E:/Játékok/b.cfg"}));

    // A line longer than Windows' longest path, 32,767 UTF-16 units, is passed over unread; the
    // lines around it count.
    const std::string longest(32767, 'p');
    EXPECT_EQ(ReadRemovalList("one\r\n" + longest + "x\r\n" + longest + "\r\ntwo"), (Lines{"one", longest, "two"}));
    EXPECT_EQ(ReadRemovalList(longest + "x"), Lines{});  // the last line, too long
    // Counted in UTF-16 units: a character of three UTF-8 bytes is one, one of four is two.
    const std::string euros = Repeated("€", 32767), faces = Repeated("😀", 16384);
    EXPECT_EQ(ReadRemovalList(euros + "\n" + faces + "\n" + faces.substr(4) + "\n"), (Lines{euros, faces.substr(4)}));
    // A line an earlier version wrote in the ANSI code page counts its characters once converted:
    // each byte of "é" is one, though UTF-8 would count 0x80 to 0xBF as none.
    const std::string ansi = Western(Repeated("é", 16384)) + std::string(16384, '\xA9');
    EXPECT_EQ(ReadRemovalList(ansi + "\n" + ansi.substr(2) + "\n").size(), 1u);
    // CRs do not count towards a line's length.
    EXPECT_EQ(ReadRemovalList(longest + std::string(50, '\r') + "\n"), Lines{longest});
}

// Every record of the archive file as the uninstall reads it: name (or "<too long>") and data.
std::vector<std::pair<std::string, std::string>> RecordsOnDisk(const std::string& path, bool* failed = nullptr)
{
    std::vector<std::pair<std::string, std::string>> records;
    ArchiveReader reader(path);
    std::string name;
    bool tooLong = false;
    std::uint32_t size = 0;
    while (reader.Next(name, tooLong, size)) {
        std::string data;
        if (records.size() % 2 == 0)  // every other record's data is left for Next to skip
            EXPECT_TRUE(reader.CopyData([&](const char* bytes, std::size_t count) {
                data.append(bytes, count);
                return sys::Status();
            }));
        else
            data = "<" + std::to_string(size) + " skipped>";
        records.emplace_back(tooLong ? "<too long>" : name, data);
    }
    if (failed)
        *failed = reader.Failed();
    return records;
}

TEST(BackupArchive, TheFileIsReadRecordByRecordWithTheWalksEndRules)
{
    TempFolder root;
    const std::string path = root.Path() + "/cs16ludax.bak";
    const std::string all = archiveHeader + Record("a.cfg", "A") +
                            Record(std::string(longestPathBytes + 1, 'n'), "data of a long name") +
                            Record("b.cfg", std::string(3 << 20, 'b')) +  // more than one copy block
                            Record("", "e") + Record("last.cfg", "");
    using Pairs = std::vector<std::pair<std::string, std::string>>;
    const Pairs expected{{"a.cfg", "A"}, {"<too long>", "<19 skipped>"}, {"b.cfg", std::string(3 << 20, 'b')},
                         {"", "<1 skipped>"}, {"last.cfg", ""}};
    WriteFile(path, all);
    bool failed = true;
    EXPECT_EQ(RecordsOnDisk(path, &failed), expected);
    EXPECT_FALSE(failed);

    // Cut anywhere inside the last record: the ones before it are read, and it ends the walk
    // as the end of the file does, not as a failed read.
    const std::size_t lastStart = all.size() - Record("last.cfg", "").size();
    for (std::size_t size : {lastStart + 1, lastStart + 4, lastStart + 9, all.size() - 1}) {
        WriteFile(path, all.substr(0, size));
        EXPECT_EQ(RecordsOnDisk(path, &failed), Pairs(expected.begin(), expected.end() - 1)) << size;
        EXPECT_FALSE(failed);
    }
    // A negative length ends it as a hole of zero bytes does.
    WriteFile(path, archiveHeader + Record("a.cfg", "A") + std::string("\xFF\xFF\xFF\xFF", 4) + "more");
    EXPECT_EQ(RecordsOnDisk(path), (Pairs{{"a.cfg", "A"}}));
}

}  // namespace
