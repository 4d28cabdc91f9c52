#pragma once

#include <string_view>
#include <vector>

#include "baseapi/platform/address_book.h"

namespace baseapi {

/// The usable contacts of a text of vCards, in its order; their identifiers are empty.
///
/// A narrow reader: it knows seven properties by the beginning of their line, does not unfold lines, and
/// takes values as they stand, so that what the writer escaped stays escaped. A card without family name,
/// given name and organisation gives nothing.
std::vector<SharedContact> parseVCardText(std::string_view text);

}  // namespace baseapi
