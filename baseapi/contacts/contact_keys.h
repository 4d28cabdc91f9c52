#pragma once

#include <array>

#include "baseapi/platform/address_book.h"

namespace baseapi::inline v1 {

/// What is read of a contact that goes into a backup. Note, job title and department are not among it, so
/// that a backup holds none.
inline constexpr std::array backupContactKeys{
    ContactKey::identifier,     ContactKey::givenName,        ContactKey::familyName,
    ContactKey::middleName,     ContactKey::organizationName, ContactKey::phoneNumbers,
    ContactKey::emailAddresses,
};

/// What is read of a local contact that an import may replace.
inline constexpr std::array comparedContactKeys{
    ContactKey::identifier,     ContactKey::givenName,        ContactKey::familyName,
    ContactKey::middleName,     ContactKey::organizationName, ContactKey::phoneNumbers,
    ContactKey::emailAddresses, ContactKey::fullName,
};

}  // namespace baseapi::inline v1
