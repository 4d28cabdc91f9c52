#include "cli/token_mask.h"

#include <algorithm>
#include <cctype>

#include "cli/json_line.h"

namespace quillbox {
namespace {

constexpr std::size_t unmistakable = 8;

bool isWordCharacter(char character) {
    return std::isalnum(static_cast<unsigned char>(character)) || character == '_';
}

bool standsAlone(const std::string& text, std::size_t begin, std::size_t length) {
    const auto end = begin + length;
    return (begin == 0 || !isWordCharacter(text[begin - 1])) &&
           (end == text.size() || !isWordCharacter(text[end]));
}

void replaceAll(std::string& text, const std::string& token) {
    constexpr const char* mask = "***";
    for (auto found = text.find(token); found != std::string::npos;) {
        if (token.size() >= unmistakable || standsAlone(text, found, token.size())) {
            text.replace(found, token.size(), mask);
            found = text.find(token, found + 3);
        } else {
            found = text.find(token, found + 1);
        }
    }
}

}  // namespace

void TokenMask::add(const std::string& token) {
    if (token.empty()) return;
    std::lock_guard lock(mutex_);
    // A token inside JSON text is spelled with escapes.
    for (const auto& form : {token, jsonEscaped(token)})
        if (std::find(tokens_.begin(), tokens_.end(), form) == tokens_.end()) tokens_.push_back(form);
    // The longest first: one token may be the beginning of another.
    std::stable_sort(tokens_.begin(), tokens_.end(),
                     [](const auto& left, const auto& right) { return left.size() > right.size(); });
}

std::string TokenMask::operator()(std::string text) const {
    std::lock_guard lock(mutex_);
    for (const auto& token : tokens_) replaceAll(text, token);
    return text;
}

}  // namespace quillbox
