#pragma once

#include <memory>
#include <string>

#include "cli/command.h"
#include "cli/file_job.h"

namespace quillbox {

/// A command that has files and folders copied, moved or removed by the service.
std::unique_ptr<Command> makeJobCommand(std::string name, std::string description, JobType type);

}  // namespace quillbox
