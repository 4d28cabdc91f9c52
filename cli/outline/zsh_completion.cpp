#include <algorithm>

#include "cli/outline/completion.h"

namespace quillbox {
namespace {

std::string zshQuoted(const std::string& text) {
    std::string result = "'";
    for (const char character : text) {
        if (character == '\'')
            result += "'\\''";
        else
            result += character;
    }
    return result + "'";
}

std::string inBrackets(const std::string& text) {
    return escaped(text, "[]:\\", "\\");
}

std::string actionOf(Offer offer) {
    if (offer == Offer::files) return "_files";
    if (offer == Offer::folders) return "_files -/";
    const auto words = wordsOf(offer);
    return words.empty() ? " " : "(" + words + ")";
}

/// One option as `_arguments` takes it.
std::string entryFor(const OptionOutline& option) {
    const auto value = inBrackets(option.kind) + ":" + actionOf(option.offer);
    if (option.argument) return zshQuoted((option.repeats ? "*:" : ":") + value);
    const auto name = option.name + "[" + inBrackets(option.help) + "]";
    return zshQuoted(option.kind.empty() ? name : name + ":" + value);
}

std::string entriesFor(const std::vector<OptionOutline>& options, const std::string& indent) {
    std::string all;
    for (const auto& option : options) all += indent + entryFor(option) + " \\\n";
    return all;
}

std::string functionName(const CommandOutline& command) {
    auto name = "_quillbox" + (command.name.empty() ? "" : "_" + command.name);
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c == ' ' || c == '-'; }, '_');
    return name;
}

/// A command that has others below it: their names, and what follows them.
std::string group(const CommandOutline& command) {
    std::string names;
    std::string branches;
    for (const auto& below : command.commands) {
        names +=
            "            " + zshQuoted(escaped(lastWord(below), ":", "\\") + ":" + below.description) + "\n";
        branches += "            " + lastWord(below) + ") " + functionName(below) + " ;;\n";
    }
    return "    local state line\n    local -a commands\n    _arguments -C \\\n" +
           entriesFor(command.options, "        ") +
           "        $quillbox_session ': :->command' '*:: :->rest'\n"
           "    case $state in\n"
           "    command)\n"
           "        commands=(\n" +
           names +
           "        )\n"
           "        _describe command commands ;;\n"
           "    rest)\n"
           "        case $line[1] in\n" +
           branches +
           "        esac ;;\n"
           "    esac\n";
}

std::string functions(const CommandOutline& command) {
    std::string text;
    for (const auto& below : command.commands) text += functions(below);
    text += functionName(command) + "() {\n";
    text += command.commands.empty() ? "    _arguments \\\n" + entriesFor(command.options, "        ") +
                                           "        $quillbox_session\n"
                                     : group(command);
    return text + "}\n\n";
}

}  // namespace

std::string zshCompletion(const ProgramOutline& outline) {
    std::string session;
    for (const auto& option : outline.session) session += "    " + entryFor(option) + "\n";
    return "#compdef quillbox\n"
           "# Completion of quillbox for zsh; to be kept in a folder of its fpath, as _quillbox.\n\n"
           "local -a quillbox_session\n"
           "quillbox_session=(\n" +
           session + ")\n\n" + functions(outline.program) + "_quillbox \"$@\"\n";
}

}  // namespace quillbox
