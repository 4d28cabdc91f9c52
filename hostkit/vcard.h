#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "baseapi/platform/address_book.h"

namespace hostkit {

/// Why a text is no vCard that this reads, such as "no VERSION".
struct BrokenCard {
    std::string why;
};

/// The contact of a text of exactly one vCard 3.0 or 4.0, its identifier empty. Read are N, the first part of
/// ORG, TEL, EMAIL, TITLE and NOTE, unfolded and unescaped; FN gives the given name where N is absent or
/// empty. The label of a phone or an address is the text of its TYPE parameters in upper case, joined with
/// ","; without TYPE it is absent.
std::variant<baseapi::AddressBookContact, BrokenCard> readVCard(std::string_view text);

/// The contact as one vCard 3.0 with this UID; FN is the organisation where there is no name. The labels of
/// the address book become home HOME, mobile CELL, work WORK, a fax HOME,FAX or WORK,FAX or FAX; main and
/// other have no TYPE. Any other label is a TYPE as it is.
std::string writeVCard(const baseapi::PackedContact& contact, std::string_view uid);

/// Given, middle and family name, the empty ones left out, joined by one blank.
std::string fullNameOf(const baseapi::PackedContact& contact);

}  // namespace hostkit
