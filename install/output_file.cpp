#include "output_file.h"

bool WriteWholeFile(const std::string& path, const char* data, std::size_t size)
{
    sys::File file = sys::File::Create(path);
    const bool written = file.Write(data, size);
    return file.Close() && written;
}

bool OutputFile::Append(const char* data, std::size_t size)
{
    intact = intact && file.Write(data, size);
    return intact;
}

bool OutputFile::Close()
{
    if (file.IsOpen()) {
        const bool closed = file.Close();
        intact = intact && closed;
    }
    return intact;
}
