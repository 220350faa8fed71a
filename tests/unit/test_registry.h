#pragma once
// Sets and clears registry string values for tests, the user's and the machine's (the real
// registry on Windows, the folder tree that stands for it elsewhere).

#include <string>

#include "test_files.h"

// The user's keys, and the machine's in its 32-bit and 64-bit views.
enum class RegistryHive { user, machine32, machine64 };

void SetRegistryString(RegistryHive hive, const std::string& key, const std::string& value, const std::string& text);
void DeleteRegistryKey(RegistryHive hive, const std::string& key);

inline void SetUserRegistryString(const std::string& key, const std::string& value, const std::string& text)
{
    SetRegistryString(RegistryHive::user, key, value, text);
}
inline void DeleteUserRegistryKey(const std::string& key) { DeleteRegistryKey(RegistryHive::user, key); }

// Steam in the registry for as long as the object lives, its folder a fresh temporary one.
class RegisteredSteam {
public:
    RegisteredSteam() { SetUserRegistryString(key, "SteamPath", folder.Path()); }
    ~RegisteredSteam() { DeleteUserRegistryKey(key); }
    RegisteredSteam(const RegisteredSteam&) = delete;
    RegisteredSteam& operator=(const RegisteredSteam&) = delete;
    std::string Apps() const { return folder.Path() + "/steamapps/"; }

    static constexpr char key[] = "Software\\Valve\\Steam";

private:
    TempFolder folder;
};
