// Finding the two containers in a built Ludax.exe: in a small Windows program written here with
// the layout of payload/embedded_data.S, and in damaged forms of it. Every program is an exactly
// sized heap vector, so natively AddressSanitizer catches any read past its end.

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "carried_containers.h"
#include "test_files.h"

namespace {

std::string Le16(std::uint16_t value)
{
    return Le32(value).substr(0, 2);
}

std::string Le64(std::uint64_t value)
{
    return Le32(static_cast<std::uint32_t>(value)) + Le32(static_cast<std::uint32_t>(value >> 32));
}

std::string Container(const std::vector<std::string>& names)
{
    std::string container;
    for (const std::string& name : names)
        container += Record(name, "bytes of " + name);
    return container;
}

// Marker, 64-bit length, 8 zero bytes, the container, one zero byte; padded to 16 bytes.
std::string Marked(const std::string& marker, const std::string& container)
{
    std::string bytes = marker + Le64(container.size()) + std::string(8, '\0') + container + '\0';
    bytes.resize((bytes.size() + 15) / 16 * 16, '\0');
    return bytes;
}

const std::string cs16 = Container({"config.cfg", "maps/de_x.bsp"});
const std::string css = Container({"cfg/valve.rc"});

std::string Padded(std::string bytes, std::size_t size)
{
    bytes.resize(size, '\0');
    return bytes;
}

// Where things lie in Program(): the section table, and the .rdata section's bytes.
constexpr std::size_t kTable = 0x188;
constexpr std::size_t kRdata = 0x600;
// What the linker put in .rdata before the containers: text, and a marker at an odd place.
const std::string rdataHead = Padded("text the linker put first", 32) + Padded("xLudaxPayloadCS16", 32);
const std::size_t cs16At = kRdata + rdataHead.size() + 32;
const std::size_t cssAt = cs16At - 32 + Marked("LudaxPayloadCS16", cs16).size() + 32;

// A 64-bit Windows program as MinGW's linker lays one out: MS-DOS header pointing at byte 0x80,
// file header, optional header, two section headers, each section's bytes at a 0x200 boundary.
std::string Program(const std::string& head = rdataHead)
{
    const std::string text(0x150, '\x90');
    const std::string rdata = head + Marked("LudaxPayloadCS16", cs16) + Marked("LudaxPayload_CSS", css);
    std::string file = "MZ" + std::string(0x3A, '\0') + Le32(0x80) + std::string(0x40, '\0');
    file += std::string("PE\0\0", 4) + Le16(0x8664) + Le16(2) + std::string(12, '\0') + Le16(0xF0) + Le16(0x22);
    file += Le16(0x20B) + std::string(0xEE, '\0');
    file += Padded(".text", 8) + Le32(text.size()) + Le32(0x1000) + Le32(0x200) + Le32(0x400) + std::string(16, '\0');
    file += Padded(".rdata", 8) + Le32(rdata.size()) + Le32(0x2000) + Le32((rdata.size() + 0x1FF) / 0x200 * 0x200) +
            Le32(kRdata) + std::string(16, '\0');
    file = Padded(file, 0x400) + text;
    file = Padded(file, kRdata) + rdata;
    return Padded(file, (file.size() + 0x1FF) / 0x200 * 0x200);
}

std::vector<char> Bytes(const std::string& text)
{
    return std::vector<char>(text.begin(), text.end());
}

void Put(std::string& file, std::size_t at, const std::string& bytes)
{
    file.replace(at, bytes.size(), bytes);
}

}  // namespace

TEST(CarriedContainers, FoundByTheirMarkersInTheProgramsSections)
{
    const std::vector<char> program = Bytes(Program());
    ASSERT_TRUE(LooksLikeWindowsProgram(program));
    std::vector<CarriedContainer> found;
    std::string error;
    ASSERT_TRUE(FindCarriedContainers(program, found, error)) << error;
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0].game, "cs16");
    EXPECT_EQ(found[0].title, "Counter-Strike 1.6");
    EXPECT_EQ(found[0].offset, cs16At);
    EXPECT_EQ(std::string(program.data() + found[0].offset, found[0].length), cs16);
    EXPECT_EQ(found[1].game, "css");
    EXPECT_EQ(found[1].title, "Counter-Strike: Source");
    EXPECT_EQ(found[1].offset, cssAt);
    EXPECT_EQ(std::string(program.data() + found[1].offset, found[1].length), css);

    // A marker on a boundary that heads no container (its length runs past the section) is passed over.
    const std::string decoy = "LudaxPayloadCS16" + Le64(1u << 30) + std::string(8, '\0');
    ASSERT_TRUE(FindCarriedContainers(Bytes(Program(rdataHead + decoy)), found, error)) << error;
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0].offset, cs16At + decoy.size());
    EXPECT_EQ(found[1].offset, cssAt + decoy.size());

    // A container file never looks like a program.
    EXPECT_FALSE(LooksLikeWindowsProgram(Bytes(cs16)));
    EXPECT_FALSE(FindCarriedContainers(Bytes(cs16), found, error));
    EXPECT_EQ(error, "not a Windows program: it does not start with MZ");
}

