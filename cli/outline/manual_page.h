#pragma once

#include <string>

#include "cli/outline/outline.h"

namespace quillbox {

/// The manual page of the program, as `man` reads it.
std::string manualPage(const ProgramOutline& outline);

}  // namespace quillbox
