#include "cli/lent_address_book.h"

#include <algorithm>
#include <filesystem>

#include "cli/output.h"
#include "hostkit/vcf_address_book.h"

namespace quillbox {

LentAddressBook::LentAddressBook(const std::string& folder, Output& output)
    : folder_(std::make_unique<hostkit::VcfAddressBook>(
          folder, [&output](const std::filesystem::path& file, const std::string& why) {
              output.note("quillbox: warning: " + file.string() + " is passed over: " + why);
          })) {}

std::optional<baseapi::AddressBookError> LentAddressBook::enumerateContacts(
    std::span<const baseapi::ContactKey> keys,
    const std::function<void(baseapi::SharedContact)>& visit) noexcept {
    std::int64_t count = 0;
    auto error = folder_->enumerateContacts(keys, [&](baseapi::SharedContact contact) {
        ++count;
        visit(std::move(contact));
    });
    if (error) return error;
    {
        std::lock_guard lock(mutex_);
        wasRead_ = true;
    }
    if (onCounted) onCounted(count);
    return std::nullopt;
}

std::optional<baseapi::AddressBookError> LentAddressBook::execute(
    const baseapi::ContactSaveRequest& request) noexcept {
    auto error = folder_->execute(request);
    const auto added = static_cast<std::int64_t>(request.added.size());
    std::lock_guard lock(mutex_);
    // Contacts that cannot be added together come again, one by one.
    tally_.given = std::max(tally_.given, added);
    if (error) {
        tally_.problem = error->message;
    } else {
        tally_.saved += added;
        tally_.removed += static_cast<std::int64_t>(request.deleted.size());
    }
    return error;
}

bool LentAddressBook::wasRead() const {
    std::lock_guard lock(mutex_);
    return wasRead_;
}

LentAddressBook::Tally LentAddressBook::tally() const {
    std::lock_guard lock(mutex_);
    return tally_;
}

}  // namespace quillbox
