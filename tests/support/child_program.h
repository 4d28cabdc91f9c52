#pragma once

#include <string>
#include <vector>

namespace test_support {

/// Runs a program, named by the first word, with its standard output dropped; gives its end as `waitpid`
/// does.
int statusOfProgram(std::vector<std::string> words);

}  // namespace test_support
