// ludax_discovery_calls: the system calls that finding the games in a Steam folder cannot do
// without, and nothing else, timed: one listing of steamapps, then for each folder it lists (but
// common, the library's, and "." and ".." among them, as the program asks about them too) the
// four look-ups that say whether it holds either game or either game's backup archive. The
// launch timer holds the time Ludax.exe's launch gains with the account folders against these
// calls' time on the same folders.
//   ludax_discovery_calls <steamapps folder, ending with '/'> <report file>
// The report holds the milliseconds from the first call to the end of the last.
#include <windows.h>

#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

namespace {

std::wstring Wide(const char* text)
{
    const int length = MultiByteToWideChar(CP_UTF8, 0, text, -1, nullptr, 0);
    std::wstring wide(length > 0 ? length - 1 : 0, L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text, -1, wide.data(), length);
    return wide;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: ludax_discovery_calls <steamapps folder/> <report file>\n");
        return 2;
    }
    const std::wstring steamapps = Wide(argv[1]);
    // The paths the program asks about below an account folder (steam_layouts.h).
    const wchar_t* const asked[] = {L"/counter-strike", L"/counter-strike source", L"/cs16ludax.bak",
                                    L"/cssludax.bak"};
    int found = 0, folders = 0;

    const auto start = std::chrono::steady_clock::now();
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW((steamapps + L"*.*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE)
        return 1;
    do
        if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) && lstrcmpiW(entry.cFileName, L"common") != 0)
            names.push_back(entry.cFileName);
    while (FindNextFileW(search, &entry));
    FindClose(search);
    for (const std::wstring& name : names) {
        ++folders;
        for (const wchar_t* path : asked)
            found += GetFileAttributesW((steamapps + name + path).c_str()) != INVALID_FILE_ATTRIBUTES;
    }
    const double ms = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();

    FILE* report = std::fopen(argv[2], "w");
    if (!report)
        return 1;
    // What was found goes with the time, so that a run that found nothing is seen.
    std::fprintf(report, "%.3f %d %d\n", ms, folders, found);
    return std::fclose(report) == 0 ? 0 : 1;
}
