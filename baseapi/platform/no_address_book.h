#pragma once

#include "baseapi/platform/address_book.h"

namespace baseapi::inline v1 {

/// What stands for the address book of a system that lends none: its permission is not granted.
class NoAddressBook final : public AddressBook {
  public:
    AuthorizationStatus authorizationStatus() noexcept override { return AuthorizationStatus::denied; }
    std::optional<AddressBookError> enumerateContacts(
        std::span<const ContactKey>, const std::function<void(SharedContact)>&) noexcept override {
        return AddressBookError{missing};
    }
    std::optional<AddressBookError> execute(const ContactSaveRequest&) noexcept override {
        return AddressBookError{missing};
    }
    std::optional<std::string> fullName(const PackedContact&) noexcept override { return std::nullopt; }

  private:
    static constexpr const char* missing = "there is no address book";
};

}  // namespace baseapi::inline v1
