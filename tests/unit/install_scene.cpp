#include "install_scene.h"

#include "steam_layouts.h"

const std::vector<PayloadFile> testPayload = {
    {"cfg/ludax/binds.cfg", "bind \"F1\" \"buy ak47\"\r\n"},
    {"resource/background/x.tga", std::string("\0\0\x02\0\0\0\0\0\0\0\0\0\x01\0\x01\0\x18\0\xFF\xFF\xFF", 21)},
    {"a.txt", "LUDAX\r\n"},
    {"cfg/config.cfg", "exec ludax/binds.cfg\r\n"},
};

InstallScene::InstallScene(const std::vector<PayloadFile>& files, Layout layout)
    : steamapps(steam.Path() + "/steamapps/"),
      account(layout == Layout::library ? LibraryEntry(steam.Path()) : AccountFolderEntry(steamapps, "player")),
      accountFolder(account.folder),
      profile(cs16Profile),
      content(account.Game(GameId::cs16).contentFolder),
      archivePath(account.Game(profile.id).backup.archive),
      removalListPath(account.Game(profile.id).backup.removalList)
{
    account.Game(GameId::cs16).present = account.Game(GameId::css).present = true;
    MakeFolders(content);
    Repack(files);
}

void InstallScene::Repack(const std::vector<PayloadFile>& newFiles)
{
    files = newFiles;
    std::string bytes;
    for (const PayloadFile& file : files)
        bytes += Record(file.name, file.data);
    packed.assign(bytes.begin(), bytes.end());
    packed.push_back('\0');  // like the embedded ones: a zero byte that belongs to no record
    payload = {packed.size() - 1, packed.data()};
    profile.payload = &payload;
}

std::string InstallScene::BytesOf(const std::string& path)
{
    return Exists(path) ? ReadFile(path) : "<absent>";
}

bool InstallScene::PayloadWritten() const
{
    for (const PayloadFile& file : files)
        if (BytesOf(content + file.name) != file.data)
            return false;
    return true;
}

std::string SpelledAnew(const std::string& folder)
{
    std::string spelled = folder.substr(0, folder.rfind('/')) + "//./" + folder.substr(folder.rfind('/') + 1);
#ifdef _WIN32
    spelled += "/x/..";
    for (char& c : spelled)
        c = c == '/' ? '\\' : c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
#endif
    return spelled;
}

std::string AsUtf16(const std::string& ascii)
{
    std::string wide = "\xFF\xFE";
    for (char c : ascii)
        wide += std::string(1, c) + '\0';
    return wide;
}
