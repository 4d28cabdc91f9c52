#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "baseapi/platform/address_book.h"
#include "cli/command.h"

namespace quillbox {

/// The address book that a command lends the library: a folder of `.vcf` files, whose broken cards people are
/// warned of, and whose contacts are counted as they are read.
class LentAddressBook final : public baseapi::AddressBook {
  public:
    LentAddressBook(const std::string& folder, Output& output);

    /// Told how many contacts there are each time that all have been read, on the thread that reads them; to
    /// be set before.
    std::function<void(std::int64_t)> onCounted;
    /// Whether all contacts have been read, once at least.
    bool wasRead() const;

    /// What has become of contacts that were to be added.
    struct Tally {
        std::int64_t given = 0;
        std::int64_t saved = 0;
        std::int64_t removed = 0;
        /// Why the last one was not saved.
        std::string problem;
    };
    Tally tally() const;

    AuthorizationStatus authorizationStatus() noexcept override { return folder_->authorizationStatus(); }
    std::optional<baseapi::AddressBookError> enumerateContacts(
        std::span<const baseapi::ContactKey> keys,
        const std::function<void(baseapi::SharedContact)>& visit) noexcept override;
    std::optional<baseapi::AddressBookError> execute(
        const baseapi::ContactSaveRequest& request) noexcept override;
    std::optional<std::string> fullName(const baseapi::PackedContact& contact) noexcept override {
        return folder_->fullName(contact);
    }

  private:
    const std::unique_ptr<baseapi::AddressBook> folder_;
    mutable std::mutex mutex_;
    Tally tally_;
    bool wasRead_ = false;
};

}  // namespace quillbox
