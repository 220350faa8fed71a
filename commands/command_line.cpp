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

std::string SwitchValue(const std::vector<std::string>& args, const std::string& name)
{
    for (std::size_t i = 0; i + 1 < args.size(); ++i)
        if (Switch(args[i]) == name)
            return args[i + 1];
    return std::string();
}

std::string CommandLineText(const std::vector<std::string>& args)
{
    std::string text;
    for (const std::string& arg : args) {
        const bool quoted = arg.empty() || arg.find_first_of(" \t\"") != std::string::npos;
        text += (text.empty() ? "" : " ") + (quoted ? "\"" + arg + "\"" : arg);
    }
    return text;
}

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
        const bool forAGame = word == "install" || word == "uninstall" || word == "verify";
        const bool valued = forAGame || word == "place" || word == "log" || word == "steam";
        if (valued && i + 1 == args.size())
            return fail(args[i] + " needs a value after it");
        if (word == "?" || word == "version" || word == "list" || forAGame) {
            if (named)
                return fail("one command at a time: " + args[i]);
            named = true;
            command.kind = word == "?" ? Command::Kind::usage
                         : word == "version" ? Command::Kind::version
                         : word == "list" ? Command::Kind::list
                         : word == "install" ? Command::Kind::install
                         : word == "uninstall" ? Command::Kind::uninstall
                                               : Command::Kind::verify;
            if (forAGame && !(command.game = Game(args[++i])))
                return fail("no game called " + args[i] + ": cs16 or css");
        } else if ((word == "place" && command.place != 0) || (word == "yes" && command.yes) ||
                   (word == "log" && !command.logPath.empty()) || (word == "steam" && !command.steamFolder.empty())) {
            return fail(args[i] + " given twice");
        } else if (word == "place") {
            if (!PlaceNumber(args[++i], command.place))
                return fail("/place takes one number, 1 or more: " + args[i]);
        } else if (word == "yes") {
            command.yes = true;
        } else if (word == "log" || word == "steam") {
            (word == "log" ? command.logPath : command.steamFolder) = args[++i];
        } else {
            return fail("not a command or option of this program: " + args[i]);
        }
    }
    if (command.place != 0 && !command.game)
        return fail("/place goes with /install, /uninstall or /verify");
    if (command.yes && command.kind != Command::Kind::install)
        return fail("/yes goes with /install");
    if ((command.kind == Command::Kind::usage || command.kind == Command::Kind::version) &&
        (!command.logPath.empty() || !command.steamFolder.empty()))
        return fail(std::string(command.kind == Command::Kind::usage ? "/?" : "/version") + " takes nothing else");
    return true;
}
