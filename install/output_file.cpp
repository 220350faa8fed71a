#include "output_file.h"

bool WriteWholeFile(const std::string& path, const char* data, std::size_t size)
{
    sys::File file = sys::File::Create(path);
    const bool written = file.Write(data, size);
    return file.Close() && written;
}

OutputFile OutputFile::Create(const std::string& path) { return OutputFile(sys::File::Create(path), 0); }

OutputFile OutputFile::Continue(const std::string& path, std::uint64_t keep)
{
    sys::File file = sys::File::OpenForAppending(path);
    if (file.IsOpen() && (file.Size() < keep || (file.Size() > keep && !file.Truncate(keep))))
        static_cast<void>(file.Close());  // shorter than what is to be kept, or it would not give way
    return OutputFile(std::move(file), keep);
}

bool OutputFile::Append(const char* data, std::size_t size)
{
    intact = intact && file.Write(data, size);
    if (intact)
        end += size;
    return intact;
}

bool OutputFile::CutBack(std::uint64_t size)
{
    if (!file.IsOpen() || !file.Truncate(size))
        return false;
    end = size;
    return true;
}

bool OutputFile::Close()
{
    if (file.IsOpen()) {
        const bool closed = file.Close();
        intact = intact && closed;
    }
    return intact;
}
