#include "list_command.h"

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "carried_containers.h"
#include "listing.h"

namespace fs = std::filesystem;

namespace {

// A container stays below 2 GiB and a Windows program below 4 GiB; nothing larger is read.
constexpr std::uintmax_t kLargestListed = std::uintmax_t{1} << 32;

bool ReadListed(const std::string& path, std::vector<char>& file)
{
    std::error_code failure;
    const fs::file_status status = fs::status(path, failure);
    if (!fs::exists(status)) {
        std::fprintf(stderr, "ludax-pack: %s: no such file\n", path.c_str());
        return false;
    }
    if (!fs::is_regular_file(status)) {
        std::fprintf(stderr, "ludax-pack: %s: not a file; name a container or a Ludax.exe\n", path.c_str());
        return false;
    }
    const std::uintmax_t size = fs::file_size(path, failure);
    if (!failure && size >= kLargestListed) {
        std::fprintf(stderr, "ludax-pack: %s: %ju bytes, more than any container or Ludax.exe can hold\n",
                     path.c_str(), size);
        return false;
    }
    // Read straight into the buffer the listing walks: one copy of the file in memory.
    std::ifstream in(path, std::ios::binary);
    if (!failure && in)
        file.resize(static_cast<std::size_t>(size));
    if (failure || !in || !in.read(file.data(), static_cast<std::streamsize>(file.size()))) {
        std::fprintf(stderr, "ludax-pack: %s: cannot read\n", path.c_str());
        return false;
    }
    return true;
}

void PrintRecords(const std::vector<ListedRecord>& records, std::size_t bytes)
{
    std::printf("%-8s  %10s  %s\n", "CRC-32", "bytes", "path");
    for (const ListedRecord& record : records)
        std::printf("%08x  %10llu  %s\n", static_cast<unsigned>(record.crc),
                    static_cast<unsigned long long>(record.size), record.name.c_str());
    std::printf("%zu records, %zu bytes\n", records.size(), bytes);
}

// Prints every difference with the set; true when there is none.
bool CarriesExactly(const std::vector<ListedRecord>& records, const std::string& path, const std::string& setFolder,
                    const std::string& manifest)
{
    const std::vector<std::string> differences = CompareWithSet(records, setFolder, manifest);
    for (const std::string& difference : differences)
        std::printf("differs: %s\n", difference.c_str());
    if (!differences.empty()) {
        std::fprintf(stderr, "ludax-pack: %s does not carry %s as it is now; run make to rebuild\n", path.c_str(),
                     setFolder.c_str());
        return false;
    }
    std::printf("%s carries exactly %s\n", path.c_str(), setFolder.c_str());
    return true;
}

int ListContainer(const std::string& path, const std::vector<char>& container, const std::vector<std::string>& sets)
{
    if (sets.size() == 1) {
        std::fprintf(stderr, "ludax-pack: %s is a container; compare it with one set: "
                             "ludax-pack list <container> <set-folder> <manifest>\n", path.c_str());
        return 2;
    }
    std::vector<ListedRecord> records;
    std::string error;
    const bool whole = ListRecords(container.data(), container.size(), records, error);
    if (records.empty()) {
        std::fprintf(stderr, "ludax-pack: %s: neither a payload container nor a Ludax.exe: %s\n", path.c_str(),
                     container.empty() ? "the file is empty" : "no record fits at its start");
        return 1;
    }
    PrintRecords(records, container.size());
    if (!whole) {
        std::fprintf(stderr, "ludax-pack: %s: %s\n", path.c_str(), error.c_str());
        return 1;
    }
    if (sets.empty())
        return 0;
    return CarriesExactly(records, path, sets[0], sets[1]) ? 0 : 1;
}

int ListProgram(const std::string& path, const std::vector<char>& file, const std::vector<std::string>& sets)
{
    if (sets.size() == 2) {
        std::fprintf(stderr, "ludax-pack: %s carries both sets; compare it with the folder that holds them: "
                             "ludax-pack list <Ludax.exe> <folder of cs16/, css/ and their manifests>\n",
                     path.c_str());
        return 2;
    }
    std::vector<CarriedContainer> containers;
    std::string error;
    if (!FindCarriedContainers(file, containers, error)) {
        std::fprintf(stderr, "ludax-pack: %s: %s\n", path.c_str(), error.c_str());
        return 1;
    }
    int status = 0;
    for (const CarriedContainer& carried : containers) {
        if (&carried != &containers.front())
            std::printf("\n");
        std::printf("%s (%s), at byte %zu of %s:\n", carried.title.c_str(), carried.game.c_str(), carried.offset,
                    path.c_str());
        std::vector<ListedRecord> records;
        const bool whole = ListRecords(file.data() + carried.offset, carried.length, records, error);
        PrintRecords(records, carried.length);
        if (!whole) {
            std::fprintf(stderr, "ludax-pack: %s: its %s container is %s\n", path.c_str(), carried.title.c_str(),
                         error.c_str());
            status = 1;
        } else if (!sets.empty()) {
            const std::string set = sets[0] + "/" + carried.game;
            if (!CarriesExactly(records, path, set, set + ".manifest"))
                status = 1;
        }
    }
    return status;
}

}  // namespace

int ListCommand(const std::string& path, const std::vector<std::string>& sets)
{
    std::vector<char> file;
    if (!ReadListed(path, file))
        return 1;
    if (LooksLikeWindowsProgram(file))
        return ListProgram(path, file, sets);
    return ListContainer(path, file, sets);
}
