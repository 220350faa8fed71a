#pragma once
// Writing one game's tournament files into a place, with the backups that let the uninstall
// undo it.

#include <string>
#include <utility>
#include <vector>

#include "action_log.h"
#include "game_profile.h"
#include "call_status.h"
#include "steam_account.h"
#include "verify.h"

// How an install treats the files of the set it finds where it installed before.
enum class Rewrite {
    everyFile,    // writes every file (the window's reinstall, after its question)
    whatDiffers,  // leaves each file standing as shipped alone and writes the others (/install /yes)
    onlyOurs,     // the same, but writes nothing while a file was changed by someone else since
                  // an install wrote it, or could not be read (a plain /install)
};

struct InstallOutcome {
    enum class Result {
        installed,     // every file written
        backupFailed,  // stopped before `path`, a player's file that could not be backed up
        writeFailed,   // stopped at `path`, a file that could not be written (or reached only
                       // through a link, or one of the backup files themselves)
        folderFailed,  // stopped at `path`, a folder that could neither be found nor made
        elsewhere,     // nothing done: the backup files here belong to the game at `path`, another place's
        changedSince,  // nothing done (Rewrite::onlyOurs): `changed` were changed since an install wrote them
    };
    InstallOutcome() = default;
    InstallOutcome(Result result, std::string path, sys::Reason reason)
        : result(result), path(std::move(path)), reason(reason)
    {
    }

    Result result = Result::installed;
    std::string path;
    sys::Reason reason;  // why: the system's answer, or the program's own refusal
    std::vector<NotAsShipped> changed;
    std::size_t written = 0;  // files written, when installed
    bool installed = false;   // the backup archive is there now: the uninstall is offered
};

// Writes the game's payload into the place's content folder. Before it changes anything, what
// the uninstall needs to undo it is on disk: the backup archive holds each player's file before
// it is overwritten, the removal list names each file and folder before it is made, and the
// record names what it is about to write and make (written_record.h). Every install covers the
// targets earlier installs did not (a first one, or one stopped part-way); after a first install
// that ran to its end, a later one of the same set adds nothing to any of them. A stop leaves the
// backup files covering what was done. Backup files that belong to the game at another of
// `places` (copied here) stop it before anything is done. Each file backed up or written and each folder made goes to `log`, and so
// does where the install stopped.
InstallOutcome InstallConfig(const GameProfile& game, const SteamAccount& place, const ActionLog& log = {},
                             const std::vector<SteamAccount>& places = {}, Rewrite rewrite = Rewrite::everyFile);
