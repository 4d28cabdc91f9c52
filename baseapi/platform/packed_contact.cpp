#include "baseapi/platform/packed_contact.h"

#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

namespace baseapi::inline v1 {
namespace {

/// No other kind of exception may leave the library.
struct ContactTooLarge : std::bad_alloc {
    const char* what() const noexcept override { return "a contact of 2 GiB or more"; }
};

/// Calls `take` with each text in its place, and with whether it is absent.
template <class Function>
void forEachText(const ContactTexts& texts, Function take) {
    for (const auto name : {texts.identifier, texts.givenName, texts.familyName, texts.middleName,
                            texts.organizationName, texts.jobTitle, texts.departmentName, texts.note})
        take(name, false);
    for (const auto entries : {texts.phoneNumbers, texts.emailAddresses}) {
        for (const auto& [label, value] : entries) {
            take(label.value_or(std::string_view()), !label);
            take(value, false);
        }
    }
}

}  // namespace

static_assert(std::is_trivially_destructible_v<PackedContact>);
static_assert(sizeof(PackedContact) % sizeof(std::uint32_t) == 0);

std::size_t PackedContact::wordsOf(const ContactTexts& texts) {
    std::uint64_t bytes = 0;
    std::uint64_t count = 0;
    forEachText(texts, [&](std::string_view text, bool) {
        bytes += text.size();
        ++count;
    });
    constexpr auto word = sizeof(std::uint32_t);
    const auto size = sizeof(PackedContact) + (count + 1) * word + bytes;
    if (size >= absent) throw ContactTooLarge();
    return static_cast<std::size_t>((size + word - 1) / word);
}

const PackedContact* PackedContact::pack(const ContactTexts& texts, std::uint32_t* words) {
    auto* const contact = new (words) PackedContact(static_cast<std::uint32_t>(texts.phoneNumbers.size()),
                                                    static_cast<std::uint32_t>(texts.emailAddresses.size()));
    auto* offset = words + sizeof(PackedContact) / sizeof *words;
    auto* const begin = reinterpret_cast<char*>(offset + contact->textCount() + 1);
    auto* end = begin;
    forEachText(texts, [&](std::string_view text, bool isAbsent) {
        *offset++ = static_cast<std::uint32_t>(end - begin) | (isAbsent ? absent : 0);
        end += text.copy(end, text.size());
    });
    *offset = static_cast<std::uint32_t>(end - begin);
    return contact;
}

bool PackedContact::operator==(const PackedContact& other) const {
    if (phones_ != other.phones_ || emails_ != other.emails_) return false;
    const auto length = offset(textCount());
    return length == other.offset(textCount()) &&
           std::memcmp(offsets(), other.offsets(), textCount() * sizeof *offsets()) == 0 &&
           std::memcmp(texts(), other.texts(), length) == 0;
}

SharedContact shareContact(const ContactTexts& texts) {
    auto memory = std::make_shared_for_overwrite<std::uint32_t[]>(PackedContact::wordsOf(texts));
    const auto* contact = PackedContact::pack(texts, memory.get());
    return {std::move(memory), contact};
}

}  // namespace baseapi::inline v1
