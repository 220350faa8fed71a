#include "set_check.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <system_error>

#include "content_rules.h"
#include "portable_name.h"
#include "text_encoding.h"

namespace fs = std::filesystem;

namespace {

// Record lengths are signed 32-bit integers; so is the walk's position.
constexpr std::uint64_t kLengthLimit = std::uint64_t{1} << 31;

// Shows control and non-ASCII bytes as \xNN so a message never carries them raw.
std::string Printable(const std::string& name)
{
    std::string shown;
    for (unsigned char c : name) {
        if (c < 0x20 || c >= 0x7F) {
            const char* digits = "0123456789ABCDEF";
            shown += "\\x";
            shown += digits[c >> 4];
            shown += digits[c & 15];
        } else {
            shown += static_cast<char>(c);
        }
    }
    return shown;
}

std::string Quoted(const std::string& name)
{
    return "\"" + Printable(name) + "\"";
}

// Every file below the set folder, relative, sorted so a report is always in the same order.
std::set<std::string> FilesOf(const fs::path& setFolder, std::string& error)
{
    std::error_code failure;
    std::set<std::string> files;
    for (fs::recursive_directory_iterator it(setFolder, failure), end; !failure && it != end;
         it.increment(failure)) {
        if (!it->is_directory(failure))
            files.insert(it->path().lexically_relative(setFolder).generic_string());
    }
    if (failure)
        error = "cannot list the set folder: " + failure.message();
    return files;
}

class Checker {
public:
    Checker(const std::string& setFolder, const std::string& manifestPath)
        : folder(setFolder), manifest(manifestPath)
    {
    }

    SetCheck Run()
    {
        std::error_code failure;
        if (!fs::is_directory(folder, failure)) {
            Error(folder, "not a folder; a set is a folder of files beside its manifest");
            return result;
        }
        std::string text;
        if (!ReadWhole(manifest, text)) {
            Error(manifest, "cannot read the manifest");
            return result;
        }
        result.records = ParseManifest(text);
        if (result.records.empty())
            Error(manifest, "names no files; list the set's files, one relative path a line");

        std::string listError;
        present = FilesOf(folder, listError);
        if (!listError.empty())
            Error(folder, listError);
        for (const std::string& file : present)
            presentFolded.emplace(AsciiLower(file), file);

        std::vector<std::string> readable;
        for (const ManifestLine& line : result.records)
            if (CheckLine(line))
                readable.push_back(line.name);
        CheckUnnamedFiles();
        if (result.containerSize >= kLengthLimit)
            Error(manifest, "the container would hold " + std::to_string(result.containerSize) +
                                " bytes; it must stay below 2^31: ship fewer or smaller files");
        CheckContents(folder, readable, result.findings);
        return result;
    }

private:
    void Error(const std::string& where, const std::string& message)
    {
        result.findings.push_back({true, where, message});
    }

    void Warning(const std::string& where, const std::string& message)
    {
        result.findings.push_back({false, where, message});
    }

    std::string At(const ManifestLine& line) const
    {
        return manifest + ":" + std::to_string(line.number);
    }

    // True when the line names a plain file that can be packed.
    bool CheckLine(const ManifestLine& line)
    {
        const std::string& name = line.name;
        const std::string problem = PortableNameProblem(name);
        if (!problem.empty()) {
            Error(At(line), "the name " + Quoted(name) + " " + problem + "; rename the file and its line");
            return false;
        }
        const auto same = named.find(name);
        if (same != named.end()) {
            Error(At(line), Quoted(name) + " repeats line " + std::to_string(same->second) + "; remove one of them");
            return false;
        }
        const auto alike = namedFolded.find(AsciiLower(name));
        if (alike != namedFolded.end()) {
            Error(At(line), Quoted(name) + " differs only in letter case from " + Quoted(alike->second.name) +
                                " on line " + std::to_string(alike->second.number) +
                                "; Windows holds one file for both: rename or remove one");
            return false;
        }
        named.emplace(name, line.number);
        namedFolded.emplace(AsciiLower(name), line);

        const fs::path file = fs::path(folder) / name;
        std::error_code failure;
        const fs::file_status status = fs::status(file, failure);
        if (!fs::exists(status)) {
            const auto other = presentFolded.find(AsciiLower(name));
            if (other != presentFolded.end()) {
                Error(At(line), Quoted(name) + " differs only in letter case from " + Quoted(other->second) +
                                    " in the set folder; write the line as the file is named, or rename the file");
                caseTypos.insert(other->second);
            } else {
                Error(At(line), Quoted(name) + " names a missing file: " + file.generic_string() +
                                    "; add the file or remove the line");
            }
            return false;
        }
        if (!fs::is_regular_file(status)) {
            Error(At(line), Quoted(name) + " is not a regular file: " + file.generic_string() +
                                "; list the files inside a folder, not the folder");
            return false;
        }
        const std::uint64_t size = fs::file_size(file, failure);
        if (failure) {
            Error(file.generic_string(), "cannot read its size: " + failure.message());
            return false;
        }
        if (size >= kLengthLimit) {
            Error(file.generic_string(), std::to_string(size) + " bytes; a record's data must stay below 2^31 bytes");
            return false;
        }
        // Packed and installed like any file, but an empty one is most often a copy gone wrong.
        if (size == 0)
            Warning(file.generic_string(), "holds 0 bytes; the install writes it empty, over any file of the player's "
                                           "with that name: copy the real file in, or remove the file and its line");
        result.containerSize += 8 + name.size() + size;
        return true;
    }

    void CheckUnnamedFiles()
    {
        for (const std::string& file : present)
            if (!named.count(file) && !caseTypos.count(file))
                Error((fs::path(folder) / file).generic_string(),
                      "in the set folder but not named in " + manifest + "; add a line for it or remove the file");
    }

    std::string folder;
    std::string manifest;
    SetCheck result;
    std::set<std::string> present;
    std::map<std::string, std::string> presentFolded;  // folded -> as named in the folder
    std::map<std::string, int> named;                   // name -> manifest line
    std::map<std::string, ManifestLine> namedFolded;
    std::set<std::string> caseTypos;  // folder files already reported as a line's letter-case twin
};

}  // namespace

bool SetCheck::Passed() const
{
    for (const Finding& finding : findings)
        if (finding.error)
            return false;
    return true;
}

SetCheck CheckSet(const std::string& setFolder, const std::string& manifestPath)
{
    return Checker(setFolder, manifestPath).Run();
}

std::string Describe(const Finding& finding)
{
    return std::string(finding.error ? "error: " : "warning: ") + finding.where + ": " + finding.message;
}

bool ReadWhole(const std::string& path, std::string& bytes)
{
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return false;
    bytes.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    return !in.bad();
}
