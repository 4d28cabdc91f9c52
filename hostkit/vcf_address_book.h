#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "baseapi/platform/address_book.h"
#include "baseapi/platform/export.h"

namespace hostkit {

/// A folder of `.vcf` files, one contact each (the vdir layout), as an address book. A contact's identifier
/// is the name of its file; files come by name. Hidden files and those of another suffix do not count.
///
/// A contact that is added becomes a file of its own, which is there as a whole or not at all, also where the
/// process ends in the middle of it; a delete removes that contact's file; every other file stays byte for
/// byte. A card that cannot be read is passed over with a warning. A folder that cannot be listed is a
/// permission that was refused.
///
/// All operations may be called from any thread and from several at once; nothing is kept in memory between
/// two calls, so other programs may change the folder meanwhile.
class BASEAPI_API VcfAddressBook : public baseapi::AddressBook {
  public:
    /// Told of a card that was passed over and why, on the thread of the enumeration.
    using Warning = std::function<void(const std::filesystem::path& file, const std::string& why)>;

    /// The folder may come and go. The warning may be absent.
    explicit VcfAddressBook(std::filesystem::path folder, Warning warning = nullptr);

    AuthorizationStatus authorizationStatus() noexcept override;
    /// All fields are read, whatever the keys.
    std::optional<baseapi::AddressBookError> enumerateContacts(
        std::span<const baseapi::ContactKey> keys,
        const std::function<void(baseapi::SharedContact)>& visit) noexcept override;
    std::optional<baseapi::AddressBookError> execute(
        const baseapi::ContactSaveRequest& request) noexcept override;
    /// Given, middle and family name joined by one blank.
    std::optional<std::string> fullName(const baseapi::PackedContact& contact) noexcept override;

  private:
    std::filesystem::path folder_;
    Warning warning_;
};

}  // namespace hostkit
