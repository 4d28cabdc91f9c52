#pragma once

#include <string_view>

#include "quillboxd/call.h"
#include "quillboxd/crypto/signed_address.h"
#include "quillboxd/store/shares.h"

namespace quillboxd::shares {

// What the visitor of a link may do, whether through the library or in a browser.

bool isOwner(const Call& call, const Share& share);
std::string ownerName(Call& call, const Share& share);

/// The link of this address; throws where there is none, where it has expired, and where it is for others.
Share requireLink(Call& call, std::string_view shortUrl);

/// Whether the code opens the link; one without a code is open, and its owner needs none.
bool codeFits(const Call& call, const Share& share, std::string_view code);

/// What the link shows in a folder, and without one what it names itself.
Page listFiles(Call& call, const Share& share, std::string_view folder, std::string_view keyWord,
               const PageRequest& page);

/// Throws where the link no longer lets its visitors have the content.
void requireOpenFor(Call& call, const ContentAddress& address);

}  // namespace quillboxd::shares
