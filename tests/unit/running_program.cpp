#include "running_program.h"
#ifndef _WIN32

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>

#include <chrono>
#include <filesystem>
#include <thread>

extern char** environ;

RunningProgram::RunningProgram(const std::string& name)
{
    std::string path = folder.Path() + "/" + name;
    std::filesystem::copy_file("/bin/sleep", path);
    char* argv[] = {path.data(), const_cast<char*>("60"), nullptr};
    started = posix_spawn(&pid, path.c_str(), nullptr, nullptr, argv, environ) == 0;
}

RunningProgram::~RunningProgram()
{
    if (started) {
        kill(pid, SIGKILL);
        waitpid(pid, nullptr, 0);
    }
}

bool Soon(const std::function<bool()>& found)
{
    for (int wait = 0; wait < 500; ++wait) {
        if (found())
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return false;
}

#endif
