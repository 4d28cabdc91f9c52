#include "cli/outline/manual_page.h"

#include <algorithm>

namespace quillbox {
namespace {

/// A text that the formatter prints as it stands.
std::string plain(const std::string& text) {
    std::string result;
    for (const char character : text) {
        if (character == '\\')
            result += "\\e";
        else if (character == '-')
            result += "\\-";
        else
            result += character;
    }
    return result.starts_with('.') || result.starts_with('\'') ? "\\&" + result : result;
}

std::string bold(const std::string& text) {
    return "\\fB" + plain(text) + "\\fR";
}

std::string italic(const std::string& text) {
    return "\\fI" + plain(text) + "\\fR";
}

std::string withValue(const OptionOutline& option) {
    if (option.argument) return italic(option.name) + (option.repeats ? "..." : "");
    return bold(option.name) + (option.kind.empty() ? "" : " " + italic(option.kind));
}

std::string synopsis(const CommandOutline& command) {
    auto text = bold("quillbox " + command.name);
    for (const auto& option : command.options) {
        if (option.name == "--help") continue;
        text += option.required ? " " + withValue(option) : " [" + withValue(option) + "]";
    }
    return text;
}

/// Two blanks stand before a variable's name in the help.
std::string helpOf(const OptionOutline& option) {
    const auto variable = option.help.find("  [");
    return plain(option.help.substr(0, variable)) + ".";
}

std::string optionList(const std::vector<OptionOutline>& options) {
    std::string text;
    for (const auto& option : options)
        if (option.name != "--help") text += ".TP\n" + withValue(option) + "\n" + helpOf(option) + "\n";
    return text;
}

std::string commandSection(const CommandOutline& command) {
    auto text = ".SS " + synopsis(command) + "\n" + plain(command.description) + ".\n";
    return text + optionList(command.options);
}

std::string environment(const ProgramOutline& outline) {
    std::string text;
    for (const auto& option : outline.session) {
        const auto begin = option.help.find("  [");
        if (begin == std::string::npos) continue;
        const auto variable = option.help.substr(begin + 3, option.help.size() - begin - 4);
        text +=
            ".TP\n" + bold(variable) + "\nThe value of " + bold(option.name) + " where that is not given.\n";
    }
    return text;
}

/// "Exit status: 0 success; 1 ...;" as a list.
std::string exitStatus(const std::string& footer) {
    std::string text;
    std::size_t begin = footer.find(':') + 1;
    while (begin < footer.size()) {
        const auto end = std::min(footer.find(';', begin), footer.size());
        auto item = footer.substr(begin, end - begin);
        item.erase(0, item.find_first_not_of(" \n"));
        if (item.ends_with('.')) item.pop_back();
        const auto blank = std::min(item.find_first_of(" :"), item.size());
        text += ".TP\n" + bold(item.substr(0, blank)) + "\n" +
                plain(item.substr(std::min(blank + 1, item.size()))) + ".\n";
        begin = end + 1;
    }
    return text;
}

constexpr const char* filesSection = R"(.TP
\fI$XDG_STATE_HOME/quillbox\fR, or \fI~/.local/state/quillbox\fR
The preferences, where \fB\-\-state\fR names no other folder.
.TP
\fI$TMPDIR\fR, or \fI/tmp\fR
What a backup or a download writes on its way.
)";

constexpr const char* examples = R"(Signing in, and a folder up and down:
.PP
.nf
.RS
export QUILLBOX_HOST=http://127.0.0.1:8080
quillbox sign\-in \-\-code anna \-\-save token
export QUILLBOX_TOKEN_FILE=$PWD/token
quillbox upload letters
quillbox verify letters \-\-parent root
.RE
.fi
.PP
One operation of the service, for a script:
.PP
.nf
.RS
quillbox \-\-json call filesList '{"parentFileId":"root"}'
.RE
.fi
)";

}  // namespace

std::string manualPage(const ProgramOutline& outline) {
    std::string text = ".TH QUILLBOX 1 \"\" \"quillbox " QUILLBOX_VERSION
                       "\" \"User Commands\"\n.SH NAME\nquillbox \\- " +
                       std::string("the command line of a personal cloud drive\n");
    text += ".SH SYNOPSIS\n.B quillbox\n[\\fIoption\\fR...] \\fIcommand\\fR [\\fIargument\\fR...]\n";
    text +=
        ".SH DESCRIPTION\nFiles up and down, backups of folders, photos and contacts, and every operation of "
        "the service, from a terminal or a script. An option wins over the environment. A failure is told "
        "with its cause, in one line for each item that failed.\n";
    text += ".SH COMMANDS\n";
    for (const auto* command : runnable(outline)) text += commandSection(*command);
    text += ".SH OPTIONS\nThese stand anywhere on the line.\n" + optionList(outline.session);
    text += ".SH ENVIRONMENT\n" + environment(outline);
    text += ".SH EXIT STATUS\n" + exitStatus(outline.footer);
    text += ".SH FILES\n" + std::string(filesSection);
    text += ".SH EXAMPLES\n" + std::string(examples);
    return text;
}

}  // namespace quillbox
