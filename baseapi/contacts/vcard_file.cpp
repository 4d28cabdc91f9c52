#include "baseapi/contacts/vcard_file.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "baseapi/contacts/text_file.h"
#include "baseapi/transfer/local_file.h"

namespace baseapi::inline v1 {
namespace {

/// What a core's own cache holds beside the contacts that come of it.
constexpr std::uintmax_t usualPiece = 256 * 1024;

/// Where the last card of the text begins, which may go on behind it.
std::size_t lastCard(std::string_view text) {
    const auto begin = text.rfind(beginOfCard);
    return begin == text.npos ? 0 : begin;
}

}  // namespace

void parseVCardFile(const std::filesystem::path& path, const FoundContact& found) {
    LocalFile file(path);
    std::string room(static_cast<std::size_t>(std::min(usualPiece, std::filesystem::file_size(path) + 1)),
                     '\0');
    std::size_t kept = 0;
    for (bool more = true; more;) {
        // A card that is longer than half of the room doubles it.
        if (kept > room.size() / 2) room.resize(2 * room.size());
        const auto count = file.read(room.data() + kept, room.size() - kept);
        more = count > 0;
        const std::string_view text(room.data(), kept + count);
        const auto whole = text.substr(0, more ? lastCard(text) : text.size());
        requireUTF8(whole, path);
        parseVCardText(whole, found);
        kept = text.size() - whole.size();
        std::memmove(room.data(), room.data() + whole.size(), kept);
    }
}

}  // namespace baseapi::inline v1
