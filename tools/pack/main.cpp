// ludax-pack: checks a payload file set, packs it into a container, lists what a container or a
// built Ludax.exe carries.
//   ludax-pack check <set-folder> <manifest>
//   ludax-pack pack <set-folder> <manifest> <output>
//   ludax-pack list <container> [<set-folder> <manifest>]
//   ludax-pack list <Ludax.exe> [<folder of cs16/, css/ and their manifests>]

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "list_command.h"
#include "packer.h"

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

int Pack(const std::string& setFolder, const std::string& manifest, const std::string& output)
{
    const PackResult result = PackSet(setFolder, manifest);
    Print(result.findings);
    std::error_code failure;
    if (!result.error.empty()) {
        // A refused set leaves no container behind that could pass for its packing.
        std::filesystem::remove(output, failure);
        std::fprintf(stderr, "ludax-pack: %s: refused; correct the errors above\n", setFolder.c_str());
        return 1;
    }
    // An unchanged container keeps its date, so nothing that embeds it is rebuilt for nothing.
    std::string current;
    if (ReadWhole(output, current) && current.size() == result.container.size() &&
        std::equal(current.begin(), current.end(), result.container.begin()))
        return 0;
    // Written aside and renamed, so a failed run never leaves a half container for the build.
    const std::string partial = output + ".partial";
    {
        std::ofstream out(partial, std::ios::binary | std::ios::trunc);
        out.write(result.container.data(), static_cast<std::streamsize>(result.container.size()));
        if (!out.flush()) {
            std::fprintf(stderr, "ludax-pack: %s: cannot write\n", partial.c_str());
            return 1;
        }
    }
    std::filesystem::rename(partial, output, failure);
    if (failure) {
        std::fprintf(stderr, "ludax-pack: %s: %s\n", output.c_str(), failure.message().c_str());
        return 1;
    }
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
