// The packer: the containers it makes walk back to the set's files, and every flaw that would
// make a malformed or unwritable container stops it with a message naming the culprit.

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "checksum.h"
#include "container.h"
#include "listing.h"
#include "packer.h"
#include "test_files.h"

namespace {

struct Walked {
    std::vector<std::string> names;
    std::vector<std::string> data;
    std::size_t end = 0;
};

Walked WalkAll(const std::vector<char>& container)
{
    Walked walked;
    WalkRecords(container.data(), container.size(), 0, [&](const ContainerRecord& record) {
        walked.names.push_back(record.name);
        walked.data.emplace_back(record.data, record.size);
        walked.end = record.next;
        return true;
    });
    return walked;
}

// A set folder beside its manifest in a fresh temporary folder.
struct Set {
    TempFolder temp;
    std::string folder = temp.Path() + "/set";
    std::string manifest = temp.Path() + "/set.manifest";

    Set(const std::string& manifestText, const std::vector<std::string>& files)
    {
        MakeFolders(folder);
        WriteFile(manifest, manifestText);
        for (const std::string& file : files)
            WriteFile(folder + "/" + file, "bytes of " + file);
    }
};

void ExpectRefused(const PackResult& result, const std::vector<std::string>& mentions)
{
    EXPECT_NE(result.error, "");
    EXPECT_TRUE(result.container.empty());
    for (const std::string& mention : mentions)
        EXPECT_NE(result.error.find(mention), std::string::npos) << "\"" << result.error << "\" lacks \"" << mention << "\"";
}

}  // namespace

TEST(Packer, PacksInManifestOrderAndWalksBackToTheFiles)
{
    Set set("zeta.cfg\nresource/UI/Buy.res\nalpha.txt\ncfg/b.cfg\n", {"zeta.cfg", "resource/UI/Buy.res", "alpha.txt", "cfg/b.cfg"});
    const PackResult result = PackSet(set.folder, set.manifest);
    ASSERT_EQ(result.error, "");
    const Walked walked = WalkAll(result.container);
    const std::vector<std::string> order = {"zeta.cfg", "resource/UI/Buy.res", "alpha.txt", "cfg/b.cfg"};
    EXPECT_EQ(walked.names, order);
    for (std::size_t i = 0; i < order.size(); ++i)
        EXPECT_EQ(walked.data[i], "bytes of " + order[i]);
    EXPECT_EQ(walked.end, result.container.size());
}

TEST(Packer, EmptyFileMakesOneRecordThatEndsTheContainer)
{
    Set set("cfg/empty.cfg", {});
    WriteFile(set.folder + "/cfg/empty.cfg", "");
    const PackResult result = PackSet(set.folder, set.manifest);
    ASSERT_EQ(result.error, "");
    EXPECT_EQ(result.container.size(), 8 + std::string("cfg/empty.cfg").size());
    const Walked walked = WalkAll(result.container);
    ASSERT_EQ(walked.names, std::vector<std::string>{"cfg/empty.cfg"});
    EXPECT_EQ(walked.data[0], "");
    EXPECT_EQ(walked.end, result.container.size());
    // Packed, yet reported, so the build prints it.
    ASSERT_EQ(result.findings.size(), 1u);
    EXPECT_EQ(Describe(result.findings[0]),
              "warning: " + set.folder + "/cfg/empty.cfg: holds 0 bytes; the install writes it empty, over any file "
              "of the player's with that name: copy the real file in, or remove the file and its line");
}

TEST(Packer, RefusesManifestLinesThatAreNotPortableNames)
{
    struct Case {
        std::string name;
        std::string shown;   // how the message prints it
        std::string reason;  // what the message blames
    };
    // One name for each reason: which names break which rule is the name rule's own test.
    const Case cases[] = {
        {"what?.txt", "what?.txt", "Windows forbids"},
        {"cr\rlf.cfg", "cr\\x0Dlf.cfg", "control character"},
        {std::string("nul\0.cfg", 8), "nul\\x00.cfg", "zero byte"},
        {"caf\xE9.cfg", "caf\\xE9.cfg", "non-ASCII"},
        {"cfg\\ludax.cfg", "cfg\\ludax.cfg", "'\\'"},
        {"/abs.cfg", "/abs.cfg", "begins with '/'"},
        {"cfg//ludax.cfg", "cfg//ludax.cfg", "empty path segment"},
        {"cfg/", "cfg/", "ends with '/'"},
        {"cfg /a.cfg", "cfg /a.cfg", "which Windows drops"},
        {"maps/NUL.bsp", "maps/NUL.bsp", "device name"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.shown);
        // The bad name sits on line 2, after a good one, so the message must point past line 1.
        Set set("good.cfg\n" + c.name + "\n", {"good.cfg"});
        ExpectRefused(PackSet(set.folder, set.manifest), {set.manifest + ":2:", c.shown, c.reason});
    }
}

