#include "listing.h"

#include <algorithm>
#include <cstdio>
#include <map>

#include <zlib.h>

#include "container.h"
#include "manifest.h"
#include "set_check.h"

namespace {

// The CRC-32 zip tools and the `crc32` command show for the same bytes.
std::uint32_t Crc32(const char* data, std::size_t size)
{
    return static_cast<std::uint32_t>(crc32_z(0, reinterpret_cast<const Bytef*>(data), size));
}

std::string Hex(std::uint32_t crc)
{
    char text[16];
    std::snprintf(text, sizeof text, "%08x", static_cast<unsigned>(crc));
    return text;
}

std::string Figure(const ListedRecord& record)
{
    return std::to_string(record.size) + " bytes, CRC-32 " + Hex(record.crc);
}

}  // namespace

bool ListRecords(const char* start, std::size_t length, std::vector<ListedRecord>& records, std::string& error)
{
    records.clear();
    std::size_t end = 0;
    WalkRecords(start, length, 0, [&](const ContainerRecord& record) {
        records.push_back({record.name, record.size, Crc32(record.data, record.size)});
        end = record.next;
        return true;
    });
    if (records.empty() || end != length) {
        error = "malformed: the whole records end at byte " + std::to_string(end) + " of " + std::to_string(length);
        return false;
    }
    return true;
}

std::vector<std::string> CompareWithSet(const std::vector<ListedRecord>& records, const std::string& setFolder,
                                        const std::string& manifestPath)
{
    std::vector<std::string> differences;
    std::string text;
    if (!ReadWhole(manifestPath, text))
        return {manifestPath + ": cannot read the manifest"};
    std::map<std::string, const ListedRecord*> carried;
    for (const ListedRecord& record : records)
        carried.emplace(record.name, &record);

    std::vector<std::string> order;
    for (const ManifestLine& line : ParseManifest(text)) {
        const auto found = carried.find(line.name);
        std::string bytes;
        if (!ReadWhole(setFolder + "/" + line.name, bytes)) {
            differences.push_back(line.name + ": cannot read the set's file");
        } else if (found == carried.end()) {
            differences.push_back(line.name + ": in the set, not in the container");
        } else {
            const ListedRecord file = {line.name, bytes.size(), Crc32(bytes.data(), bytes.size())};
            if (file.size != found->second->size || file.crc != found->second->crc)
                differences.push_back(line.name + ": the container holds " + Figure(*found->second) +
                                      ", the set's file " + Figure(file));
        }
        if (found != carried.end()) {
            order.push_back(line.name);
            carried.erase(found);
        }
    }
    for (const auto& left : carried)
        differences.push_back(left.first + ": in the container, not in the set");
    std::vector<std::string> stored;
    for (const ListedRecord& record : records)
        if (std::find(order.begin(), order.end(), record.name) != order.end())
            stored.push_back(record.name);
    if (stored != order)
        differences.push_back("the records are not in the manifest's order");
    return differences;
}
