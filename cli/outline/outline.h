#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace quillbox {

/// What a shell can offer in the place of a value.
enum class Offer { nothing, files, folders, operations, shells };

/// An option, or an argument that is known by its place.
struct OptionOutline {
    /// "--parent", or "PATH" for an argument.
    std::string name;
    /// Stands for the value; empty for a flag.
    std::string kind;
    std::string help;
    bool argument = false;
    bool required = false;
    bool repeats = false;
    Offer offer = Offer::nothing;
};

/// A command as it is declared, the program itself the outermost.
struct CommandOutline {
    /// With those above it, such as "backup dirs"; that of the program is empty.
    std::string name;
    std::string description;
    /// Without those of the session.
    std::vector<OptionOutline> options;
    std::vector<CommandOutline> commands;
};

struct ProgramOutline {
    std::string footer;
    /// Understood by every command.
    std::vector<OptionOutline> session;
    CommandOutline program;
};

/// The name of the group that the options of the session stand in.
inline constexpr const char* sessionGroup = "Session";

ProgramOutline outlineOf(const CLI::App& app);

/// Every command that can be run, those with a name of two words too.
std::vector<const CommandOutline*> runnable(const ProgramOutline& outline);

/// The last word of a command's name.
std::string lastWord(const CommandOutline& command);

/// A text with this before each character of the list.
std::string escaped(const std::string& text, const char* characters, const std::string& escape);

}  // namespace quillbox
