// The packer: the containers it makes walk back to the set's files, and every flaw that would
// make a malformed or unwritable container stops it with a message naming the culprit.

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "listing.h"
#include "packer.h"
#include "test_files.h"

namespace {

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

TEST(Packer, PacksInManifestOrderAndWarnsOfAnEmptyFile)
{
    Set set("zeta.cfg\nresource/UI/Buy.res\nalpha.txt\ncfg/empty.cfg\n", {"zeta.cfg", "resource/UI/Buy.res", "alpha.txt"});
    WriteFile(set.folder + "/cfg/empty.cfg", "");
    const PackResult result = PackSet(set.folder, set.manifest);
    ASSERT_EQ(result.error, "");
    EXPECT_EQ(std::string(result.container.begin(), result.container.end()),
              Record("zeta.cfg", "bytes of zeta.cfg") + Record("resource/UI/Buy.res", "bytes of resource/UI/Buy.res") +
                  Record("alpha.txt", "bytes of alpha.txt") + Record("cfg/empty.cfg", ""));
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
        {"café.cfg", "caf\\xC3\\xA9.cfg", "non-ASCII"},
        {Western("café.cfg"), "caf\\xE9.cfg", "not UTF-8"},
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
    // In the mentions, "<m>" stands for the manifest's path and "<s>" for the set folder's.
    const struct {
        const char* what;
        std::string manifest;
        std::vector<std::string> files;
        std::vector<std::string> mentions;
        const char* folderSuffix = "";
        const char* manifestSuffix = "";
    } cases[] = {
        {"empty manifest", "", {"a.cfg"}, {"<m>"}},
        {"exact duplicate", "a.cfg\nb.cfg\na.cfg\n", {"a.cfg", "b.cfg"}, {"<m>:3:", "a.cfg", "line 1"}},
        {"missing file", "a.cfg\ncfg/b.cfg\n", {"a.cfg"}, {"<m>:2:", "<s>/cfg/b.cfg"}},
        {"folder named as a file", "a.cfg\ncfg\n", {"a.cfg", "cfg/b.cfg"}, {"<m>:2:", "<s>/cfg"}},
        {"file the manifest does not name", "a.cfg\n", {"a.cfg", "cfg/stray.cfg"}, {"<s>/cfg/stray.cfg", "<m>"}},
        {"no set folder", "a.cfg\n", {}, {"<s>/absent"}, "/absent"},
        {"no manifest", "a.cfg\n", {"a.cfg"}, {"<m>.absent"}, "", ".absent"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Set set(c.manifest, c.files);
        std::vector<std::string> mentions;
        for (std::string mention : c.mentions) {
            if (mention.compare(0, 3, "<m>") == 0)
                mention.replace(0, 3, set.manifest);
            else if (mention.compare(0, 3, "<s>") == 0)
                mention.replace(0, 3, set.folder);
            mentions.push_back(mention);
        }
        ExpectRefused(PackSet(set.folder + c.folderSuffix, set.manifest + c.manifestSuffix), mentions);
    }
}

TEST(Packer, RefusesAFileOf2To31Bytes)
{
    Set set("small.cfg\nmaps/huge.bsp\n", {"small.cfg"});
    const std::string huge = set.folder + "/maps/huge.bsp";
    WriteFile(huge, "");
    // Sparse: the packer must refuse it by its size, before reading a byte.
    ResizeFile(huge, std::uint64_t{1} << 31);
    ExpectRefused(PackSet(set.folder, set.manifest), {huge, "2147483648"});
}

TEST(Listing, ShowsEachRecordAndEveryWayTheSetHasMovedOn)
{
    Set set("b.cfg\na.cfg\nc.bsp\n", {"a.cfg", "b.cfg", "c.bsp"});
    WriteFile(set.folder + "/c.bsp", "123456789");
    const PackResult packed = PackSet(set.folder, set.manifest);
    ASSERT_EQ(packed.error, "");
    std::vector<ListedRecord> records;
    std::string error;
    ASSERT_TRUE(ListRecords(packed.container.data(), packed.container.size(), records, error)) << error;
    ASSERT_EQ(records.size(), 3u);
    EXPECT_EQ(records[0].name, "b.cfg");
    EXPECT_EQ(records[0].size, std::string("bytes of b.cfg").size());
    EXPECT_EQ(records[2].name, "c.bsp");
    EXPECT_EQ(records[2].size, 9u);
    EXPECT_EQ(records[2].crc, 0xCBF43926u);
    EXPECT_TRUE(CompareWithSet(records, set.folder, set.manifest).empty());

    // Same size, other bytes; one file gone from set and manifest; one new; the rest reordered.
    WriteFile(set.folder + "/c.bsp", "123456780");
    RemovePath(set.folder + "/b.cfg");
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
    EXPECT_FALSE(ListRecords(cut.data(), cut.size(), records, error));
    EXPECT_NE(error.find("malformed"), std::string::npos) << error;
}
