#include "cli/commands/commands.h"
#include "cli/job_command.h"

namespace quillbox {

std::unique_ptr<Command> makeMove() {
    return makeJobCommand("move", "Move files and folders to another folder", JobType::move);
}

}  // namespace quillbox
