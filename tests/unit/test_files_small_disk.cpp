#ifndef _WIN32
#include "test_files_small_disk.h"

#include <sched.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/statvfs.h>

#include <cstdio>
#include <stdexcept>

namespace {

constexpr std::uint64_t tmpfsSize = 16 << 20;

// Once per process: a mount namespace of its own whose mounts the machine never sees.
bool PrivateMounts()
{
    static const bool ready = unshare(CLONE_NEWNS) == 0 &&
                              mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    return ready;
}

std::string Filler(const std::string& folder) { return folder + "/filler"; }

}  // namespace

SmallDisk::SmallDisk()
{
    mounted = PrivateMounts() &&
              mount("tmpfs", folder.Path().c_str(), "tmpfs", 0,
                    ("size=" + std::to_string(tmpfsSize)).c_str()) == 0;
}

SmallDisk::~SmallDisk()
{
    FreeRoom();
    if (mounted)
        umount2(folder.Path().c_str(), MNT_DETACH);
}

void SmallDisk::LeaveRoom(std::uint64_t bytes)
{
    if (mounted) {
        struct statvfs room;
        if (statvfs(Path().c_str(), &room) != 0)
            throw std::runtime_error("statvfs failed");
        const std::uint64_t free = std::uint64_t{room.f_bavail} * room.f_frsize;
        if (free < bytes)
            throw std::runtime_error("the small disk is already too full");
        WriteFile(Filler(Path()), std::string(free - bytes, 'f'));
        return;
    }
    // Past the limit a write fails with EFBIG instead of killing the process.
    signal(SIGXFSZ, SIG_IGN);
    rlimit limit;
    if (getrlimit(RLIMIT_FSIZE, &limit) != 0)
        throw std::runtime_error("getrlimit failed");
    savedLimit = limit.rlim_cur;
    limit.rlim_cur = bytes;
    if (setrlimit(RLIMIT_FSIZE, &limit) != 0)
        throw std::runtime_error("setrlimit failed");
    limited = true;
}

void SmallDisk::FreeRoom()
{
    if (mounted) {
        std::remove(Filler(Path()).c_str());
    } else if (limited) {
        rlimit limit;
        getrlimit(RLIMIT_FSIZE, &limit);
        limit.rlim_cur = savedLimit;
        setrlimit(RLIMIT_FSIZE, &limit);
        limited = false;
    }
}

#endif
