#include "bench_process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <climits>

extern char** environ;

namespace bench {

ProcessOutcome RunProcess(const std::vector<std::string>& args, bool quiet)
{
    std::vector<char*> argv;
    for (const std::string& arg : args)
        argv.push_back(const_cast<char*>(arg.c_str()));
    argv.push_back(nullptr);

    ProcessOutcome outcome;
    auto start = std::chrono::steady_clock::now();
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    if (quiet)
        posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    pid_t pid;
    int spawned = posix_spawnp(&pid, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (spawned != 0)
        return outcome;
    int status = 0;
    if (waitpid(pid, &status, 0) != pid)
        return outcome;
    outcome.wallMs =
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    outcome.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return outcome;
}

std::string SelfPath()
{
    char path[PATH_MAX];
    ssize_t length = readlink("/proc/self/exe", path, sizeof path - 1);
    return length > 0 ? std::string(path, length) : std::string();
}

long long OwnPeakBytes()
{
    struct rusage usage {};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<long long>(usage.ru_maxrss) * 1024;  // Linux counts KiB
}

std::string PlatformName() { return "native Linux"; }

const char* PeakMethodName() { return "the child's own ru_maxrss at its end"; }

}  // namespace bench
