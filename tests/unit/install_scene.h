#pragma once
// A Steam folder with one account, "player", whose Counter-Strike 1.6 content folder exists (or,
// in a library's layout, the Steam folder's own Half-Life/cstrike), ready for InstallConfig and
// UninstallConfig over a payload the test chooses.

#include <string>
#include <vector>

#include "embedded.h"
#include "game_profile.h"
#include "install.h"
#include "steam_account.h"
#include "steam_layouts.h"
#include "test_files.h"
#include "uninstall.h"

struct PayloadFile {
    std::string name;
    std::string data;
};

// Nested paths, a binary file and a name that sorts first in no order but the container's own.
extern const std::vector<PayloadFile> testPayload;

class InstallScene {
public:
    enum class Layout { account, library };
    // The game's own paths over a payload packed from `files`.
    explicit InstallScene(const std::vector<PayloadFile>& files = testPayload, Layout layout = Layout::account);
    InstallScene(const InstallScene&) = delete;
    InstallScene& operator=(const InstallScene&) = delete;

    // Another file set for the same game and folders, as a newer program carries.
    void Repack(const std::vector<PayloadFile>& newFiles);

    InstallOutcome Install() { return InstallConfig(profile, account); }
    UninstallOutcome Uninstall() { return UninstallConfig(profile, account); }

    // The file's bytes, or "<absent>".
    static std::string BytesOf(const std::string& path);
    // True when every payload file stands at its target with the payload's bytes.
    bool PayloadWritten() const;

    TempFolder steam;
    const std::string steamapps;
    SteamAccount account;
    const std::string accountFolder;  // where the backup files lie
    GameProfile profile;
    const std::string content;
    const std::string archivePath;
    const std::string removalListPath;
    std::vector<PayloadFile> files;

private:
    std::vector<char> packed;
    EmbeddedContainer payload{};
};

// A folder spelled as Windows reads the same folder: natively what POSIX resolves as well (doubled
// separators, "."), on Windows also another letter case, backslashes and "..".
std::string SpelledAnew(const std::string& folder);

// A backup file as another program might leave it: saved as UTF-16 (little-endian, with its mark).
std::string AsUtf16(const std::string& ascii);
