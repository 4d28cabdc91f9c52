#include "cli/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <iterator>
#include <map>
#include <sstream>
#include <string>

#include "cli/arguments.h"
#include "cli/options.h"
#include "cli/outline/completion.h"
#include "cli/outline/manual_page.h"
#include "cli/problems.h"
#include "cli/stream.h"

namespace quillbox {
namespace {

constexpr const char* footer =
    "Exit status: 0 success; 1 the library reported a failure; 2 the command line cannot be used;\n"
    "3 no answer within --wait; 4 some files of a backup failed, with --fail-on-partial; 130 interrupted.";

void addSessionOptions(CLI::App& app, SessionOptions& values) {
    Options options(app, sessionGroup);
    options.text("--host", values.host, "URL",
                 "The service's address, without a slash at its end  [QUILLBOX_HOST]");
    options.text("--token", values.token, "TEXT", "The access token  [QUILLBOX_TOKEN]");
    options.text("--token-file", values.tokenFile, "FILE",
                 "A file whose first line is the token  [QUILLBOX_TOKEN_FILE]");
    options.text("--content-id", values.contentId, "ID", "The container of uploads  [QUILLBOX_CONTENT_ID]");
    options.text("--state", values.state, "DIR", "The folder that keeps preferences  [QUILLBOX_STATE]");
    options.text("--log", values.log, "DEST",
                 "Where log lines go, a file or - for standard error; they hold the token  [QUILLBOX_LOG]");
    options.text("--cacert", values.cacert, "FILE",
                 "Certificates to trust in place of the system's  [QUILLBOX_CACERT]");
    options.flag("--json", values.json, "Output for programs: one JSON object a line");
}

std::string firstLineOf(std::string text) {
    if (const auto end = text.find('\n'); end != std::string::npos) text.resize(end);
    return text;
}

void print(const std::string& text) {
    Stream out(1);
    out.write(text);
    if (!out.error().empty()) throw std::runtime_error("standard output cannot be written: " + out.error());
}

}  // namespace

struct CommandLine::Parser {
    CLI::App app{"The command line of a personal cloud drive.", "quillbox"};

    /// The parser of a command; one whose name is of two words stands under the first of them.
    CLI::App& add(const std::string& name, const std::string& description, SessionOptions& values) {
        const auto blank = name.find(' ');
        auto& above = blank == name.npos ? app : group(name.substr(0, blank), values);
        auto& added = *above.add_subcommand(name.substr(blank == name.npos ? 0 : blank + 1), description);
        // The session options stand anywhere on the line.
        addSessionOptions(added, values);
        return added;
    }

    std::string whyUnusable(const CLI::ParseError& error) const {
        std::string name;
        const CLI::App* last = &app;
        while (!last->get_subcommands().empty()) {
            last = last->get_subcommands().front();
            name += last->get_name() + " ";
        }
        const auto rest = last->remaining();
        if (isGroup(*last) && !rest.empty())
            return "there is no command " + name + rest.front() + "; see quillbox " + name + "--help";
        return firstLineOf(error.what()) + "; see quillbox " + name + "--help";
    }

    std::string helpOrVersion(const CLI::ParseError& error) const {
        std::ostringstream text;
        app.exit(error, text, text);
        return text.str();
    }

    /// What is printed of the command line itself, made from what it declares.
    void addDocuments(SessionOptions& values) {
        auto& completion =
            add("completion", "Print a script for a shell that completes the commands", values);
        Options(completion).requiredText("SHELL", shell_, "", "bash, zsh or fish");
        completion.final_callback([this] {
            if (std::find(std::begin(shells), std::end(shells), shell_) == std::end(shells))
                throw UsageError{"there is no completion for " + shell_ +
                                 "; there is for bash, zsh and fish"};
            document = completionFor(shell_, outlineOf(app));
        });
        add("manual", "Print the manual page; quillbox manual | man -l - shows it", values)
            .final_callback([this] { document = manualPage(outlineOf(app)); });
    }

    /// What a command has made that only prints; empty for all others.
    std::string document;

  private:
    static bool isGroup(const CLI::App& parser) {
        return !parser.get_subcommands([](const CLI::App*) { return true; }).empty();
    }

    CLI::App& group(const std::string& name, SessionOptions& values) {
        auto*& found = groups_[name];
        if (found != nullptr) return *found;
        found = app.add_subcommand(name, "Several commands; see quillbox " + name + " --help");
        found->require_subcommand(1);
        addSessionOptions(*found, values);
        return *found;
    }

    std::map<std::string, CLI::App*> groups_;
    std::string shell_;
};

CommandLine::CommandLine() : commands_(allCommands()), parser_(std::make_unique<Parser>()) {
    auto& app = parser_->app;
    app.footer(footer);
    app.set_version_flag("--version", "quillbox " QUILLBOX_VERSION);
    app.require_subcommand(1);
    addSessionOptions(app, options_);
    for (const auto& command : commands_) {
        auto& sub = parser_->add(command->name(), command->description(), options_);
        Options options(sub);
        command->addOptions(options);
        sub.final_callback([this, chosen = command.get()] { chosen_ = chosen; });
    }
    parser_->addDocuments(options_);
}

CommandLine::~CommandLine() = default;

bool CommandLine::parse(int argc, const char* const* argv) try {
    parser_->app.parse(parserArguments(argc, argv));
    if (parser_->document.empty()) return true;
    print(parser_->document);
    return false;
} catch (const CLI::ParseError& error) {
    if (error.get_exit_code() != 0) throw UsageError{parser_->whyUnusable(error)};
    print(parser_->helpOrVersion(error));
    return false;
}

}  // namespace quillbox
