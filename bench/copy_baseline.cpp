#include "copy_baseline.h"

namespace bench {

#ifdef _WIN32

namespace {

// xcopy takes only backslashes; the benchmark's own paths mix both separators.
std::string Backslashed(std::string path)
{
    for (char& c : path)
        if (c == '/')
            c = '\\';
    while (path.size() > 3 && path.back() == '\\')
        path.pop_back();
    return path;
}

}  // namespace

const char* CopyToolName() { return "xcopy /E /I /Y /Q"; }

// xcopy.exe started directly rather than through cmd.exe: one process start less to subtract.
ProcessOutcome CopyFolder(const std::string& source, const std::string& destination)
{
    ProcessOptions quiet;
    quiet.quiet = true;
    return RunProcess({"xcopy.exe", Backslashed(source), Backslashed(destination), "/E", "/I", "/Y", "/Q"}, quiet);
}

#else

const char* CopyToolName() { return "cp -r"; }

ProcessOutcome CopyFolder(const std::string& source, const std::string& destination)
{
    return RunProcess({"cp", "-r", source + "/.", destination});
}

#endif

}  // namespace bench
