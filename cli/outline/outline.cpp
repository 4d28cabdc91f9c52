#include "cli/outline/outline.h"

#include <CLI/CLI.hpp>
#include <cstring>
#include <string_view>

namespace quillbox {
namespace {

Offer offerOf(std::string_view kind) {
    if (kind == "FILE" || kind == "PATH" || kind == "DEST") return Offer::files;
    if (kind == "DIR") return Offer::folders;
    if (kind == "OPERATION") return Offer::operations;
    if (kind == "SHELL") return Offer::shells;
    return Offer::nothing;
}

OptionOutline outlineOf(const CLI::Option& option) {
    OptionOutline outline;
    outline.argument = !option.nonpositional();
    outline.name = outline.argument ? option.get_name(true, false) : "--" + option.get_lnames().front();
    outline.kind = outline.argument ? outline.name : option.get_type_name();
    outline.help = option.get_description();
    outline.required = option.get_required();
    outline.repeats = outline.argument && option.get_items_expected_max() > 1;
    outline.offer = offerOf(outline.kind);
    return outline;
}

CommandOutline outlineOf(const CLI::App& app, const std::string& name) {
    CommandOutline outline{name, app.get_description(), {}, {}};
    for (const auto* option : app.get_options())
        if (option->get_group() != sessionGroup) outline.options.push_back(outlineOf(*option));
    for (const auto* below : app.get_subcommands([](const CLI::App*) { return true; }))
        outline.commands.push_back(
            outlineOf(*below, name.empty() ? below->get_name() : name + " " + below->get_name()));
    return outline;
}

void collect(const CommandOutline& command, std::vector<const CommandOutline*>& all) {
    if (command.commands.empty()) all.push_back(&command);
    for (const auto& below : command.commands) collect(below, all);
}

}  // namespace

ProgramOutline outlineOf(const CLI::App& app) {
    ProgramOutline outline{app.get_footer(), {}, outlineOf(app, "")};
    for (const auto* option : app.get_options())
        if (option->get_group() == sessionGroup) outline.session.push_back(outlineOf(*option));
    return outline;
}

std::vector<const CommandOutline*> runnable(const ProgramOutline& outline) {
    std::vector<const CommandOutline*> all;
    collect(outline.program, all);
    return all;
}

std::string lastWord(const CommandOutline& command) {
    const auto blank = command.name.rfind(' ');
    return blank == std::string::npos ? command.name : command.name.substr(blank + 1);
}

std::string escaped(const std::string& text, const char* characters, const std::string& escape) {
    std::string result;
    for (const char character : text) {
        if (character != '\0' && std::strchr(characters, character) != nullptr) result += escape;
        result += character;
    }
    return result;
}

}  // namespace quillbox
