#include "bench_process.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <climits>
#include <cstring>
#include <thread>

#include "flushes_off.h"

extern char** environ;

namespace bench {

namespace {

// The environment a child gets: this one's, and for a child whose flushes are no-ops, eatmydata
// loaded ahead of the C library and the word that tells the child to check it is.
std::vector<std::string> ChildEnvironment(bool flushesOff)
{
    std::vector<std::string> environment;
    for (char** variable = environ; *variable; ++variable)
        if (!flushesOff || (std::strncmp(*variable, "LD_PRELOAD=", 11) != 0 &&
                            std::strncmp(*variable, flushesOffVariable, std::strlen(flushesOffVariable)) != 0))
            environment.push_back(*variable);
    if (flushesOff) {
        environment.push_back("LD_PRELOAD=libeatmydata.so");
        environment.push_back(std::string(flushesOffVariable) + "=1");
    }
    return environment;
}

std::vector<char*> Pointers(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(&text[0]);
    pointers.push_back(nullptr);
    return pointers;
}

}  // namespace

ProcessOutcome RunProcess(const std::vector<std::string>& args, const ProcessOptions& options)
{
    std::vector<std::string> argTexts = args, environmentTexts = ChildEnvironment(options.flushesOff);
    std::vector<char*> argv = Pointers(argTexts), envp = Pointers(environmentTexts);

    ProcessOutcome outcome;
    auto start = std::chrono::steady_clock::now();
    const auto elapsedMs = [&] {
        return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    };
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    if (options.quiet)
        posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    pid_t pid;
    int spawned = posix_spawnp(&pid, argv[0], &actions, nullptr, argv.data(), envp.data());
    posix_spawn_file_actions_destroy(&actions);
    if (spawned != 0)
        return outcome;
    outcome.started = true;
    int status = 0;
    for (;;) {
        const pid_t ended = waitpid(pid, &status, options.limitMs > 0 ? WNOHANG : 0);
        if (ended == pid)
            break;
        if (ended != 0)
            return outcome;
        if (elapsedMs() > options.limitMs) {
            kill(pid, SIGKILL);
            waitpid(pid, &status, 0);
            outcome.stopped = true;
            break;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    outcome.wallMs = elapsedMs();
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

bool WriteBackEverything()
{
    sync();
    return true;
}

std::string PlatformName() { return "native Linux"; }

const char* PeakMethodName() { return "the child's own ru_maxrss at its end"; }

}  // namespace bench
