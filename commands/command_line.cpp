#include "command_line.h"

#include "text_encoding.h"

namespace {

// "/yes" or "-YES" as "yes"; empty for a word that is no switch.
std::string Switch(const std::string& arg)
{
    return arg.size() > 1 && (arg[0] == '/' || arg[0] == '-') ? AsciiLower(arg.substr(1)) : std::string();
}

const GameProfile* Game(const std::string& name)
{
    const std::string key = AsciiLower(name);
    return key == "cs16" ? &cs16Profile : key == "css" ? &cssProfile : nullptr;
}

// A place number: 1 or more, digits only.
bool PlaceNumber(const std::string& text, int& number)
{
    if (text.empty() || text.size() > 6 || text.find_first_not_of("0123456789") != std::string::npos)
        return false;
    number = std::stoi(text);
    return number > 0;
}

}  // namespace

bool ParseCommandLine(const std::vector<std::string>& args, Command& command, std::string& error)
{
    command = Command();
    bool named = false;  // a command was given
    auto fail = [&](const std::string& why) {
        error = why;
        return false;
    };
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string word = Switch(args[i]);
        const bool valued = word == "install" || word == "uninstall" || word == "place" || word == "log";
        if (valued && i + 1 == args.size())
            return fail(args[i] + " needs a value after it");
        if (word == "?" || word == "list" || word == "install" || word == "uninstall") {
            if (named)
                return fail("one command at a time: " + args[i]);
            named = true;
            command.kind = word == "?" ? Command::Kind::usage
                         : word == "list" ? Command::Kind::list
                         : word == "install" ? Command::Kind::install
                                             : Command::Kind::uninstall;
            if (valued && !(command.game = Game(args[++i])))
                return fail("no game called " + args[i] + ": cs16 or css");
        } else if ((word == "place" && command.place != 0) || (word == "yes" && command.yes) ||
                   (word == "log" && !command.logPath.empty())) {
            return fail(args[i] + " given twice");
        } else if (word == "place") {
            if (!PlaceNumber(args[++i], command.place))
                return fail("/place takes one number, 1 or more: " + args[i]);
        } else if (word == "yes") {
            command.yes = true;
        } else if (word == "log") {
            command.logPath = args[++i];
        } else {
            return fail("not a command or option of this program: " + args[i]);
        }
    }
    const bool forAGame = command.kind == Command::Kind::install || command.kind == Command::Kind::uninstall;
    if (command.place != 0 && !forAGame)
        return fail("/place goes with /install or /uninstall");
    if (command.yes && command.kind != Command::Kind::install)
        return fail("/yes goes with /install");
    if (!command.logPath.empty() && !forAGame && command.kind != Command::Kind::window)
        return fail("/log goes with /install, /uninstall, or alone with the window");
    return true;
}
