#include "packer.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <system_error>

#include "portable_name.h"

namespace fs = std::filesystem;

namespace {

// Record lengths are signed 32-bit integers; so is the walk's position.
constexpr std::uint64_t kLengthLimit = std::uint64_t{1} << 31;

struct ManifestLine {
    int number;
    std::string name;
};

bool ReadWhole(const fs::path& path, std::string& bytes)
{
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return false;
    bytes.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    return !in.bad();
}

// Splits at LF; a final line without its LF still counts, an empty file has no lines.
std::vector<ManifestLine> SplitLines(const std::string& text)
{
    std::vector<ManifestLine> lines;
    std::size_t begin = 0;
    while (begin < text.size()) {
        std::size_t end = text.find('\n', begin);
        if (end == std::string::npos)
            end = text.size();
        lines.push_back({static_cast<int>(lines.size()) + 1, text.substr(begin, end - begin)});
        begin = end + 1;
    }
    return lines;
}

// Shows control and non-ASCII bytes as \xNN so a message never carries them raw.
std::string Printable(const std::string& name)
{
    std::string shown;
    for (unsigned char c : name) {
        if (c < 0x20 || c >= 0x7F) {
            const char* digits = "0123456789ABCDEF";
            shown += "\\x";
            shown += digits[c >> 4];
            shown += digits[c & 15];
        } else {
            shown += static_cast<char>(c);
        }
    }
    return shown;
}

void AppendLength(std::vector<char>& container, std::uint32_t length)
{
    for (int shift = 0; shift < 32; shift += 8)
        container.push_back(static_cast<char>(length >> shift & 0xFF));
}

// The first file below `setFolder` that the manifest does not name, or an empty string.
std::string UnnamedFile(const fs::path& setFolder, const std::map<std::string, int>& named, std::string& error)
{
    std::error_code failure;
    std::set<std::string> unnamed;  // sorted, so the same set always reports the same file
    for (fs::recursive_directory_iterator it(setFolder, failure), end; !failure && it != end;
         it.increment(failure)) {
        if (it->is_directory(failure))
            continue;
        const std::string relative = it->path().lexically_relative(setFolder).generic_string();
        if (!named.count(relative))
            unnamed.insert(relative);
    }
    if (failure)
        error = setFolder.generic_string() + ": cannot list the set folder: " + failure.message();
    return unnamed.empty() ? std::string() : *unnamed.begin();
}

}  // namespace

void AppendRecord(std::vector<char>& container, const std::string& name, const std::string& data)
{
    AppendLength(container, static_cast<std::uint32_t>(name.size()));
    container.insert(container.end(), name.begin(), name.end());
    AppendLength(container, static_cast<std::uint32_t>(data.size()));
    container.insert(container.end(), data.begin(), data.end());
}

PackResult PackSet(const std::string& setFolder, const std::string& manifestPath)
{
    PackResult result;
    auto fail = [&result](std::string message) {
        result.container.clear();
        result.error = std::move(message);
        return result;
    };
    const fs::path set(setFolder);
    std::error_code failure;
    if (!fs::is_directory(set, failure))
        return fail(setFolder + ": not a folder");

    std::string manifest;
    if (!ReadWhole(manifestPath, manifest))
        return fail(manifestPath + ": cannot read the manifest");
    const std::vector<ManifestLine> lines = SplitLines(manifest);
    if (lines.empty())
        return fail(manifestPath + ": names no files; a container holds at least one record");

    // Everything is checked before any file is read.
    std::map<std::string, int> named;  // name -> manifest line
    std::uint64_t total = 0;
    for (const ManifestLine& line : lines) {
        const std::string where = manifestPath + ":" + std::to_string(line.number) + ": ";
        const std::string shown = "\"" + Printable(line.name) + "\" ";
        std::string problem = PortableNameProblem(line.name);
        if (!problem.empty())
            return fail(where + "the name " + shown + problem);
        const auto earlier = named.find(line.name);
        if (earlier != named.end())
            return fail(where + shown + "repeats line " + std::to_string(earlier->second));
        named.emplace(line.name, line.number);

        const fs::path file = set / line.name;
        const fs::file_status status = fs::status(file, failure);
        if (!fs::exists(status))
            return fail(where + shown + "names a missing file: " + file.generic_string());
        if (!fs::is_regular_file(status))
            return fail(where + shown + "is not a regular file: " + file.generic_string());
        const std::uint64_t size = fs::file_size(file, failure);
        if (failure)
            return fail(file.generic_string() + ": cannot read its size: " + failure.message());
        if (size >= kLengthLimit)
            return fail(file.generic_string() + ": " + std::to_string(size) +
                        " bytes; a record's data must stay below 2^31 bytes");
        total += 8 + line.name.size() + size;
    }
    std::string listError;
    const std::string unnamed = UnnamedFile(set, named, listError);
    if (!listError.empty())
        return fail(listError);
    if (!unnamed.empty())
        return fail((set / unnamed).generic_string() + ": in the set folder but not named in " + manifestPath);
    if (total >= kLengthLimit)
        return fail(manifestPath + ": the container would hold " + std::to_string(total) +
                    " bytes; it must stay below 2^31");

    result.container.reserve(total);
    for (const ManifestLine& line : lines) {
        const fs::path file = set / line.name;
        std::string data;
        if (!ReadWhole(file, data))
            return fail(file.generic_string() + ": cannot read the file");
        if (data.size() >= kLengthLimit)
            return fail(file.generic_string() + ": grew past 2^31 bytes while packing");
        AppendRecord(result.container, line.name, data);
    }
    if (result.container.size() != total)
        return fail(setFolder + ": files changed size while packing");
    return result;
}
