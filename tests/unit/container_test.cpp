// The container reader over the embedded payloads and over damaged buffers. Damaged buffers are
// exactly sized heap vectors, so natively AddressSanitizer catches any read past their end.

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "container.h"
#include "embedded.h"
#include "packer.h"
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
    WalkRecords(buffer, 0, [&](const ContainerRecord& record) {
        EXPECT_GE(record.data, buffer.data());
        EXPECT_LE(record.data + record.size, buffer.data() + buffer.size());
        EXPECT_LE(record.next, buffer.size());
        seen.push_back({record.name, std::string(record.data, record.size), record.next});
    });
    return seen;
}

std::vector<std::string> ManifestNames(const std::string& manifest)
{
    std::vector<std::string> names;
    const std::string text = ReadFile(manifest);
    std::size_t begin = 0;
    while (begin < text.size()) {
        std::size_t end = text.find('\n', begin);
        if (end == std::string::npos)
            end = text.size();
        names.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return names;
}

// Written here byte by byte rather than with the packer, so a fault in one does not hide in the other.
std::string Le32(std::uint32_t value)
{
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(value >> shift & 0xFF);
    return bytes;
}

std::string Record(const std::string& name, const std::string& data)
{
    return Le32(static_cast<std::uint32_t>(name.size())) + name + Le32(static_cast<std::uint32_t>(data.size())) + data;
}

std::vector<char> Buffer(const std::string& bytes)
{
    return std::vector<char>(bytes.begin(), bytes.end());
}

struct Game {
    const char* folder;
    const EmbeddedContainer* payload;
    std::size_t records;
};

const Game games[] = {{"cs16", &cs16Payload, 36}, {"css", &cssPayload, 18}};

}  // namespace

TEST(EmbeddedContainer, HoldsExactlyTheManifestsFilesInOrder)
{
    for (const Game& game : games) {
        SCOPED_TRACE(game.folder);
        const std::string set = std::string(LUDAX_SOURCE_DIR) + "/payload/" + game.folder;
        const std::vector<std::string> names = ManifestNames(set + ".manifest");
        ASSERT_EQ(names.size(), game.records);

        const std::vector<char> buffer = LoadContainer(*game.payload);
        ASSERT_EQ(buffer.size(), game.payload->length);
        const std::vector<Seen> seen = Walk(buffer);
        ASSERT_EQ(seen.size(), game.records);
        for (std::size_t i = 0; i < seen.size(); ++i) {
            EXPECT_EQ(seen[i].name, names[i]);
            EXPECT_TRUE(seen[i].data == ReadFile(set + "/" + names[i])) << names[i] << " differs from its file";
        }
        EXPECT_EQ(seen.back().next, game.payload->length);
        // The stored zero byte follows the last record and belongs to none.
        EXPECT_EQ(game.payload->start[game.payload->length], '\0');
    }
}

TEST(EmbeddedContainer, IsWhatThePackerMakesOfTheCurrentSet)
{
    for (const Game& game : games) {
        SCOPED_TRACE(game.folder);
        const std::string set = std::string(LUDAX_SOURCE_DIR) + "/payload/" + game.folder;
        const PackResult packed = PackSet(set, set + ".manifest");
        ASSERT_EQ(packed.error, "");
        EXPECT_TRUE(LoadContainer(*game.payload) == packed.container) << "the program embeds a stale container";
    }
}

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

TEST(ContainerReader, RefusedRecordLeavesTheCallersRecordUntouched)
{
    const std::vector<char> buffer = Buffer(Record("a", "xyz") + Le32(1) + "b" + Le32(9));
    ContainerRecord record;
    ASSERT_TRUE(ReadRecord(buffer, 0, record));
    const ContainerRecord first = record;
    for (std::size_t position : {record.next, buffer.size(), buffer.size() + 1, std::size_t(-1), std::size_t(-4)}) {
        SCOPED_TRACE(position);
        EXPECT_FALSE(ReadRecord(buffer, position, record));
        EXPECT_EQ(record.name, first.name);
        EXPECT_EQ(record.data, first.data);
        EXPECT_EQ(record.size, first.size);
        EXPECT_EQ(record.next, first.next);
    }
}
