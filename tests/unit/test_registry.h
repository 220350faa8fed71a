#pragma once
// Sets and clears HKEY_CURRENT_USER string values for tests (the real registry on Windows,
// the folder tree that stands for it elsewhere).

#include <string>

#include "test_files.h"

void SetUserRegistryString(const std::string& key, const std::string& value, const std::string& text);
void DeleteUserRegistryKey(const std::string& key);

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
