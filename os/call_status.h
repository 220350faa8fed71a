#pragma once
// Why something could not be done: the system's own answer, kept as its error code so that it
// can be shown in the system's words and the user's language, or the program's own refusal.
// Outcomes carry it beside the path it concerns.

#include <cstdint>
#include <string>

namespace sys {

struct Reason {
    // What the program refused by itself; `system` when the system's code says why.
    enum class Own : std::uint8_t {
        system,
        notADiskFile,      // a device, a pipe or a folder stands where a file belongs
        endedEarly,        // the file held fewer bytes than it had when opened, or the disk took none
        link,              // a link stands on the way: what lies behind it may be anywhere
        tooLargeToBackUp,  // 2 GiB or more: a backup record cannot hold it
        gameFolderGone,    // the game's own folder is not there: nothing is made in its place
    };
    Own own = Own::system;
    std::uint32_t code = 0;  // the system's error code (GetLastError(), errno); 0 for none

    static Reason System(std::uint32_t code) { return {Own::system, code}; }
    static Reason Refused(Own own) { return {own, 0}; }
    bool operator==(const Reason& other) const { return own == other.own && code == other.code; }
};

// What one call did: done, or failed for a reason. Tested like a bool.
class [[nodiscard]] Status {
public:
    Status() = default;  // done
    static Status Failed(Reason why) { return Status(why); }
    explicit operator bool() const { return ok; }
    const Reason& Why() const { return why; }

private:
    explicit Status(Reason why) : ok(false), why(why) {}
    bool ok = true;
    Reason why;
};

// Where something failed, and why; `path` is empty while nothing has.
struct Failure {
    std::string path;
    Reason reason;
    bool Failed() const { return !path.empty(); }
    // Keeps the first failure: what went wrong first is what the user is told.
    void NoteFirst(const std::string& at, const Reason& why)
    {
        if (!Failed())
            *this = {at, why};
    }
};

// The system's own message for an error code, in the user's language, without a line end.
std::string SystemMessage(std::uint32_t code);

}  // namespace sys
