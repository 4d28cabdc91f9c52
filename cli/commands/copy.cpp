#include "cli/commands/commands.h"
#include "cli/job_command.h"

namespace quillbox {

std::unique_ptr<Command> makeCopy() {
    return makeJobCommand("copy", "Copy files and folders with all that they hold", JobType::copy);
}

}  // namespace quillbox
