#include "carried_containers.h"

#include <cstdint>
#include <cstring>

#include "little_endian.h"

namespace {

constexpr std::size_t kMarkerSize = 16;
constexpr std::size_t kContainerAfterMarker = 32;  // marker, length, 8 zero bytes
constexpr std::size_t kSignatureAndFileHeader = 24;  // "PE\0\0" and the COFF file header
constexpr std::size_t kSectionHeaderSize = 40;
constexpr std::uint16_t kMostSections = 96;  // the most the Windows loader accepts

struct Game {
    const char* folder;
    const char* title;
    const char* marker;  // as payload/embedded_data.S.in writes it
};

const Game kGames[] = {
    {"cs16", "Counter-Strike 1.6", "LudaxPayloadCS16"},
    {"css", "Counter-Strike: Source", "LudaxPayload_CSS"},
};

// The part of one section that the file holds.
struct Section {
    std::string name;                 // for messages: "section 2 (.rdata)"
    std::uint32_t virtualAddress = 0;  // where the loader puts it: the .S file's alignment holds there
    std::size_t offset = 0;
    std::size_t size = 0;
};

std::string SectionName(const char* field, std::size_t number)
{
    std::string name;
    for (std::size_t i = 0; i < 8 && field[i] != '\0'; ++i)
        name += field[i] >= 0x20 && field[i] < 0x7F ? field[i] : '?';
    return "section " + std::to_string(number) + " (" + name + ")";
}

// The sections that hold bytes of the file, each checked to lie inside it.
bool ReadSections(const std::vector<char>& file, std::vector<Section>& sections, std::string& error)
{
    const char* bytes = file.data();
    const std::size_t size = file.size();
    const std::string cutShort = " runs past the end of the file (" + std::to_string(size) + " bytes): it is cut short";
    std::uint32_t header = 0;
    if (!LooksLikeWindowsProgram(file)) {
        error = "not a Windows program: it does not start with MZ";
        return false;
    }
    if (!ReadLittleEndian(bytes, size, 0x3C, header)) {
        error = "damaged: it ends at byte " + std::to_string(size) +
                ", inside a Windows program's first header: it is cut short";
        return false;
    }
    if (header > size || size - header < kSignatureAndFileHeader || std::memcmp(bytes + header, "PE\0\0", 4) != 0) {
        error = "damaged: no Windows program header at byte " + std::to_string(header) +
                ", where its MS-DOS header points";
        return false;
    }
    std::uint16_t count = 0, optionalHeaderSize = 0;
    ReadLittleEndian(bytes, size, header + 6, count);
    ReadLittleEndian(bytes, size, header + 20, optionalHeaderSize);
    if (count == 0 || count > kMostSections) {
        error = "damaged: its header counts " + std::to_string(count) + " sections; a Windows program has 1 to " +
                std::to_string(kMostSections);
        return false;
    }
    const std::uint64_t table = std::uint64_t{header} + kSignatureAndFileHeader + optionalHeaderSize;
    if (table + std::uint64_t{count} * kSectionHeaderSize > size) {
        error = "damaged: its section table" + cutShort;
        return false;
    }
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t at = static_cast<std::size_t>(table) + i * kSectionHeaderSize;
        std::uint32_t virtualSize = 0, virtualAddress = 0, rawSize = 0, rawOffset = 0;
        ReadLittleEndian(bytes, size, at + 8, virtualSize);
        ReadLittleEndian(bytes, size, at + 12, virtualAddress);
        ReadLittleEndian(bytes, size, at + 16, rawSize);
        ReadLittleEndian(bytes, size, at + 20, rawOffset);
        Section section{SectionName(bytes + at, i + 1), virtualAddress, rawOffset, rawSize};
        if (std::uint64_t{rawOffset} + rawSize > size) {
            error = "damaged: " + section.name + ", bytes " + std::to_string(rawOffset) + " to " +
                    std::to_string(std::uint64_t{rawOffset} + rawSize) + "," + cutShort;
            return false;
        }
        // The file's part is padded to a round size; the section's own bytes end at its virtual size.
        if (virtualSize != 0 && virtualSize < rawSize)
            section.size = virtualSize;
        if (section.size != 0)
            sections.push_back(section);
    }
    return true;
}

// What keeps the marker at `position` of `section` from heading a container; empty when the
// length, the zero bytes and the container's closing zero byte all lie inside the section.
std::string MarkedProblem(const std::vector<char>& file, const Section& section, std::size_t position,
                          std::size_t& length)
{
    const std::size_t end = section.offset + section.size;
    std::uint64_t declared = 0, padding = 0;
    if (!ReadLittleEndian(file.data(), end, position + kMarkerSize, declared) ||
        !ReadLittleEndian(file.data(), end, position + kMarkerSize + 8, padding))
        return "its length runs past the end of " + section.name;
    if (padding != 0)
        return "the 8 bytes after its length are not zero";
    const std::size_t start = position + kContainerAfterMarker;
    if (start > end || declared >= end - start)  // the closing zero byte must fit too
        return "its length, " + std::to_string(declared) + " bytes, runs past the end of " + section.name;
    if (file[start + declared] != '\0')
        return "the zero byte after the container is missing";
    length = static_cast<std::size_t>(declared);
    return "";
}

// The first marked container of `game` in the sections; false with `error` when there is none.
bool FindMarked(const std::vector<char>& file, const std::vector<Section>& sections, const Game& game,
                CarriedContainer& found, std::string& error)
{
    std::string firstProblem;
    for (const Section& section : sections) {
        // Markers lie at 16-byte boundaries of the loaded program.
        std::size_t position = section.offset + (16 - section.virtualAddress % 16) % 16;
        for (; position < section.offset + section.size && section.offset + section.size - position >= kMarkerSize;
             position += 16) {
            if (std::memcmp(file.data() + position, game.marker, kMarkerSize) != 0)
                continue;
            std::size_t length = 0;
            const std::string problem = MarkedProblem(file, section, position, length);
            if (problem.empty()) {
                found = {game.folder, game.title, position + kContainerAfterMarker, length};
                return true;
            }
            if (firstProblem.empty())
                firstProblem = "damaged: the " + std::string(game.title) + " container marked at byte " +
                               std::to_string(position) + ": " + problem;
        }
    }
    error = !firstProblem.empty() ? firstProblem
                                  : "carries no " + std::string(game.title) + " container (no " + game.marker +
                                        " marker): not a Ludax.exe, or one built before its containers were "
                                        "marked; build it again with make";
    return false;
}

}  // namespace

bool LooksLikeWindowsProgram(const std::vector<char>& file)
{
    return file.size() >= 2 && file[0] == 'M' && file[1] == 'Z';
}

bool FindCarriedContainers(const std::vector<char>& file, std::vector<CarriedContainer>& containers,
                           std::string& error)
{
    containers.clear();
    std::vector<Section> sections;
    if (!ReadSections(file, sections, error))
        return false;
    for (const Game& game : kGames) {
        CarriedContainer found;
        if (!FindMarked(file, sections, game, found, error)) {
            containers.clear();
            return false;
        }
        containers.push_back(found);
    }
    return true;
}
