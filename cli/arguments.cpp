#include "cli/arguments.h"

#include <algorithm>

namespace quillbox {
namespace {

constexpr char guard = '\x01';

}  // namespace

std::vector<std::string> parserArguments(int argc, const char* const* argv) {
    std::vector<std::string> arguments;
    bool optionsEnded = false;
    for (int index = 1; index < argc; ++index) {
        std::string argument = argv[index];
        optionsEnded = optionsEnded || argument == "--";
        const bool emptyValue =
            !optionsEnded && argument.starts_with("--") && argument.find('=') == argument.size() - 1;
        if (emptyValue) argument.pop_back();
        if (argument.starts_with('[') || argument.starts_with(guard)) argument.insert(0, 1, guard);
        arguments.push_back(std::move(argument));
        if (emptyValue) arguments.emplace_back();
    }
    std::reverse(arguments.begin(), arguments.end());
    return arguments;
}

std::string withoutGuard(const std::string& text) {
    return text.starts_with(guard) ? text.substr(1) : text;
}

}  // namespace quillbox
