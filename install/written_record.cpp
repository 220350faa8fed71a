#include "written_record.h"

#include <algorithm>
#include <vector>

#include "system.h"

namespace {

std::vector<std::string> Fields(const std::string& line)
{
    std::vector<std::string> fields;
    for (std::size_t at = 0;;) {
        const std::size_t tab = line.find('\t', at);
        fields.push_back(line.substr(at, tab - at));
        if (tab == std::string::npos)
            return fields;
        at = tab + 1;
    }
}

bool Decimal(const std::string& text, std::uint64_t& value)
{
    if (text.empty() || text.size() > 19 || text.find_first_not_of("0123456789") != std::string::npos)
        return false;
    value = std::stoull(text);
    return true;
}

bool Digest(const std::string& text, Sha256::Digest& digest)
{
    if (text.size() != 64 || text.find_first_not_of("0123456789abcdef") != std::string::npos)
        return false;
    for (std::size_t i = 0; i < digest.size(); ++i)
        digest[i] = static_cast<std::uint8_t>(std::stoul(text.substr(2 * i, 2), nullptr, 16));
    return true;
}

void Take(const std::string& line, WrittenRecord& record)
{
    const std::vector<std::string> fields = Fields(line);
    if (fields.size() == 2 && fields[0] == "game" && !fields[1].empty()) {
        if (std::find(record.games.begin(), record.games.end(), fields[1]) == record.games.end())
            record.games.push_back(fields[1]);
    } else if (fields.size() == 2 && fields[0] == "folder" && !fields[1].empty()) {
        record.folders.emplace(sys::NameKey(fields[1]), fields[1]);
    } else if (fields.size() == 4 && fields[0] == "file" && !fields[3].empty()) {
        WrittenBytes bytes;
        if (!Decimal(fields[1], bytes.size) || !Digest(fields[2], bytes.digest))
            return;
        const std::string key = sys::NameKey(fields[3]);
        record.fileNames.emplace(key, fields[3]);
        std::vector<WrittenBytes>& versions = record.files[key];
        if (std::find(versions.begin(), versions.end(), bytes) == versions.end())
            versions.push_back(bytes);
    }
}

}  // namespace

bool WrittenRecord::HasFolder(const std::string& relative) const { return folders.count(sys::NameKey(relative)) > 0; }

bool WrittenRecord::HasFile(const std::string& relative, const WrittenBytes& bytes) const
{
    const auto found = files.find(sys::NameKey(relative));
    return found != files.end() && std::find(found->second.begin(), found->second.end(), bytes) != found->second.end();
}

std::string GameLine(const std::string& gameFolder) { return "game\t" + gameFolder; }

std::string FolderLine(const std::string& relative) { return "folder\t" + relative; }

std::string FileLine(const std::string& relative, const WrittenBytes& bytes)
{
    return "file\t" + std::to_string(bytes.size) + "\t" + HexDigest(bytes.digest) + "\t" + relative;
}

sys::Status ReadWrittenRecord(const std::string& path, WrittenRecord& record)
{
    return ReadLines(path, [&](const std::string& line) { Take(line, record); }, &record.extent);
}

sys::Status BytesOfFile(const std::string& path, WrittenBytes& bytes)
{
    sys::File file = sys::File::OpenForReading(path);
    if (!file.IsOpen())
        return sys::Status::Failed(file.OpenFailure());
    Sha256 sha;
    std::vector<char> block(static_cast<std::size_t>(std::min<std::uint64_t>(file.Size(), 1 << 20)));
    sys::Status read;
    for (std::uint64_t left = file.Size(); read && left > 0;) {
        const std::size_t part = static_cast<std::size_t>(std::min<std::uint64_t>(left, block.size()));
        read = file.Read(block.data(), part);
        sha.Add(block.data(), part);
        left -= part;
    }
    bytes = {file.Size(), sha.Finish()};
    const sys::Status closed = file.Close();
    return read ? closed : read;
}
