#include "run_log.h"

#include <chrono>

#include "run_command.h"
#include "texts.h"
#include "version.h"

namespace {

// A log's first line is short; what the check reads of an existing file.
constexpr std::size_t firstLineLimit = 4096;

// `path`'s folder, as the system finds it.
bool FolderFound(const std::string& path, std::string& final)
{
    const std::string full = sys::FullPath(path);
    const std::size_t last = full.find_last_of("/\\");
    return last != std::string::npos && last > 0 && sys::FinalPath(full.substr(0, last), final);
}

// True when `path` is `folder` or lies in it; both as the system gave them, compared as it
// compares names.
bool WithinFolder(const std::string& path, const std::string& folder)
{
    const std::string p = sys::NameKey(path), f = sys::NameKey(folder);
    return p.compare(0, f.size(), f) == 0 && (p.size() == f.size() || p[f.size()] == '/' || p[f.size()] == '\\');
}

// The log's folder (`folder`, as the system finds it) in a game's folder, or its name one of the
// backup files' in a place's folder (so that a backup file not made yet is not made as a log).
bool AmongGameFolders(const std::string& path, const std::string& folder, const std::vector<SteamAccount>& places)
{
    const std::string name = sys::NameKey(path.substr(path.find_last_of("/\\") + 1));
    for (const SteamAccount& place : places)
        for (const GameAtPlace& game : place.games) {
            std::string final;
            if (sys::FinalPath(game.gameFolder, final) && WithinFolder(folder, final))
                return true;
            if (!sys::FinalPath(place.folder, final) || sys::NameKey(final) != sys::NameKey(folder))
                continue;
            for (const std::string& backup : game.backup.All())
                if (sys::NameKey(backup.substr(backup.rfind('/') + 1)) == name)
                    return true;
        }
    return false;
}

// True when the open log is one of the backup files at `places`, by what the system tells them
// apart by: a short name, a link or another drive letter names the same file.
bool OneOfTheBackupFiles(const sys::File& log, const std::vector<SteamAccount>& places)
{
    sys::Identity identity;
    if (!log.IdentityOf(identity))
        return false;
    for (const SteamAccount& place : places)
        for (const GameAtPlace& game : place.games)
            for (const std::string& backup : game.backup.All()) {
                sys::Identity other;
                if (sys::IdentityOf(backup, other) && other == identity)
                    return true;
            }
    return false;
}

// True when the file begins with a "started" line, or holds nothing yet and may be taken;
// reads its start from where it is open, then goes on to its end.
bool EmptyOrALog(sys::File& log, bool emptyTaken)
{
    if (log.Size() == 0)
        return emptyTaken;
    std::string start(static_cast<std::size_t>(std::min<std::uint64_t>(log.Size(), firstLineLimit)), '\0');
    if (!log.Read(&start[0], start.size()) || !log.Skip(log.Size() - start.size()))
        return false;
    const std::size_t end = start.find('\n');
    if (end == std::string::npos || end == 0 || start[end - 1] != '\r')
        return false;
    return IsStartedLine(start.substr(0, end - 1));
}

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

}  // namespace

bool IsStartedLine(const std::string& firstLine)
{
    const std::vector<std::string> fields = Fields(firstLine);
    const std::string product = LUDAX_PRODUCT_NAME " ";
    return fields.size() >= 5 && fields[0].size() == 20 && fields[0][10] == 'T' && fields[0].back() == 'Z' &&
           fields[1] == "started" && fields[2].compare(0, product.size(), product) == 0;
}

std::optional<RunLog> RunLog::Open(const std::string& path, const std::optional<std::vector<SteamAccount>>& places,
                                   const std::string& commandLine, LogRefusal& refusal)
{
    const std::vector<SteamAccount> none;
    const std::vector<SteamAccount>& found = places ? *places : none;
    std::string folder;
    refusal = !FolderFound(path, folder) ? LogRefusal::notWritable
              : AmongGameFolders(path, folder, found) ? LogRefusal::amongGameFiles
                                                      : LogRefusal::none;
    if (refusal != LogRefusal::none)
        return std::nullopt;
    sys::File file = sys::File::OpenOrCreate(path);
    if (!file.IsOpen())
        refusal = LogRefusal::notWritable;
    else if (OneOfTheBackupFiles(file, found))
        refusal = LogRefusal::amongGameFiles;
    else if (!EmptyOrALog(file, file.Created() || places))
        refusal = LogRefusal::notALog;
    if (refusal == LogRefusal::none) {
        const std::uint64_t size = file.Size();
        RunLog log(std::move(file));
        if (log.Line({"started", BuildName(), sys::ComputerName(), sys::UserName(), commandLine}))
            return log;
        // A log that cannot take its first line (a full disk) keeps what it held.
        file = std::move(log.file);
        if (!file.Created())
            static_cast<void>(file.Truncate(size));
        refusal = LogRefusal::notWritable;
    }
    // A file made for the log goes again.
    const bool made = file.Created();
    static_cast<void>(file.Close());
    if (made)
        static_cast<void>(sys::RemoveFile(path));
    return std::nullopt;
}

bool RunLog::Line(const std::vector<std::string>& fields)
{
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    std::string line = IsoTime(std::chrono::duration_cast<std::chrono::seconds>(now).count());
    for (const std::string& field : fields) {
        line += '\t';
        for (char c : field)
            line += c == '\r' || c == '\n' || c == '\t' ? ' ' : c;
    }
    return static_cast<bool>(file.Write(line + "\r\n"));
}

void RunLog::Action(Did did, const std::string& path, const sys::Reason& why)
{
    if (did == Did::stopped)
        Line({texts::summary::Action(did), WindowsPath(path), texts::Why(why)});
    else
        Line({texts::summary::Action(did), WindowsPath(path)});
}

void RunLog::End(int status, std::string what)
{
    while (!what.empty() && (what.back() == '\n' || what.back() == ' '))
        what.pop_back();
    Line({"ended", std::to_string(status), what});
}
