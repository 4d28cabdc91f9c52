#include "hostkit/vcf_address_book.h"

#include <algorithm>
#include <exception>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <utility>
#include <variant>
#include <vector>

#include "baseapi/contacts/side_file.h"
#include "baseapi/contacts/text_file.h"
#include "baseapi/platform/uuid.h"
#include "hostkit/vcard.h"

namespace hostkit {

namespace fs = std::filesystem;
using baseapi::AddressBookContact;
using baseapi::AddressBookError;
using baseapi::PackedContact;
using baseapi::SharedContact;

namespace {

bool isCardName(const fs::path& name) {
    return name.extension() == ".vcf" && !name.native().starts_with('.');
}

/// By name; throws where the folder cannot be listed.
std::vector<fs::path> cardNames(const fs::path& folder) {
    std::vector<fs::path> names;
    for (const auto& entry : fs::directory_iterator(folder)) {
        auto name = entry.path().filename();
        if (isCardName(name)) names.push_back(std::move(name));
    }
    std::ranges::sort(names, {}, &fs::path::native);
    return names;
}

std::variant<SharedContact, BrokenCard> readCard(const fs::path& file) try {
    auto card = readVCard(baseapi::TextFile(file).text());
    if (auto* broken = std::get_if<BrokenCard>(&card)) return std::move(*broken);
    auto& contact = std::get<AddressBookContact>(card);
    contact.identifier = file.filename();
    return shareContact(contact);
} catch (const std::exception& error) {
    return BrokenCard{error.what()};
}

/// The file of a contact of this folder; an identifier of elsewhere leads nowhere.
fs::path fileOf(const fs::path& folder, const PackedContact& contact) {
    const fs::path name(contact.identifier());
    auto file = folder / name;
    if (name != name.filename() || !isCardName(name) || !fs::is_regular_file(file))
        throw std::runtime_error("no such contact: " + name.native());
    return file;
}

std::vector<fs::path> filesOf(const fs::path& folder, std::span<const SharedContact> contacts) {
    std::vector<fs::path> files;
    for (const auto& contact : contacts) files.push_back(fileOf(folder, *contact));
    return files;
}

/// The cards of a request, which are not yet contacts of the folder.
std::vector<baseapi::SideFile> writeCards(const fs::path& folder, std::span<const SharedContact> contacts) {
    std::vector<baseapi::SideFile> cards;
    cards.reserve(contacts.size());
    for (const auto& contact : contacts) {
        const auto uid = baseapi::randomUuid();
        auto& card = cards.emplace_back(folder / (uid + ".vcf"));
        card.write(writeVCard(*contact, uid));
    }
    return cards;
}

/// All of them or, where one cannot be, none.
void takePlaces(std::vector<baseapi::SideFile>& cards) {
    std::size_t taken = 0;
    try {
        for (; taken < cards.size(); ++taken) cards[taken].takePlace();
    } catch (...) {
        std::error_code ignored;
        while (taken > 0) fs::remove(cards[--taken].place(), ignored);
        throw;
    }
}

}  // namespace

VcfAddressBook::VcfAddressBook(fs::path folder, Warning warning)
    : folder_(std::move(folder)), warning_(std::move(warning)) {}

baseapi::AddressBook::AuthorizationStatus VcfAddressBook::authorizationStatus() noexcept {
    std::error_code error;
    const fs::directory_iterator listed(folder_, error);
    return error ? AuthorizationStatus::denied : AuthorizationStatus::authorized;
}

std::optional<AddressBookError> VcfAddressBook::enumerateContacts(
    std::span<const baseapi::ContactKey>, const std::function<void(SharedContact)>& visit) noexcept try {
    for (const auto& name : cardNames(folder_)) {
        auto card = readCard(folder_ / name);
        if (auto* contact = std::get_if<SharedContact>(&card)) {
            visit(std::move(*contact));
        } else if (warning_) {
            warning_(folder_ / name, std::get<BrokenCard>(card).why);
        }
    }
    return std::nullopt;
} catch (const std::exception& error) {
    return AddressBookError{error.what()};
}

std::optional<AddressBookError> VcfAddressBook::execute(const baseapi::ContactSaveRequest& request) noexcept
    try {
    const auto deleted = filesOf(folder_, request.deleted);
    auto added = writeCards(folder_, request.added);
    takePlaces(added);
    for (const auto& file : deleted) fs::remove(file);
    return std::nullopt;
} catch (const std::exception& error) {
    return AddressBookError{error.what()};
}

std::optional<std::string> VcfAddressBook::fullName(const PackedContact& contact) noexcept {
    auto name = fullNameOf(contact);
    if (name.empty()) return std::nullopt;
    return name;
}

}  // namespace hostkit
