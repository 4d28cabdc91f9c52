#pragma once

#include <memory>
#include <string>
#include <vector>

#include "cli/exit_status.h"

namespace baseapi::inline v1 {
struct Platform;
}

namespace quillbox {

class Host;
class HostLog;
class Options;
class Output;

/// Where a command puts what it lends the library.
struct Equipment {
    baseapi::Platform& platform;
    HostLog& log;
    Output& output;
};

/// One command of the program: its options and what it does. Each has a file of its own in commands/.
class Command {
  public:
    virtual ~Command() = default;

    virtual std::string name() const = 0;
    virtual std::string description() const = 0;
    virtual void addOptions(Options& options) = 0;
    /// Puts parts of its own in place, before the library is used for the first time.
    virtual void equip(const Equipment&) {}
    /// Throws what stands in problems.h.
    virtual ExitStatus run(Host& host) = 0;
};

/// Every command, in the order of the help.
std::vector<std::unique_ptr<Command>> allCommands();

}  // namespace quillbox
