#include "test_files.h"

#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

namespace fs = std::filesystem;

TempFolder::TempFolder()
{
    static std::atomic<unsigned> counter{0};
    std::random_device seed;
    fs::path base = fs::temp_directory_path() /
                    ("ludax-test-" + std::to_string(seed()) + "-" + std::to_string(counter++));
    fs::create_directories(base);
    path = base.generic_string();
}

TempFolder::~TempFolder()
{
    std::error_code ignored;
    fs::remove_all(path, ignored);
}

void WriteFile(const std::string& path, const std::string& bytes)
{
    fs::path file(path);
    if (file.has_parent_path())
        fs::create_directories(file.parent_path());
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!out)
        throw std::runtime_error("cannot write " + path);
}

std::string ReadFile(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in)
        throw std::runtime_error("cannot read " + path);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

void MakeFolders(const std::string& path) { fs::create_directories(path); }

bool Exists(const std::string& path)
{
    std::error_code ignored;
    return fs::exists(path, ignored);
}

std::map<std::string, std::string> Snapshot(const std::string& folder)
{
    std::map<std::string, std::string> tree;
    if (!Exists(folder))
        return tree;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        std::string relative = fs::relative(entry.path(), folder).generic_string();
        tree[relative] = entry.is_directory() ? "<folder>" : ReadFile(entry.path().generic_string());
    }
    return tree;
}
