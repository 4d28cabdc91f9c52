#include "cli/commands/commands.h"
#include "cli/job_command.h"

namespace quillbox {

std::unique_ptr<Command> makeRemove() {
    return makeJobCommand("remove", "Remove files and folders with all that they hold, for good",
                          JobType::remove);
}

}  // namespace quillbox
