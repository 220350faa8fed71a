// ludax-pack: packs a payload file set into a container, or lists a container's records.
//   ludax-pack pack <set-folder> <manifest> <output>
//   ludax-pack list <container>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "container.h"
#include "packer.h"

namespace {

int Usage()
{
    std::fprintf(stderr,
                 "usage: ludax-pack pack <set-folder> <manifest> <output>\n"
                 "       ludax-pack list <container>\n");
    return 2;
}

int Pack(const std::string& setFolder, const std::string& manifest, const std::string& output)
{
    const PackResult result = PackSet(setFolder, manifest);
    if (!result.error.empty()) {
        std::fprintf(stderr, "ludax-pack: %s\n", result.error.c_str());
        return 1;
    }
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
    std::error_code failure;
    std::filesystem::rename(partial, output, failure);
    if (failure) {
        std::fprintf(stderr, "ludax-pack: %s: %s\n", output.c_str(), failure.message().c_str());
        return 1;
    }
    return 0;
}

int List(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        std::fprintf(stderr, "ludax-pack: %s: cannot read\n", path.c_str());
        return 1;
    }
    const std::vector<char> buffer((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    std::size_t records = 0, end = 0;
    WalkRecords(buffer, 0, [&](const ContainerRecord& record) {
        std::printf("%10zu  %s\n", record.size, record.name.c_str());
        ++records;
        end = record.next;
    });
    std::printf("%zu records, %zu bytes\n", records, buffer.size());
    if (records == 0 || end != buffer.size()) {
        std::fprintf(stderr, "ludax-pack: %s: malformed: the records end at byte %zu of %zu\n", path.c_str(), end,
                     buffer.size());
        return 1;
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string> args(argv + 1, argv + argc);
    if (args.size() == 4 && args[0] == "pack")
        return Pack(args[1], args[2], args[3]);
    if (args.size() == 2 && args[0] == "list")
        return List(args[1]);
    return Usage();
}
