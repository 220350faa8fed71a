#pragma once
// One owner for every kind of Win32 handle the program opens: it closes the handle when it goes,
// and Close() says whether the system closed it cleanly (a file's last write may fail only there).
// Windows only.

#include <windows.h>

#include <utility>

template <class Traits>
class ScopedHandle {
public:
    using Handle = typename Traits::Handle;

    ScopedHandle() = default;
    explicit ScopedHandle(Handle handle) : handle(handle) {}
    ScopedHandle(ScopedHandle&& other) noexcept : handle(other.Release()) {}
    ScopedHandle& operator=(ScopedHandle&& other) noexcept
    {
        if (this != &other) {
            Close();
            handle = other.Release();
        }
        return *this;
    }
    ScopedHandle(const ScopedHandle&) = delete;
    ScopedHandle& operator=(const ScopedHandle&) = delete;
    ~ScopedHandle() { Close(); }

    bool IsValid() const { return handle != Traits::invalid(); }
    Handle Get() const { return handle; }
    // Hands the handle over to whoever closes it from now on.
    Handle Release() { return std::exchange(handle, Traits::invalid()); }
    // Closes it now; false when the system reported an error. The handle is gone either way.
    bool Close() { return !IsValid() || Traits::close(Release()); }

private:
    Handle handle = Traits::invalid();
};

namespace handle_traits {

// Files, and snapshots of the running processes: INVALID_HANDLE_VALUE when none.
struct File {
    using Handle = HANDLE;
    static Handle invalid() { return INVALID_HANDLE_VALUE; }
    static bool close(Handle handle) { return CloseHandle(handle) != 0; }
};

// Other kernel objects (a mutex): null when none.
struct KernelObject {
    using Handle = HANDLE;
    static Handle invalid() { return nullptr; }
    static bool close(Handle handle) { return CloseHandle(handle) != 0; }
};

struct Find {
    using Handle = HANDLE;
    static Handle invalid() { return INVALID_HANDLE_VALUE; }
    static bool close(Handle handle) { return FindClose(handle) != 0; }
};

struct RegistryKey {
    using Handle = HKEY;
    static Handle invalid() { return nullptr; }
    static bool close(Handle handle) { return RegCloseKey(handle) == ERROR_SUCCESS; }
};

}  // namespace handle_traits

using ScopedFileHandle = ScopedHandle<handle_traits::File>;
using ScopedSnapshot = ScopedHandle<handle_traits::File>;
using ScopedKernelObject = ScopedHandle<handle_traits::KernelObject>;
using ScopedFind = ScopedHandle<handle_traits::Find>;
using ScopedRegistryKey = ScopedHandle<handle_traits::RegistryKey>;
