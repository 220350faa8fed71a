// The container reader over whole and damaged buffers, each an exactly sized heap vector, so
// that natively AddressSanitizer catches any read past its end.

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "container.h"
#include "manifest.h"
#include "test_files.h"

namespace {

struct Seen {
    std::string name;
    std::string data;
    std::size_t next;
};

// Every record the walk visits; also checks that each one lies inside the buffer.
std::vector<Seen> Walk(const std::vector<char>& buffer)
{
    std::vector<Seen> seen;
    WalkRecords(buffer.data(), buffer.size(), 0, [&](const ContainerRecord& record) {
        EXPECT_GE(record.data, buffer.data());
        EXPECT_LE(record.data + record.size, buffer.data() + buffer.size());
        EXPECT_LE(record.next, buffer.size());
        seen.push_back({record.name, std::string(record.data, record.size), record.next});
        return true;
    });
    return seen;
}

std::vector<char> Buffer(const std::string& bytes)
{
    return std::vector<char>(bytes.begin(), bytes.end());
}

}  // namespace

TEST(ContainerReader, TruncatedContainerYieldsOnlyTheWholeRecordsBeforeTheCut)
{
    const std::vector<std::string> records = {Record("config.cfg", "bind w +forward\r\n"), Record("empty.txt", ""),
                                              Record("maps/x.bsp", std::string(37, '\x80'))};
    std::string whole;
    std::vector<std::size_t> ends;
    for (const std::string& record : records) {
        whole += record;
        ends.push_back(whole.size());
    }
    const std::vector<Seen> complete = Walk(Buffer(whole));
    ASSERT_EQ(complete.size(), 3u);
    EXPECT_EQ(complete[1].name, "empty.txt");
    EXPECT_EQ(complete[1].data, "");
    EXPECT_EQ(complete[2].data, std::string(37, '\x80'));

    for (std::size_t cut = 0; cut < whole.size(); ++cut) {
        SCOPED_TRACE("cut at " + std::to_string(cut));
        const std::vector<Seen> seen = Walk(Buffer(whole.substr(0, cut)));
        std::size_t whole_records = 0;
        while (whole_records < ends.size() && ends[whole_records] <= cut)
            ++whole_records;
        ASSERT_EQ(seen.size(), whole_records);
        for (std::size_t i = 0; i < seen.size(); ++i) {
            EXPECT_EQ(seen[i].name, complete[i].name);
            EXPECT_EQ(seen[i].data, complete[i].data);
            EXPECT_EQ(seen[i].next, ends[i]);
        }
    }
}

TEST(ContainerReader, LengthThatCannotBeTrueStopsTheWalkBeforeThatRecord)
{
    const std::string good = Record("autobuy.txt", "m4a1 ak47");
    struct Case {
        const char* what;
        std::string bad;
    };
    const Case cases[] = {
        {"name length one past the end", Le32(5) + "abcd"},
        {"name length far past the end", Le32(0x7FFFFFFF) + "abcd" + Le32(0)},
        {"name length -1", Le32(0xFFFFFFFF) + "abcd" + Le32(0)},
        {"name length -2^31", Le32(0x80000000) + "abcd" + Le32(0)},
        {"data length one past the end", Le32(1) + "a" + Le32(4) + "xyz"},
        {"data length far past the end", Le32(1) + "a" + Le32(0x7FFFFFFF) + "xyz"},
        {"data length -1", Le32(1) + "a" + Le32(0xFFFFFFFF) + "xyz"},
        {"data length -2^31", Le32(1) + "a" + Le32(0x80000000)},
        {"name length cut short", std::string("\x01\x00", 2)},
        {"data length missing", Le32(1) + "a"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(Walk(Buffer(c.bad)).size(), 0u);
        const std::vector<Seen> seen = Walk(Buffer(good + c.bad));
        ASSERT_EQ(seen.size(), 1u);
        EXPECT_EQ(seen[0].name, "autobuy.txt");
        EXPECT_EQ(seen[0].data, "m4a1 ak47");
    }
    EXPECT_EQ(Walk(std::vector<char>()).size(), 0u);
}

TEST(Manifest, LinesEndInLfOrCrLfAndEmptyLinesArePassedOver)
{
    const std::vector<ManifestLine> lines = ParseManifest("a.cfg\r\n\r\ncfg/b.cfg\n\nlast.txt");
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0].name, "a.cfg");
    EXPECT_EQ(lines[0].number, 1);
    EXPECT_EQ(lines[1].name, "cfg/b.cfg");
    EXPECT_EQ(lines[1].number, 3);
    EXPECT_EQ(lines[2].name, "last.txt");
    EXPECT_EQ(lines[2].number, 5);
    // A CR that ends no line stays in the name, where the name check refuses it.
    const std::vector<ManifestLine> odd = ParseManifest("a.cfg\rb.cfg\nc.cfg\r");
    ASSERT_EQ(odd.size(), 2u);
    EXPECT_EQ(odd[0].name, "a.cfg\rb.cfg");
    EXPECT_EQ(odd[1].name, "c.cfg\r");
    EXPECT_TRUE(ParseManifest("").empty());
    EXPECT_TRUE(ParseManifest("\n\r\n").empty());
}