TEST(CarriedContainers, DamagedOrForeignProgramsAreRefusedWithWhatIsWrong)
{
    struct Case {
        const char* what;
        std::function<void(std::string&)> damage;
        std::string error;  // the whole message, or its start
    };
    const std::size_t rdataHeader = kTable + 40;
    const std::size_t cs16Marker = cs16At - 32;
    const Case cases[] = {
        {"cut inside the MS-DOS header", [](std::string& f) { f.resize(0x3E); },
         "damaged: it ends at byte 62, inside a Windows program's first header: it is cut short"},
        {"header offset past the end", [](std::string& f) { Put(f, 0x3C, Le32(0xFFFFFFF0)); },
         "damaged: no Windows program header at byte 4294967280, where its MS-DOS header points"},
        {"too many sections", [](std::string& f) { Put(f, 0x86, Le16(0xFFFF)); },
         "damaged: its header counts 65535 sections; a Windows program has 1 to 96"},
        {"cut inside the section table", [](std::string& f) { f.resize(kTable + 50); },
         "damaged: its section table runs past the end of the file (442 bytes): it is cut short"},
        {"cut inside a section", [](std::string& f) { f.resize(kRdata + 100); },
         "damaged: section 2 (.rdata), bytes 1536 to 2048, runs past the end of the file (1636 bytes): it is cut short"},
        {"section sized past the end", [](std::string& f) { Put(f, rdataHeader + 16, Le32(0xFFFFFFFF)); },
         "damaged: section 2 (.rdata), bytes 1536 to 4294968831, runs past the end of the file"},
        {"length of 2^64 - 1", [&](std::string& f) { Put(f, cs16Marker + 16, Le64(~std::uint64_t{0})); },
         "damaged: the Counter-Strike 1.6 container marked at byte " + std::to_string(cs16Marker) +
             ": its length, 18446744073709551615 bytes, runs past the end of section 2 (.rdata)"},
        {"zero bytes after the length", [&](std::string& f) { Put(f, cs16Marker + 24, "x"); },
         "damaged: the Counter-Strike 1.6 container marked at byte " + std::to_string(cs16Marker) +
             ": the 8 bytes after its length are not zero"},
        {"no zero byte after the container", [&](std::string& f) { Put(f, cs16At + cs16.size(), "x"); },
         "damaged: the Counter-Strike 1.6 container marked at byte " + std::to_string(cs16Marker) +
             ": the zero byte after the container is missing"},
        {"section shorter than its last container", [](std::string& f) { Put(f, rdataHeader + 8, Le32(cssAt + 3 - kRdata)); },
         "damaged: the Counter-Strike: Source container marked at byte " + std::to_string(cssAt - 32) +
             ": its length, " + std::to_string(css.size()) + " bytes, runs past the end of section 2 (.rdata)"},
        {"no Counter-Strike: Source marker", [](std::string& f) { Put(f, cssAt - 32, "LudaxPayload_CSs"); },
         "carries no Counter-Strike: Source container (no LudaxPayload_CSS marker): not a Ludax.exe, or one built "
         "before its containers were marked; build it again with make"},
        {"another program", [&](std::string& f) { Put(f, cs16Marker, "l"); Put(f, cssAt - 32, "l"); },
         "carries no Counter-Strike 1.6 container (no LudaxPayloadCS16 marker)"},
        // The loader puts the section 8 bytes off a 16-byte boundary, so no marker lies on one.
        {"markers off their boundary", [](std::string& f) { Put(f, rdataHeader + 12, Le32(0x2008)); },
         "carries no Counter-Strike 1.6 container"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        std::string file = Program();
        c.damage(file);
        std::vector<CarriedContainer> found(1);
        std::string error;
        EXPECT_FALSE(FindCarriedContainers(Bytes(file), found, error));
        EXPECT_TRUE(found.empty());
        EXPECT_EQ(error.substr(0, c.error.size()), c.error);
    }
}
