#include "cli/arguments.h"

#include <algorithm>

namespace quillbox {

std::vector<std::string> parserArguments(int argc, const char* const* argv) {
    std::vector<std::string> arguments;
    bool optionsEnded = false;
    for (int index = 1; index < argc; ++index) {
        std::string argument = argv[index];
        optionsEnded = optionsEnded || argument == "--";
        const bool emptyValue =
            !optionsEnded && argument.starts_with("--") && argument.find('=') == argument.size() - 1;
        if (emptyValue) argument.pop_back();
        arguments.push_back(std::move(argument));
        if (emptyValue) arguments.emplace_back();
    }
    std::reverse(arguments.begin(), arguments.end());
    return arguments;
}

}  // namespace quillbox
