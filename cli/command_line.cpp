#include "cli/command_line.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <sstream>
#include <string>

#include "cli/arguments.h"
#include "cli/options.h"
#include "cli/problems.h"
#include "cli/stream.h"

namespace quillbox {
namespace {

constexpr const char* footer =
    "Exit status: 0 success; 1 the library reported a failure; 2 the command line cannot be used;\n"
    "3 no answer within --wait; 130 interrupted.";

void addSessionOptions(CLI::App& app, SessionOptions& values) {
    Options options(app, "Session");
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

}  // namespace

struct CommandLine::Parser {
    CLI::App app{"The command line of a personal cloud drive.", "quillbox"};

    std::string whyUnusable(const CLI::ParseError& error) const {
        const auto chosen = app.get_subcommands();
        if (const auto rest = app.remaining(); chosen.empty() && !rest.empty())
            return "there is no command " + rest.front() + "; see quillbox --help";
        const auto name = chosen.empty() ? std::string() : chosen.front()->get_name() + " ";
        return firstLineOf(error.what()) + "; see quillbox " + name + "--help";
    }

    /// Prints what was asked for in place of a command.
    void answer(const CLI::ParseError& error) const {
        std::ostringstream text;
        app.exit(error, text, text);
        Stream out(1);
        out.write(text.str());
        if (!out.error().empty())
            throw std::runtime_error("standard output cannot be written: " + out.error());
    }
};

CommandLine::CommandLine() : commands_(allCommands()), parser_(std::make_unique<Parser>()) {
    auto& app = parser_->app;
    app.footer(footer);
    app.set_version_flag("--version", "quillbox " QUILLBOX_VERSION);
    app.require_subcommand(1);
    addSessionOptions(app, options_);
    for (const auto& command : commands_) {
        auto* sub = app.add_subcommand(command->name(), command->description());
        // The session options stand anywhere on the line.
        addSessionOptions(*sub, options_);
        Options options(*sub);
        command->addOptions(options);
        sub->final_callback([this, chosen = command.get()] { chosen_ = chosen; });
    }
}

CommandLine::~CommandLine() = default;

bool CommandLine::parse(int argc, const char* const* argv) try {
    parser_->app.parse(parserArguments(argc, argv));
    return true;
} catch (const CLI::ParseError& error) {
    if (error.get_exit_code() != 0) throw UsageError{parser_->whyUnusable(error)};
    parser_->answer(error);
    return false;
}

}  // namespace quillbox
