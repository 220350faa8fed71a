#include <gtest/gtest.h>

#include <utility>

#include "backup_archive.h"
#include "file_io.h"
#include "packer.h"
#include "removal_list.h"
#include "test_files.h"

namespace {

using Lines = std::vector<std::string>;

std::vector<std::pair<std::string, std::string>> Records(const std::vector<char>& archive)
{
    std::vector<std::pair<std::string, std::string>> records;
    WalkBackupArchive(archive, [&](const ContainerRecord& record) {
        records.emplace_back(record.name, std::string(record.data, record.size));
    });
    return records;
}

std::vector<char> Bytes(const std::string& text) { return std::vector<char>(text.begin(), text.end()); }

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

    TempFolder root;
    {
        OutputFile list(root.Path() + "/list");
        AppendRemovalLine(list, "C:/Steam/steamapps/x/counter-strike/cstrike/a b.cfg");
        AppendRemovalLine(list, "C:\\Steam/steamapps/x/counter-strike/cstrike");
    }
    EXPECT_EQ(ReadFile(root.Path() + "/list"),
              "C:/Steam/steamapps/x/counter-strike/cstrike/a b.cfg\r\n"
              "C:\\Steam/steamapps/x/counter-strike/cstrike\r\n");
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
        OutputFile archive(archivePath);
        archive.AppendInt32(backupArchiveHeader);
        AppendBackupRecord(archive, "cfg/ludax/binds.cfg", game + "cfg/ludax/binds.cfg");
        AppendBackupRecord(archive, "empty.cfg", game + "empty.cfg");
        AppendBackupRecord(archive, "gone.cfg", game + "gone.cfg");  // unreadable: length 0
        archive.Flush();
    }
    EXPECT_EQ(ReadFile(archivePath), std::string("\x01\0\0\0" "\x13\0\0\0", 8) + "cfg/ludax/binds.cfg" +
                                         std::string("\x05\0\0\0", 4) + binary +
                                         std::string("\x09\0\0\0", 4) + "empty.cfg" +
                                         std::string(4, '\0') + std::string("\x08\0\0\0", 4) +
                                         "gone.cfg" + std::string(4, '\0'));
    EXPECT_EQ(Records(ReadWholeFile(archivePath)),
              (std::vector<std::pair<std::string, std::string>>{
                  {"cfg/ludax/binds.cfg", binary}, {"empty.cfg", ""}, {"gone.cfg", ""}}));
}

TEST(BackupArchive, ReaderSkipsAnyHeaderAndStopsAtTheFirstRecordThatDoesNotFit)
{
    std::vector<char> records;
    AppendRecord(records, "a.cfg", "A");
    AppendRecord(records, "b/c.cfg", "");
    const std::vector<std::pair<std::string, std::string>> both{{"a.cfg", "A"}, {"b/c.cfg", ""}};
    for (const std::string& header : {std::string("\x01\0\0\0", 4), std::string("\xFF\xFF\xFF\xFF"),
                                      std::string(4, '\0'), std::string("LDX!")}) {
        std::vector<char> archive = Bytes(header);
        archive.insert(archive.end(), records.begin(), records.end());
        EXPECT_EQ(Records(archive), both) << "header " << header;
    }

    for (const std::string& tooShort : {std::string(), std::string("\x01"), std::string("\x01\0\0\0", 4)})
        EXPECT_TRUE(Records(Bytes(tooShort)).empty());

    // A last record cut anywhere is dropped; the ones before it are kept.
    std::vector<char> archive = Bytes(std::string("\x01\0\0\0", 4));
    AppendRecord(archive, "kept.cfg", "kept");
    const std::size_t intact = archive.size();
    AppendRecord(archive, "cut.cfg", "0123456789");
    for (std::size_t size = intact + 1; size < archive.size(); ++size)
        EXPECT_EQ(Records(std::vector<char>(archive.begin(), archive.begin() + size)),
                  (std::vector<std::pair<std::string, std::string>>{{"kept.cfg", "kept"}}))
            << size << " bytes";
}

TEST(WholeFiles, ReadAndWriteInOnePieceIgnoringFailures)
{
    TempFolder root;
    const std::string path = root.Path() + "/file.bin";
    WriteFile(path, "a longer former content");
    WriteWholeFile(path, "new\0", 4);  // truncates
    EXPECT_EQ(ReadFile(path), std::string("new\0", 4));
    EXPECT_EQ(ReadWholeFile(path), Bytes(std::string("new\0", 4)));

    EXPECT_TRUE(ReadWholeFile(root.Path() + "/missing").empty());
    EXPECT_TRUE(ReadWholeFile(root.Path()).empty());  // a folder reads as nothing
    WriteWholeFile(root.Path() + "/no/such/folder/file", "x", 1);
    OutputFile nowhere(root.Path() + "/no/such/folder/file");
    nowhere.AppendInt32(1);
    nowhere.Flush();
    nowhere.Close();
    EXPECT_EQ(Snapshot(root.Path()), (std::map<std::string, std::string>{{"file.bin", std::string("new\0", 4)}}));
}

}  // namespace
