#include "cli/outline/completion.h"

namespace quillbox {
namespace {

constexpr const char* scriptBeginning =
    R"(# Completion of quillbox for bash; to be read by it, or kept in its completions folder.
_quillbox() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command= words= offer= place
    for ((place = 1; place < COMP_CWORD; ++place)); do
        case "$command/${COMP_WORDS[place]}" in
)";

constexpr const char* scriptMiddle = R"(
        esac
    done
    case "$command:$previous" in
)";

constexpr const char* scriptEnd = R"(    esac
    case "$offer" in
        value) return ;;
        files) compopt -o filenames 2>/dev/null; mapfile -t COMPREPLY < <(compgen -f -- "$current") ;;
        folders) compopt -o filenames 2>/dev/null; mapfile -t COMPREPLY < <(compgen -d -- "$current") ;;
        *) mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current") ;;
    esac
}
complete -F _quillbox quillbox
)";

std::string offering(Offer offer) {
    if (offer == Offer::files) return "offer=files";
    if (offer == Offer::folders) return "offer=folders";
    const auto words = wordsOf(offer);
    return words.empty() ? "offer=value" : "words='" + words + "'";
}

/// A line of a case for the value of each option that has one.
std::string values(const std::string& command, const std::vector<OptionOutline>& options) {
    std::string lines;
    for (const auto& option : options)
        if (!option.argument && !option.kind.empty())
            lines += "        " + command + ":" + option.name + ") " + offering(option.offer) + " ;;\n";
    return lines;
}

std::string names(const std::vector<OptionOutline>& options) {
    std::string names;
    for (const auto& option : options)
        if (!option.argument) names += " " + option.name;
    return names;
}

/// Past the options' values: what may stand next.
std::string next(const ProgramOutline& outline, const CommandOutline& command) {
    std::string words;
    for (const auto& below : command.commands) words += lastWord(below) + " ";
    std::string argument;
    for (const auto& option : command.options)
        if (option.argument && argument.empty()) argument = offering(option.offer);
    auto line = "        '" + command.name + "':*) words='" + words + names(command.options).substr(1) +
                names(outline.session) + "'";
    if (!argument.empty()) line += "; [[ $current == -* ]] || " + argument;
    return line + " ;;\n";
}

void addCommands(const ProgramOutline& outline, const CommandOutline& command, std::string& path,
                 std::string& offers) {
    for (const auto& below : command.commands) {
        path += (path.empty() ? "            '" : " | '") + command.name + "/" + lastWord(below) + "'";
        addCommands(outline, below, path, offers);
    }
    offers += values("'" + command.name + "'", command.options);
    offers += next(outline, command);
}

}  // namespace

std::string bashCompletion(const ProgramOutline& outline) {
    std::string path;
    std::string offers;
    addCommands(outline, outline.program, path, offers);
    return scriptBeginning + path + ") command+=\"${command:+ }${COMP_WORDS[place]}\" ;;" + scriptMiddle +
           values("*", outline.session) + offers + scriptEnd;
}

}  // namespace quillbox
