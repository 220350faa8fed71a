#pragma once
// Sets and clears HKEY_CURRENT_USER string values for tests (the real registry on Windows,
// the folder tree that stands for it elsewhere).

#include <string>

void SetUserRegistryString(const std::string& key, const std::string& value, const std::string& text);
void DeleteUserRegistryKey(const std::string& key);
