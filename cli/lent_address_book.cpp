#include "cli/lent_address_book.h"

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
    if (!error && onCounted) onCounted(count);
    return error;
}

}  // namespace quillbox
