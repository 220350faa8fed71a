#include "output_file.h"

sys::Status WriteWholeFile(const std::string& path, const char* data, std::size_t size)
{
    sys::File file = sys::File::Overwrite(path);
    if (!file.IsOpen())
        return sys::Status::Failed(file.OpenFailure());
    sys::Status written = file.Write(data, size);
    if (written && file.Size() > size)
        written = file.Truncate(size);
    const sys::Status closed = file.Close();
    return written ? closed : written;
}

namespace {

sys::Status Opened(const sys::File& file)
{
    return file.IsOpen() ? sys::Status() : sys::Status::Failed(file.OpenFailure());
}

}  // namespace

OutputFile OutputFile::Create(const std::string& path)
{
    sys::File file = sys::File::Create(path);
    const sys::Status opened = Opened(file);
    return OutputFile(std::move(file), opened, 0);
}

OutputFile OutputFile::Continue(const std::string& path, std::uint64_t keep)
{
    sys::File file = sys::File::OpenForAppending(path);
    sys::Status state = Opened(file);
    if (state && file.Size() < keep)  // shorter than what is to be kept: someone else's file
        state = sys::Status::Failed(sys::Reason::Refused(sys::Reason::Own::endedEarly));
    else if (state && file.Size() > keep)
        state = file.Truncate(keep);
    if (!state && file.IsOpen())
        static_cast<void>(file.Close());
    return OutputFile(std::move(file), state, keep);
}

bool OutputFile::Append(const char* data, std::size_t size)
{
    if (state)
        state = file.Write(data, size);
    if (state)
        end += size;
    return static_cast<bool>(state);
}

sys::Status OutputFile::CutBack(std::uint64_t size)
{
    if (!file.IsOpen())
        return sys::Status::Failed(file.OpenFailure());
    const sys::Status cut = file.Truncate(size);
    if (cut)
        end = size;
    return cut;
}

sys::Status OutputFile::Flush()
{
    if (state)
        state = file.Flush();
    return state;
}

sys::Status OutputFile::Close()
{
    if (file.IsOpen()) {
        const sys::Status closed = file.Close();
        if (state)
            state = closed;
    }
    return state;
}

void ReplaceThroughDraft(const std::string& path, const std::string& draftPath,
                         const std::function<bool(OutputFile&)>& write)
{
    OutputFile draft = OutputFile::Create(draftPath);
    const bool written = write(draft) && draft.Flush();
    if (!draft.Close() || !written || !sys::MoveOver(draftPath, path))
        static_cast<void>(sys::RemoveFile(draftPath));
}
