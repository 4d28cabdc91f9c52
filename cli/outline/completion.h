#pragma once

#include <string>
#include <vector>

#include "cli/outline/outline.h"

namespace quillbox {

/// The shells that completions are written for.
inline constexpr const char* shells[] = {"bash", "zsh", "fish"};

/// A script for one of these shells that completes the commands, their options, and what stands in their
/// place.
std::string completionFor(const std::string& shell, const ProgramOutline& outline);

// Each shell's script has a source file of its own.
std::string bashCompletion(const ProgramOutline& outline);
std::string zshCompletion(const ProgramOutline& outline);
std::string fishCompletion(const ProgramOutline& outline);

/// What is offered that is no file, with blanks between; empty for files and folders.
std::string wordsOf(Offer offer);

}  // namespace quillbox
