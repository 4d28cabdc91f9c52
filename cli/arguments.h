#pragma once

#include <string>
#include <vector>

namespace quillbox {

/// The command line as the option parser takes it: without the program's name, last argument first, and with
/// what the parser would misunderstand put in other words. The empty value of "--option=", which it
/// overlooks, is an argument of its own; a text that begins with a bracket, which may be a list to it, has a
/// guard before it.
std::vector<std::string> parserArguments(int argc, const char* const* argv);

/// A parsed text as the user wrote it.
std::string withoutGuard(const std::string& text);

}  // namespace quillbox
