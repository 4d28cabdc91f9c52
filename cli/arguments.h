#pragma once

#include <string>
#include <vector>

namespace quillbox {

/// The command line as the option parser takes it: without the program's name, last argument first, and with
/// the empty value of "--option=" as an argument of its own, which the parser would otherwise overlook.
std::vector<std::string> parserArguments(int argc, const char* const* argv);

}  // namespace quillbox
