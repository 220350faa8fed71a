#include "file_io.h"

std::vector<char> ReadWholeFile(const std::string& path)
{
    std::vector<char> bytes;
    sys::FileHandle file;
    std::uint64_t size = 0;
    if (!sys::OpenForReading(path, file, size))
        return bytes;
    if (size > 0 && size <= bytes.max_size()) {
        bytes.resize(static_cast<std::size_t>(size));
        if (!sys::ReadExactly(file, bytes.data(), bytes.size()))
            bytes.clear();
    }
    sys::CloseFile(file);
    return bytes;
}

bool WriteWholeFile(const std::string& path, const char* data, std::size_t size)
{
    sys::FileHandle file;
    if (!sys::OpenForWriting(path, file))
        return false;
    bool written = sys::WriteExactly(file, data, size);
    return sys::CloseFile(file) && written;
}

OutputFile::OutputFile(const std::string& path) { intact = sys::OpenForWriting(path, file); }

OutputFile::~OutputFile() { Close(); }

bool OutputFile::Append(const char* data, std::size_t size)
{
    intact = intact && sys::WriteExactly(file, data, size);
    return intact;
}

bool OutputFile::Close()
{
    if (file.open) {
        bool closed = sys::CloseFile(file);
        intact = intact && closed;
    }
    return intact;
}
