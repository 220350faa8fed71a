#pragma once
// Real folder trees for tests: a fresh temporary folder per test and whole-file helpers.

#include <map>
#include <string>

class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    // The folder's path with '/' separators and no trailing slash.
    const std::string& Path() const { return path; }

private:
    std::string path;
};

// Creates the missing folders on the way and writes `bytes` as the whole file.
void WriteFile(const std::string& path, const std::string& bytes);
std::string ReadFile(const std::string& path);
void MakeFolders(const std::string& path);
bool Exists(const std::string& path);

// Every file and folder below `folder`: relative path -> file bytes, or "<folder>" for a folder.
std::map<std::string, std::string> Snapshot(const std::string& folder);