TEST(Packer, RefusesSetsThatDoNotMatchTheirManifest)
{
    {
        SCOPED_TRACE("empty manifest");
        Set set("", {"a.cfg"});
        ExpectRefused(PackSet(set.folder, set.manifest), {set.manifest});
    }
    {
        SCOPED_TRACE("exact duplicate");
        Set set("a.cfg\nb.cfg\na.cfg\n", {"a.cfg", "b.cfg"});
        ExpectRefused(PackSet(set.folder, set.manifest), {set.manifest + ":3:", "a.cfg", "line 1"});
    }
    {
        SCOPED_TRACE("missing file");
        Set set("a.cfg\ncfg/b.cfg\n", {"a.cfg"});
        ExpectRefused(PackSet(set.folder, set.manifest), {set.manifest + ":2:", set.folder + "/cfg/b.cfg"});
    }
    {
        SCOPED_TRACE("folder named as a file");
        Set set("a.cfg\ncfg\n", {"a.cfg", "cfg/b.cfg"});
        ExpectRefused(PackSet(set.folder, set.manifest), {set.manifest + ":2:", set.folder + "/cfg"});
    }
    {
        SCOPED_TRACE("file the manifest does not name");
        Set set("a.cfg\n", {"a.cfg", "cfg/stray.cfg"});
        ExpectRefused(PackSet(set.folder, set.manifest), {set.folder + "/cfg/stray.cfg", set.manifest});
    }
    {
        SCOPED_TRACE("no set folder");
        Set set("a.cfg\n", {});
        ExpectRefused(PackSet(set.folder + "/absent", set.manifest), {set.folder + "/absent"});
    }
    {
        SCOPED_TRACE("no manifest");
        Set set("a.cfg\n", {"a.cfg"});
        ExpectRefused(PackSet(set.folder, set.manifest + ".absent"), {set.manifest + ".absent"});
    }
}

TEST(Packer, RefusesAFileOf2To31Bytes)
{
    Set set("small.cfg\nmaps/huge.bsp\n", {"small.cfg"});
    MakeFolders(set.folder + "/maps");
    const std::string huge = set.folder + "/maps/huge.bsp";
    WriteFile(huge, "");
    // Sparse: the packer must refuse it by its size, before reading a byte.
    std::filesystem::resize_file(huge, std::uintmax_t{1} << 31);
    ExpectRefused(PackSet(set.folder, set.manifest), {huge, "2147483648"});
}

TEST(Packer, ChecksumIsTheCrc32OfZipAndGzip)
{
    EXPECT_EQ(Crc32("", 0), 0u);
    EXPECT_EQ(Crc32("123456789", 9), 0xCBF43926u);
    EXPECT_EQ(Crc32("a", 1), 0xE8B7BE43u);
}

TEST(Listing, ShowsEachRecordAndEveryWayTheSetHasMovedOn)
{
    Set set("b.cfg\na.cfg\nc.bsp\n", {"a.cfg", "b.cfg", "c.bsp"});
    WriteFile(set.folder + "/c.bsp", "123456789");
    const PackResult packed = PackSet(set.folder, set.manifest);
    ASSERT_EQ(packed.error, "");
    std::vector<ListedRecord> records;
    std::string error;
    ASSERT_TRUE(ListRecords(packed.container, records, error)) << error;
    ASSERT_EQ(records.size(), 3u);
    EXPECT_EQ(records[0].name, "b.cfg");
    EXPECT_EQ(records[0].size, std::string("bytes of b.cfg").size());
    EXPECT_EQ(records[2].name, "c.bsp");
    EXPECT_EQ(records[2].size, 9u);
    EXPECT_EQ(records[2].crc, 0xCBF43926u);
    EXPECT_TRUE(CompareWithSet(records, set.folder, set.manifest).empty());

    // Same size, other bytes; one file gone from set and manifest; one new; the rest reordered.
    WriteFile(set.folder + "/c.bsp", "123456780");
    std::filesystem::remove(set.folder + "/b.cfg");
    WriteFile(set.folder + "/d.cfg", "new");
    WriteFile(set.manifest, "c.bsp\r\na.cfg\r\nd.cfg\r\n");
    const std::vector<std::string> differences = CompareWithSet(records, set.folder, set.manifest);
    const std::vector<std::string> expected = {
        "c.bsp: the container holds 9 bytes, CRC-32 cbf43926, the set's file 9 bytes, CRC-32 b2288182",
        "d.cfg: in the set, not in the container",
        "b.cfg: in the container, not in the set",
        "the records are not in the manifest's order",
    };
    EXPECT_EQ(differences, expected);

    const std::vector<char> cut(packed.container.begin(), packed.container.end() - 1);
    EXPECT_FALSE(ListRecords(cut, records, error));
    EXPECT_NE(error.find("malformed"), std::string::npos) << error;
}
