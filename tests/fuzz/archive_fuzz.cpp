// The uninstall's archive walk over arbitrary bytes, from a real file: it must visit exactly
// the records a plain reading of the layout finds (from offset 4, up to a record that does
// not fit or one of eight zero bytes), hand over each record's bytes unchanged, and skip
// names too long for any path unread. Every name it yields, and the input itself taken as a
// name, must not reach above the folder it is put in once the name rules accept it.

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "backup_archive.h"
#include "safe_paths.h"
#include "windows_names.h"
#include "system.h"

namespace {

void Require(bool condition)
{
    if (!condition)
        std::abort();
}

std::int64_t Le32At(const std::string& bytes, std::size_t position)
{
    std::uint32_t value = 0;
    for (int i = 3; i >= 0; --i)
        value = value << 8 | static_cast<unsigned char>(bytes[position + i]);
    return static_cast<std::int32_t>(value);
}

struct Seen {
    std::string name;
    bool tooLong;
    std::string data;
    bool operator==(const Seen& other) const
    {
        return name == other.name && tooLong == other.tooLong && data == other.data;
    }
};

std::vector<Seen> PlainReading(const std::string& bytes)
{
    std::vector<Seen> records;
    const std::uint64_t size = bytes.size();
    std::uint64_t position = 4;
    while (size > 4 && position < size && size - position >= 4) {
        const std::int64_t nameLength = Le32At(bytes, position);
        if (nameLength < 0 || size - position - 4 < static_cast<std::uint64_t>(nameLength) + 4)
            break;
        const std::int64_t dataLength = Le32At(bytes, position + 4 + nameLength);
        if (dataLength < 0 || size - position - 8 - nameLength < static_cast<std::uint64_t>(dataLength))
            break;
        if (nameLength == 0 && dataLength == 0)
            break;
        const bool tooLong = static_cast<std::uint64_t>(nameLength) > sys::maxPathBytes;
        records.push_back({tooLong ? std::string() : bytes.substr(position + 4, nameLength), tooLong,
                           bytes.substr(position + 8 + nameLength, dataLength)});
        position += 8 + nameLength + dataLength;
    }
    return records;
}

// An accepted name, anywhere below the content folder, never reaches above where it is put.
void CheckName(const std::string& name)
{
    const bool acceptable = IsWindowsName(name);
    if (acceptable)
        Require(name.find("/../") == std::string::npos && name.compare(0, 3, "../") != 0 && name != ".." &&
                name.find('\\') == std::string::npos && name.find(':') == std::string::npos);
    const std::string game = "C:/Steam/steamapps/common/Half-Life";
    if (name.empty() || name[0] != '/')
        Require(IsRemovableLine(game + "/cstrike/" + name, game, game + "/cstrike/") == acceptable);
}

// The file each input is written to, in TMPDIR, removed when the fuzzer ends.
struct ScratchFile {
    std::string path;
    ScratchFile()
    {
        const char* folder = std::getenv("TMPDIR");
        std::string pattern = std::string(folder && *folder ? folder : "/tmp") + "/ludax-archive-fuzz-XXXXXX";
        const int file = mkstemp(pattern.data());
        Require(file >= 0);
        close(file);
        path = pattern;
    }
    ~ScratchFile() { unlink(path.c_str()); }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const ScratchFile scratch;
    const std::string& path = scratch.path;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    std::FILE* file = std::fopen(path.c_str(), "wb");
    Require(file && std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size() && std::fclose(file) == 0);

    std::vector<Seen> walked;
    {
        ArchiveReader reader(path);
        Require(reader.Opened());
        std::string name;
        bool tooLong = false;
        std::uint32_t length = 0;
        while (reader.Next(name, tooLong, length)) {
            Require(name.size() <= sys::maxPathBytes);
            std::string copied;
            Require(static_cast<bool>(reader.CopyData([&](const char* block, std::size_t count) {
                copied.append(block, count);
                return sys::Status();
            })));
            Require(copied.size() == length);
            walked.push_back({name, tooLong, copied});
        }
        Require(!reader.Failed());
    }
    Require(walked == PlainReading(bytes));

    for (const Seen& record : walked)
        if (!record.tooLong)
            CheckName(record.name);
    CheckName(bytes.substr(0, 300));
    return 0;
}
