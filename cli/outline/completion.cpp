#include "cli/outline/completion.h"

#include "cli/operations.h"

namespace quillbox {

std::string completionFor(const std::string& shell, const ProgramOutline& outline) {
    if (shell == "zsh") return zshCompletion(outline);
    if (shell == "fish") return fishCompletion(outline);
    return bashCompletion(outline);
}

std::string wordsOf(Offer offer) {
    std::string words;
    const auto add = [&words](std::string_view word) {
        if (!words.empty()) words += ' ';
        words += word;
    };
    if (offer == Offer::operations)
        for (const auto& operation : operations()) add(operation.name);
    if (offer == Offer::shells)
        for (const auto* shell : shells) add(shell);
    return words;
}

}  // namespace quillbox
