#include "file_io.h"

#include "little_endian.h"

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace {

// The size of an open file, or -1 when it is not a plain file; 64-bit so that a large file is
// not mistaken for a small one. (Windows refuses to open a folder; POSIX opens it, so ask.)
long long FileSize(std::FILE* file)
{
#ifdef _WIN32
    if (_fseeki64(file, 0, SEEK_END) != 0)
        return -1;
    long long size = _ftelli64(file);
    return _fseeki64(file, 0, SEEK_SET) == 0 ? size : -1;
#else
    struct stat info;
    if (fstat(fileno(file), &info) != 0 || !S_ISREG(info.st_mode))
        return -1;
    return info.st_size;
#endif
}

}  // namespace

std::vector<char> ReadWholeFile(const std::string& path)
{
    std::vector<char> bytes;
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (!file)
        return bytes;
    long long size = FileSize(file);
    if (size > 0) {
        bytes.resize(static_cast<std::size_t>(size));
        // A file that shrank meanwhile or failed half way keeps only what was read.
        bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file));
    }
    std::fclose(file);
    return bytes;
}

void WriteWholeFile(const std::string& path, const char* data, std::size_t size)
{
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (!file)
        return;
    if (size > 0)
        std::fwrite(data, 1, size, file);
    std::fclose(file);
}

OutputFile::OutputFile(const std::string& path) : file(std::fopen(path.c_str(), "wb")) {}

OutputFile::~OutputFile() { Close(); }

void OutputFile::Append(const char* data, std::size_t size)
{
    if (file && size > 0)
        std::fwrite(data, 1, size, file);
}

void OutputFile::AppendInt32(std::uint32_t value)
{
    std::string bytes;
    AppendLittleEndian32(bytes, value);
    Append(bytes.data(), bytes.size());
}

void OutputFile::Flush()
{
    if (file)
        std::fflush(file);
}

void OutputFile::Close()
{
    if (file)
        std::fclose(file);
    file = nullptr;
}
