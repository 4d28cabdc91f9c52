#include "baseapi/contacts/vcf_import_manager.h"

#include <exception>
#include <filesystem>
#include <optional>

#include "baseapi/contacts/contact_keys.h"
#include "baseapi/contacts/duplicate_index.h"
#include "baseapi/contacts/text_file.h"
#include "baseapi/contacts/vcard_parser.h"
#include "baseapi/core/log.h"
#include "baseapi/platform/platform.h"

namespace baseapi {
namespace {

AddressBook& store() {
    return *platform().addressBook;
}

std::optional<std::vector<SharedContact>> parseVCFFile(const std::filesystem::path& path) try {
    const TextFile file(path);
    return parseVCardText(file.text());
} catch (const std::exception& error) {
    logLine("parseVCFFile error: ", std::string_view(error.what()));
    return std::nullopt;
}

std::int64_t saveContactsOneByOne(std::span<const SharedContact> imported) {
    std::int64_t successes = 0;
    for (const auto& contact : imported) {
        const auto error = store().execute({.added = std::span(&contact, 1)});
        if (error) {
            logLine("saveContactsOneByOne failed: ", contact->givenName, " - ", error->message);
        } else {
            ++successes;
        }
    }
    logLine("saveContactsOneByOne success/total = ", successes, "/", imported.size(), " ");
    return successes;
}

void deleteDuplicatesOf(std::span<const SharedContact> imported) {
    const auto duplicates = VCFImportManager::findDuplicateContactsToDeleteEfficient(
        VCFImportManager::getLocalMutableContactsForComparison(), imported);
    if (const auto error = store().execute({.deleted = duplicates})) {
        logLine("删除联系人失败: ", error->message);
    } else {
        logLine("成功删除 ", duplicates.size(), " 个重复联系人");
    }
}

std::int64_t saveContactsToAddressBook(std::span<const SharedContact> imported) {
    deleteDuplicatesOf(imported);
    if (const auto error = store().execute({.added = imported})) {
        logLine("saveContactsToAddressBook error: ", error->message);
        return saveContactsOneByOne(imported);
    }
    logLine("saveContactsToAddressBook success count = ", imported.size());
    return static_cast<std::int64_t>(imported.size());
}

}  // namespace

std::int64_t VCFImportManager::importContactsFromVCF(const URL& vcfFileURL) {
    const auto path = vcfFileURL.path();
    std::error_code ignored;
    if (!std::filesystem::exists(path, ignored)) {
        logLine("importContactsFromVCF file not exist: ", path.native());
        return -1;
    }
    const auto imported = parseVCFFile(path);
    if (!imported) {
        logLine("importContactsFromVCF parseVCFFile error");
        return -1;
    }
    if (imported->empty()) {
        logLine("importContactsFromVCF no contacts");
        return 0;
    }
    logLine("importContactsFromVCF get count = ", imported->size());
    return saveContactsToAddressBook(*imported);
}

std::vector<SharedContact> VCFImportManager::getLocalMutableContactsForComparison() {
    std::vector<SharedContact> contacts;
    const auto error = store().enumerateContacts(
        comparedContactKeys, [&](SharedContact contact) { contacts.push_back(std::move(contact)); });
    if (error) logLine("获取本地通讯录失败: ", error->message);
    return contacts;
}

std::vector<SharedContact> VCFImportManager::findDuplicateContactsToDeleteEfficient(
    std::span<const SharedContact> localContacts, std::span<const SharedContact> cloudContacts) {
    std::size_t phoneNumbers = 0;
    for (const auto& contact : cloudContacts) phoneNumbers += contact->phoneNumbers.size();
    DuplicateIndex index(store(), phoneNumbers);
    for (const auto& contact : cloudContacts) index.add(*contact);
    std::vector<SharedContact> duplicates;
    if (index.empty()) return duplicates;
    for (const auto& contact : localContacts)
        if (index.knows(*contact)) duplicates.push_back(contact);
    return duplicates;
}

}  // namespace baseapi
