// ludax-pack: checks a payload file set, packs it into a container, lists what a container or a
// built Ludax.exe carries.
//   ludax-pack check <set-folder> <manifest>
//   ludax-pack pack <set-folder> <manifest> <output>    (and <output>.sums: its SHA-256 and each record's)
//   ludax-pack list <container> [<set-folder> <manifest>]
//   ludax-pack list <Ludax.exe> [<folder of cs16/, css/ and their manifests>]

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "list_command.h"
#include "container.h"
#include "packer.h"
#include "sha256.h"

namespace {

int Usage()
{
    std::fprintf(stderr,
                 "usage: ludax-pack check <set-folder> <manifest>\n"
                 "       ludax-pack pack <set-folder> <manifest> <output>\n"
                 "       ludax-pack list <container> [<set-folder> <manifest>]\n"
                 "       ludax-pack list <Ludax.exe> [<folder of cs16/, css/ and their manifests>]\n");
    return 2;
}

void Print(const std::vector<Finding>& findings)
{
    for (const Finding& finding : findings)
        std::fprintf(stderr, "%s\n", Describe(finding).c_str());
}

int Check(const std::string& setFolder, const std::string& manifest)
{
    const SetCheck check = CheckSet(setFolder, manifest);
    Print(check.findings);
    if (!check.Passed()) {
        std::fprintf(stderr, "ludax-pack: %s: refused; correct the errors above\n", setFolder.c_str());
        return 1;
    }
    std::printf("%s: %zu files, %zu warnings, fit to pack\n", setFolder.c_str(), check.records.size(),
                check.findings.size());
    return 0;
}

enum class Written { unchanged, written, failed };

// Writes `bytes` to `path` unless it holds them already (an unchanged file keeps its date, so
// nothing that embeds it is rebuilt for nothing): written aside and renamed, so a failed run never
// leaves half a file for the build.
Written WriteIfChanged(const std::string& path, const std::vector<char>& bytes)
{
    std::string current;
    if (ReadWhole(path, current) && current.size() == bytes.size() && std::equal(current.begin(), current.end(), bytes.begin()))
        return Written::unchanged;
    const std::string partial = path + ".partial";
    {
        std::ofstream out(partial, std::ios::binary | std::ios::trunc);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        if (!out.flush()) {
            std::fprintf(stderr, "ludax-pack: %s: cannot write\n", partial.c_str());
            return Written::failed;
        }
    }
    std::error_code failure;
    std::filesystem::rename(partial, path, failure);
    if (failure)
        std::fprintf(stderr, "ludax-pack: %s: %s\n", path.c_str(), failure.message().c_str());
    return failure ? Written::failed : Written::written;
}

// The SHA-256 of the whole container, then of each record's data, in order: what the program
// names its build by and records of what it writes, worked out once here.
std::vector<char> Sums(const std::vector<char>& container)
{
    std::vector<char> sums;
    const auto add = [&](const Sha256::Digest& digest) { sums.insert(sums.end(), digest.begin(), digest.end()); };
    add(Sha256Of(container.data(), container.size()));
    WalkRecords(container.data(), container.size(), 0, [&](const ContainerRecord& record) {
        add(Sha256Of(record.data, record.size));
        return true;
    });
    return sums;
}

int Pack(const std::string& setFolder, const std::string& manifest, const std::string& output)
{
    const PackResult result = PackSet(setFolder, manifest);
    Print(result.findings);
    if (!result.error.empty()) {
        // A refused set leaves no container behind that could pass for its packing.
        std::error_code failure;
        std::filesystem::remove(output, failure);
        std::filesystem::remove(output + ".sums", failure);
        std::fprintf(stderr, "ludax-pack: %s: refused; correct the errors above\n", setFolder.c_str());
        return 1;
    }
    if (WriteIfChanged(output + ".sums", Sums(result.container)) == Written::failed)
        return 1;
    const Written container = WriteIfChanged(output, result.container);
    if (container == Written::failed)
        return 1;
    if (container == Written::written)
        std::printf("ludax-pack: %s: packed %s\n", output.c_str(), setFolder.c_str());
    return 0;
}

}  // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string> args(argv + 1, argv + argc);
    if (args.size() == 3 && args[0] == "check")
        return Check(args[1], args[2]);
    if (args.size() == 4 && args[0] == "pack")
        return Pack(args[1], args[2], args[3]);
    if (args.size() >= 2 && args.size() <= 4 && args[0] == "list")
        return ListCommand(args[1], std::vector<std::string>(args.begin() + 2, args.end()));
    return Usage();
}
