#pragma once

#include <functional>
#include <string_view>

#include "baseapi/platform/address_book.h"

namespace baseapi::inline v1 {

/// Each card begins with it.
inline constexpr std::string_view beginOfCard = "BEGIN:VCARD";

using FoundContact = std::function<void(SharedContact)>;

/// Hands the usable contacts of a text of vCards to `found`, in its order; their identifiers are empty.
///
/// A narrow reader: it knows seven properties by the beginning of their line, does not unfold lines, and
/// takes values as they stand, so that what the writer escaped stays escaped. A card without family name,
/// given name and organisation gives nothing.
void parseVCardText(std::string_view text, const FoundContact& found);

}  // namespace baseapi::inline v1
