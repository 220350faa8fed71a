#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

#include "backup_archive.h"
#include "install_scene.h"
#include "output_file.h"
#include "packer.h"
#include "removal_list.h"
#include "test_files.h"

namespace {

using Lines = std::vector<std::string>;

// The paths of a removal list's bytes, fed in one piece.
Lines ReadRemovalList(const std::string& bytes)
{
    Lines paths;
    RemovalListReader lines([&](const std::string& path) { paths.push_back(path); });
    lines.Feed(bytes.data(), bytes.size());
    lines.Finish();
    return paths;
}

TEST(RemovalList, LinesEndAtLfLoseEveryCrAndStopAtTheFirstEmptyOne)
{
    EXPECT_EQ(ReadRemovalList("C:/a/b.cfg\r\nC:/a\r\n"), (Lines{"C:/a/b.cfg", "C:/a"}));
    EXPECT_EQ(ReadRemovalList("one\ntwo\n"), (Lines{"one", "two"}));
    EXPECT_EQ(ReadRemovalList("one\r\ntwo"), (Lines{"one", "two"}));  // last line without LF
    EXPECT_EQ(ReadRemovalList("o\rne\r\r\n\rtwo\r\n"), (Lines{"one", "two"}));
    EXPECT_EQ(ReadRemovalList("one\r\n\r\nthree\r\n"), Lines{"one"});
    EXPECT_EQ(ReadRemovalList("one\r\n\r\r\nthree"), Lines{"one"});  // only CRs: an empty line
    EXPECT_EQ(ReadRemovalList("\nnever"), Lines{});
    EXPECT_EQ(ReadRemovalList(""), Lines{});
    EXPECT_EQ(ReadRemovalList(std::string("a\0b\n", 4)), Lines{std::string("a\0b", 3)});
    // UTF-8 as it is; a line that is not, from an earlier version, in the ANSI code page (the
    // letters below are the same in the Hungarian and the Western one).
    EXPECT_EQ(ReadRemovalList("E:/Játékok/a.cfg\r\nE:/J\xE1t\xE9kok/b.cfg\r\n"),
              (Lines{"E:/Játékok/a.cfg", "E:/Játékok/b.cfg"}));

    // A line longer than any Windows path is passed over whole; the lines around it count.
    const std::string longest(sys::maxPathBytes, 'p');
    EXPECT_EQ(ReadRemovalList("one\r\n" + longest + "x\r\n" + longest + "\r\ntwo"),
              (Lines{"one", longest, "two"}));
    EXPECT_EQ(ReadRemovalList(longest + "xx\n\nnever"), Lines{});
    EXPECT_EQ(ReadRemovalList(longest + "x"), Lines{});  // the last line, too long
    // CRs do not count towards a line's length.
    EXPECT_EQ(ReadRemovalList(longest + std::string(50, '\r') + "\n"), Lines{longest});

    // Bytes arriving in any pieces give the same lines.
    const std::string list = "C:/a/b.cfg\r\n" + std::string(sys::maxPathBytes + 1, 'y') + "\nC:/a\r\n\r\nC:/never\r\n";
    for (std::size_t piece : {1u, 7u, 4096u}) {
        Lines lines;
        RemovalListReader reader([&](const std::string& path) { lines.push_back(path); });
        for (std::size_t at = 0; at < list.size(); at += piece)
            reader.Feed(list.data() + at, std::min(piece, list.size() - at));
        reader.Finish();
        EXPECT_EQ(lines, (Lines{"C:/a/b.cfg", "C:/a"})) << piece;
    }
}

TEST(RemovalList, KnowsWhereItsLinesEndSoThatAnInstallCanAddMore)
{
    // An install adds its lines where the uninstall will read them: before an empty line that
    // ends the list, and after a last line that lacks its LF.
    const struct {
        std::string bytes;
        std::uint64_t linesEnd;
        bool lastLineOpen;
    } cases[] = {
        {"", 0, false},
        {"a\r\nb\r\n", 6, false},
        {"a\r\nb", 4, true},
        {"a\r\n\r\nnever\r\n", 3, false},
        {"a\r\n\r\r\nnever", 3, false},
        {"\nnever", 0, false},
        {"a\r\n" + std::string(sys::maxPathBytes + 1, 'x') + "\r\n", sys::maxPathBytes + 6, false},  // passed over, but a line
        {"a\r\n\r", 3, false},
    };
    for (const auto& c : cases) {
        RemovalListReader reader([](const std::string&) {});
        reader.Feed(c.bytes.data(), c.bytes.size());
        reader.Finish();
        EXPECT_EQ(reader.Extent().linesEnd, c.linesEnd) << c.bytes;
        EXPECT_EQ(reader.Extent().lastLineOpen, c.lastLineOpen) << c.bytes;
    }
}

TEST(BackupArchive, RecordsHoldTheFormerBytesUnderTheRelativeName)
{
    TempFolder root;
    const std::string game = root.Path() + "/cstrike/";
    const std::string binary("\x00\xFF\r\n\x1A", 5);
    WriteFile(game + "cfg/ludax/binds.cfg", binary);
    WriteFile(game + "empty.cfg", "");
    const std::string archivePath = root.Path() + "/cs16ludax.bak";
    {
        OutputFile archive = OutputFile::Create(archivePath);
        EXPECT_TRUE(archive.Append(std::string("\x01\0\0\0", 4)));
        EXPECT_TRUE(AppendBackupRecord(archive, "cfg/ludax/binds.cfg", game + "cfg/ludax/binds.cfg"));
        EXPECT_TRUE(AppendBackupRecord(archive, "empty.cfg", game + "empty.cfg"));
        // What cannot be read is not recorded at all, and the caller hears of it.
        EXPECT_FALSE(AppendBackupRecord(archive, "gone.cfg", game + "gone.cfg"));
        EXPECT_FALSE(AppendBackupRecord(archive, "cfg", game + "cfg"));  // a folder
        EXPECT_TRUE(archive.Close());
    }
    EXPECT_EQ(ReadFile(archivePath), std::string("\x01\0\0\0" "\x13\0\0\0", 8) + "cfg/ludax/binds.cfg" +
                                         std::string("\x05\0\0\0", 4) + binary +
                                         std::string("\x09\0\0\0", 4) + "empty.cfg" +
                                         std::string(4, '\0'));
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
                return true;
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
    const std::string header("\x01\0\0\0", 4);
    std::vector<char> records;
    AppendRecord(records, "a.cfg", "A");
    AppendRecord(records, std::string(sys::maxPathBytes + 1, 'n'), "data of a long name");
    AppendRecord(records, "b.cfg", std::string(3 << 20, 'b'));  // more than one copy block
    AppendRecord(records, "", "e");
    AppendRecord(records, "last.cfg", "");
    const std::string all = header + std::string(records.begin(), records.end());
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
    // The header is never read: any four bytes will do.
    for (const std::string& anyHeader : {std::string("\xFF\xFF\xFF\xFF"), std::string(4, '\0'), std::string("LDX!")}) {
        WriteFile(path, anyHeader + all.substr(4));
        EXPECT_EQ(RecordsOnDisk(path), expected) << anyHeader;
    }
    // Four bytes or fewer, or no file at all: no records.
    for (std::size_t size = 0; size <= 4; ++size) {
        WriteFile(path, header.substr(0, size));
        EXPECT_TRUE(RecordsOnDisk(path).empty()) << size;
    }
    EXPECT_TRUE(RecordsOnDisk(root.Path() + "/missing.bak").empty());

    // A hole of zero bytes ends the walk at once, however large the file.
    WriteFile(path, header + Record("a.cfg", "A"));
    ResizeFile(path, std::uint64_t{1} << 36);  // 64 GiB, sparse
    EXPECT_EQ(RecordsOnDisk(path), (Pairs{{"a.cfg", "A"}}));
    // A negative length ends it as well.
    WriteFile(path, header + Record("a.cfg", "A") + std::string("\xFF\xFF\xFF\xFF", 4) + "more");
    EXPECT_EQ(RecordsOnDisk(path), (Pairs{{"a.cfg", "A"}}));
}

TEST(WholeFiles, AreWrittenInOnePieceOrReportedAsNotWritten)
{
    TempFolder root;
    const std::string path = root.Path() + "/file.bin";
    WriteFile(path, "a longer former content");
    EXPECT_TRUE(WriteWholeFile(path, "new\0", 4));  // truncates
    EXPECT_EQ(ReadFile(path), std::string("new\0", 4));

    EXPECT_FALSE(WriteWholeFile(root.Path() + "/no/such/folder/file", "x", 1));
    EXPECT_FALSE(WriteWholeFile(root.Path(), "x", 1));  // a folder is not written
    OutputFile nowhere = OutputFile::Create(root.Path() + "/no/such/folder/file");
    EXPECT_FALSE(nowhere.Intact());
    EXPECT_FALSE(nowhere.Append("\x01\0\0\0", 4));
    EXPECT_FALSE(nowhere.Close());
    EXPECT_EQ(Snapshot(root.Path()), (std::map<std::string, std::string>{{"file.bin", std::string("new\0", 4)}}));
}

}  // namespace
