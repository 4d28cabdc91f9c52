#include "baseapi/contacts/vcard_file.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "baseapi/contacts/text_file.h"
#include "baseapi/transfer/local_file.h"

namespace baseapi::inline v1 {
namespace {

/// What a core's own cache holds beside the contacts that come of it.
constexpr std::uintmax_t usualPiece = 256 * 1024;

/// Appends the next piece of the file; false where there was none. A card that is longer doubles the piece.
bool readPiece(LocalFile& file, std::size_t length, std::string& text) {
    const auto kept = text.size();
    text.resize(kept + std::max(length, kept));
    const auto count = file.read(text.data() + kept, text.size() - kept);
    text.resize(kept + count);
    return count > 0;
}

/// Where the last card of the text begins, which may go on behind it.
std::size_t lastCard(std::string_view text) {
    const auto begin = text.rfind(beginOfCard);
    return begin == text.npos ? 0 : begin;
}

}  // namespace

void parseVCardFile(const std::filesystem::path& path, const FoundContact& found) {
    const auto length = static_cast<std::size_t>(std::min(usualPiece, std::filesystem::file_size(path) + 1));
    LocalFile file(path);
    std::string text;
    for (bool more = true; more;) {
        more = readPiece(file, length, text);
        const auto whole = std::string_view(text).substr(0, more ? lastCard(text) : text.size());
        requireUTF8(whole, path);
        parseVCardText(whole, found);
        text.erase(0, whole.size());
    }
}

}  // namespace baseapi::inline v1
