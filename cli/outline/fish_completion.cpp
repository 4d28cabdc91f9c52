#include "cli/outline/completion.h"

namespace quillbox {
namespace {

std::string fishQuoted(const std::string& text) {
    return "'" + escaped(text, "'\\", "\\") + "'";
}

std::string seen(const std::string& words) {
    return "__fish_seen_subcommand_from " + words;
}

/// Where a command's own completions hold.
std::string conditionOf(const CommandOutline& command) {
    if (command.name.empty()) return "__fish_use_subcommand";
    const auto blank = command.name.find(' ');
    if (blank == std::string::npos) return seen(command.name);
    return seen(command.name.substr(0, blank)) + "; and " + seen(command.name.substr(blank + 1));
}

/// Where the names of the commands below this one stand.
std::string conditionBelow(const CommandOutline& command) {
    if (command.name.empty()) return "__fish_use_subcommand";
    std::string words;
    for (const auto& below : command.commands) words += " " + lastWord(below);
    return seen(command.name) + "; and not __fish_seen_subcommand_from" + words;
}

std::string line(const std::string& condition, const std::string& rest) {
    return "complete -c quillbox" + (condition.empty() ? "" : " -n " + fishQuoted(condition)) + " " + rest +
           "\n";
}

std::string valuesOf(Offer offer) {
    if (offer == Offer::files) return "-F";
    if (offer == Offer::folders) return "-x -a '(__fish_complete_directories)'";
    const auto words = wordsOf(offer);
    return words.empty() ? "-x" : "-x -a " + fishQuoted(words);
}

std::string completion(const OptionOutline& option, const std::string& condition) {
    if (option.argument) return option.offer == Offer::nothing ? "" : line(condition, valuesOf(option.offer));
    auto rest = "-l " + option.name.substr(2);
    if (!option.kind.empty()) rest += " -r " + valuesOf(option.offer);
    return line(condition, rest + " -d " + fishQuoted(option.help));
}

std::string completions(const CommandOutline& command) {
    std::string text;
    for (const auto& option : command.options) text += completion(option, conditionOf(command));
    for (const auto& below : command.commands) {
        text +=
            line(conditionBelow(command), "-a " + lastWord(below) + " -d " + fishQuoted(below.description));
        text += completions(below);
    }
    return text;
}

}  // namespace

std::string fishCompletion(const ProgramOutline& outline) {
    std::string text =
        "# Completion of quillbox for fish; to be kept in its completions folder, as quillbox.fish.\n";
    text += "complete -c quillbox -f\n";
    for (const auto& option : outline.session) text += completion(option, "");
    return text + completions(outline.program);
}

}  // namespace quillbox
