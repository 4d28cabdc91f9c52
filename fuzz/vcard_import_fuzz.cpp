// A whole file of any bytes ends in contacts or in none: what is imported is found again by its name and
// number, so that a second import of the same file replaces it, and nothing of a card is made up.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>

#include "baseapi/contacts/contact_manager.h"
#include "baseapi/contacts/unicode_text.h"
#include "baseapi/contacts/vcard_text.h"
#include "baseapi/contacts/vcf_import_manager.h"
#include "baseapi/json/utf8.h"
#include "tests/support/test_platform.h"

namespace {

using namespace baseapi;

void require(bool holds) {
    if (!holds) std::abort();
}

void requireFromText(std::string_view value, std::string_view text) {
    require(text.find(value) != text.npos);
}

void requireUsable(const PackedContact& contact, std::string_view text) {
    require(!contact.givenName().empty() || !contact.familyName().empty() ||
            !contact.organizationName().empty());
    for (const auto value : {contact.givenName(), contact.familyName(), contact.middleName(),
                             contact.organizationName(), contact.jobTitle(), contact.note()})
        requireFromText(value, text);
    for (const auto& phone : contact.phoneNumbers()) {
        require(phone.label && !phone.value.empty());
        requireFromText(phone.value, text);
    }
    for (const auto& email : contact.emailAddresses()) requireFromText(email.value, text);
}

bool hasNameAndPhone(const SharedContact& contact) {
    return VCFImportManager::findDuplicateContactsToDeleteEfficient({&contact, 1}, {&contact, 1}).size() == 1;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    static const auto file = test_support::temporaryFolder() / "fuzz.vcf";
    std::ofstream(file, std::ios::binary | std::ios::trunc) << text;
    auto& book = test_support::addressBook();
    book.reset();
    test_support::recordingLog().clear();

    const auto count = VCFImportManager::importContactsFromVCF(URL::file(file));
    require((count == -1) == !isValidUTF8(text));
    require(static_cast<std::size_t>(std::max<std::int64_t>(count, 0)) == book.size());
    const auto imported = VCFImportManager::getLocalMutableContactsForComparison();
    for (const auto& contact : imported) requireUsable(*contact, text);

    const auto replaced = std::ranges::count_if(imported, hasNameAndPhone);
    require(VCFImportManager::importContactsFromVCF(URL::file(file)) == count);
    require(book.size() == 2 * imported.size() - static_cast<std::size_t>(replaced));

    require(isValidUTF8(vCardText(ContactManager::shared().fetchAllContacts())));
    return 0;
}
