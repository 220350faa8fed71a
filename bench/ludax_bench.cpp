// ludax_bench: times install and uninstall of both games against a plain copy of the same
// files and measures each operation's peak memory.
//   ludax_bench [--runs N] [--copy-sets N] [--work <folder>]
//               [--payload <folder holding cs16/ and css/>] [--only operations|lists]
// The same program serves as its own child for each measured operation (see child_modes.h).

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "benchmark.h"
#include "child_modes.h"

namespace {

// The repository's payload sets; a Windows build reaches the build machine's files through
// Wine's Z: drive.
std::string DefaultPayloadRoot()
{
    std::string root = LUDAX_SOURCE_DIR "/payload";
#ifdef _WIN32
    if (!root.empty() && root[0] == '/') {
        for (char& c : root)
            if (c == '/')
                c = '\\';
        root = "Z:" + root;
    }
#endif
    return root;
}

std::string DefaultWorkFolder()
{
    auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
    return (std::filesystem::temp_directory_path() / ("ludax-bench-" + std::to_string(stamp)))
        .string();
}

int Usage()
{
    std::fprintf(stderr, "usage: ludax_bench [--runs N] [--copy-sets N] [--work <folder>] "
                         "[--payload <folder>]\n"
                         "                   [--only operations|lists]\n");
    return 2;
}

}  // namespace

int main(int argc, char** argv)
{
    std::vector<std::string> args(argv + 1, argv + argc);
    if (!args.empty() && bench::IsChildMode(args[0]))
        return bench::RunChildMode(args);

    bench::BenchOptions options;
    options.payloadRoot = DefaultPayloadRoot();
    for (std::size_t i = 0; i < args.size(); i += 2) {
        if (i + 1 >= args.size())
            return Usage();
        if (args[i] == "--runs")
            options.runs = std::atoi(args[i + 1].c_str());
        else if (args[i] == "--copy-sets")
            options.copySets = std::atoi(args[i + 1].c_str());
        else if (args[i] == "--work")
            options.workFolder = args[i + 1];
        else if (args[i] == "--payload")
            options.payloadRoot = args[i + 1];
        else if (args[i] == "--only" && (args[i + 1] == "operations" || args[i + 1] == "lists"))
            (args[i + 1] == "operations" ? options.lists : options.operations) = false;
        else
            return Usage();
    }
    if (options.runs < 1 || options.copySets < 1)
        return Usage();
    if (options.workFolder.empty())
        options.workFolder = DefaultWorkFolder();
    return bench::RunBenchmark(options);
}
