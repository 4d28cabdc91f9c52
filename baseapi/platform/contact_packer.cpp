#include "baseapi/platform/contact_packer.h"

#include <algorithm>
#include <cstddef>

namespace baseapi::inline v1 {

SharedContact ContactPacker::share(const ContactTexts& texts) {
    constexpr std::size_t usualChunk = 16 * 1024 / sizeof(std::uint32_t);
    const auto words = PackedContact::wordsOf(texts);
    if (words > room_.size()) {
        const auto size = std::max(words, usualChunk);
        chunk_ = std::make_shared_for_overwrite<std::uint32_t[]>(size);
        room_ = {chunk_.get(), size};
    }
    const auto* contact = PackedContact::pack(texts, room_.data());
    room_ = room_.subspan(words);
    return {chunk_, contact};
}

}  // namespace baseapi::inline v1
