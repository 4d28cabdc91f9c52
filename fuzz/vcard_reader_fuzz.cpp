// Any bytes are a contact or a broken card that says why; and a contact that was read is the same after it
// was written and read again.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <variant>

#include "baseapi/json/utf8.h"
#include "hostkit/vcard.h"

namespace {

using baseapi::AddressBookContact;
using hostkit::BrokenCard;

void require(bool holds) {
    if (!holds) std::abort();
}

AddressBookContact writtenAndRead(const AddressBookContact& contact) {
    const auto card = hostkit::writeVCard(*shareContact(contact), "uid");
    require(baseapi::isValidUTF8(card));
    const auto read = hostkit::readVCard(card);
    require(std::holds_alternative<AddressBookContact>(read));
    return std::get<AddressBookContact>(read);
}

AddressBookContact withoutLabels(AddressBookContact contact) {
    for (auto& phone : contact.phoneNumbers) phone.label.reset();
    for (auto& email : contact.emailAddresses) email.label.reset();
    return contact;
}

/// An organisation alone is written as the formatted name too, and read as the given name.
AddressBookContact withFormattedName(AddressBookContact contact) {
    if (hostkit::fullNameOf(*shareContact(contact)).empty()) contact.givenName = contact.organizationName;
    return contact;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto read = hostkit::readVCard({reinterpret_cast<const char*>(data), size});
    if (const auto* broken = std::get_if<BrokenCard>(&read)) {
        require(!broken->why.empty());
        return 0;
    }
    const auto& contact = std::get<AddressBookContact>(read);
    const auto again = writtenAndRead(contact);
    require(withoutLabels(again) == withoutLabels(withFormattedName(contact)));
    // A label loses what a parameter cannot hold, and then nothing more.
    require(writtenAndRead(again) == again);
    return 0;
}
