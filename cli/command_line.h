#pragma once

#include <memory>

#include "cli/command.h"
#include "cli/session_options.h"

namespace quillbox {

/// The parsed command line.
class CommandLine {
  public:
    CommandLine();
    ~CommandLine();

    /// False where the line asked for something about the program itself, which has been printed then. Throws
    /// `UsageError` where it cannot be used.
    bool parse(int argc, const char* const* argv);

    const SessionOptions& options() const { return options_; }
    Command& command() const { return *chosen_; }

  private:
    struct Parser;

    SessionOptions options_;
    std::vector<std::unique_ptr<Command>> commands_;
    Command* chosen_ = nullptr;
    std::unique_ptr<Parser> parser_;
};

}  // namespace quillbox
