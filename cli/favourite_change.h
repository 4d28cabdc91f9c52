#pragma once

#include <memory>
#include <string>

#include "cli/command.h"

namespace quillbox {

/// The command that makes items favourites, or no more.
std::unique_ptr<Command> makeFavouriteChange(std::string name, std::string description, bool starred);

}  // namespace quillbox
