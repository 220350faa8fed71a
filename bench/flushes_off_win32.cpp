#include "flushes_off.h"

#include <windows.h>

#include <cstdlib>
#include <cstring>

namespace bench {

namespace {

BOOL WINAPI FlushNothing(HANDLE) { return TRUE; }

// Points this program's import of kernel32's FlushFileBuffers at FlushNothing; false when the
// program imports no such function.
bool ReplaceFlushImport()
{
    auto* base = reinterpret_cast<BYTE*>(GetModuleHandleW(nullptr));
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const IMAGE_DATA_DIRECTORY& imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    bool replaced = false;
    for (auto* library = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + imports.VirtualAddress);
         imports.VirtualAddress && library->Name; ++library) {
        if (_stricmp(reinterpret_cast<const char*>(base + library->Name), "kernel32.dll") != 0)
            continue;
        auto* name = reinterpret_cast<IMAGE_THUNK_DATA*>(base + library->OriginalFirstThunk);
        auto* slot = reinterpret_cast<IMAGE_THUNK_DATA*>(base + library->FirstThunk);
        for (; name->u1.AddressOfData; ++name, ++slot) {
            if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal))
                continue;
            const auto* byName = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + name->u1.AddressOfData);
            if (std::strcmp(reinterpret_cast<const char*>(byName->Name), "FlushFileBuffers") != 0)
                continue;
            DWORD protection = 0;
            if (!VirtualProtect(&slot->u1.Function, sizeof slot->u1.Function, PAGE_READWRITE, &protection))
                return false;
            slot->u1.Function = reinterpret_cast<ULONG_PTR>(&FlushNothing);
            VirtualProtect(&slot->u1.Function, sizeof slot->u1.Function, protection, &protection);
            replaced = true;
        }
    }
    return replaced;
}

}  // namespace

const char* FlushesOffMethodName() { return "the child's import of FlushFileBuffers pointed at a no-op"; }

bool FlushesOffAsked() { return std::getenv(flushesOffVariable) != nullptr; }

bool SetUpFlushes(bool off) { return !off || ReplaceFlushImport(); }

}  // namespace bench
