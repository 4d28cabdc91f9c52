#include "baseapi/contacts/vcf_import_manager.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <iterator>
#include <utility>

#include "baseapi/contacts/contact_keys.h"
#include "baseapi/contacts/duplicate_index.h"
#include "baseapi/contacts/vcard_file.h"
#include "baseapi/core/log.h"
#include "baseapi/platform/platform.h"

namespace baseapi::inline v1 {
namespace {

AddressBook& store() {
    return *platform().addressBook;
}

/// What a file brings. A contact's keys are made as it is read, while it is in the processor's cache.
struct Imported {
    std::vector<SharedContact> contacts;
    DuplicateIndex index{store()};
};

bool parseVCFFile(const std::filesystem::path& path, Imported& imported) try {
    parseVCardFile(path, [&](SharedContact contact) {
        imported.index.add(*contact);
        imported.contacts.push_back(std::move(contact));
    });
    imported.index.prepare();
    return true;
} catch (const std::exception& error) {
    logLine("parseVCFFile error: ", std::string_view(error.what()));
    return false;
}

template <class Function>
void forEachLocalContact(Function take) {
    if (const auto error = store().enumerateContacts(comparedContactKeys, take))
        logLine("获取本地通讯录失败: ", error->message);
}

std::int64_t saveContactsOneByOne(std::span<const SharedContact> imported) {
    std::int64_t successes = 0;
    for (const auto& contact : imported) {
        const auto error = store().execute({.added = std::span(&contact, 1)});
        if (error) {
            logLine("saveContactsOneByOne failed: ", contact->givenName(), " - ", error->message);
        } else {
            ++successes;
        }
    }
    logLine("saveContactsOneByOne success/total = ", successes, "/", imported.size(), " ");
    return successes;
}

void deleteDuplicatesOf(DuplicateIndex& index) {
    std::vector<SharedContact> duplicates;
    forEachLocalContact([&](SharedContact contact) {
        if (index.knows(*contact)) duplicates.push_back(std::move(contact));
    });
    if (const auto error = store().execute({.deleted = duplicates})) {
        logLine("删除联系人失败: ", error->message);
    } else {
        logLine("成功删除 ", duplicates.size(), " 个重复联系人");
    }
}

std::int64_t saveContactsToAddressBook(Imported& imported) {
    const auto& contacts = imported.contacts;
    deleteDuplicatesOf(imported.index);
    if (const auto error = store().execute({.added = contacts})) {
        logLine("saveContactsToAddressBook error: ", error->message);
        return saveContactsOneByOne(contacts);
    }
    logLine("saveContactsToAddressBook success count = ", contacts.size());
    return static_cast<std::int64_t>(contacts.size());
}

}  // namespace

std::int64_t VCFImportManager::importContactsFromVCF(const URL& vcfFileURL) {
    const auto path = vcfFileURL.path();
    std::error_code ignored;
    if (!std::filesystem::exists(path, ignored)) {
        logLine("importContactsFromVCF file not exist: ", path.native());
        return -1;
    }
    Imported imported;
    if (!parseVCFFile(path, imported)) {
        logLine("importContactsFromVCF parseVCFFile error");
        return -1;
    }
    if (imported.contacts.empty()) {
        logLine("importContactsFromVCF no contacts");
        return 0;
    }
    logLine("importContactsFromVCF get count = ", imported.contacts.size());
    return saveContactsToAddressBook(imported);
}

std::vector<SharedContact> VCFImportManager::getLocalMutableContactsForComparison() {
    std::vector<SharedContact> contacts;
    forEachLocalContact([&](SharedContact contact) { contacts.push_back(std::move(contact)); });
    return contacts;
}

std::vector<SharedContact> VCFImportManager::findDuplicateContactsToDeleteEfficient(
    std::span<const SharedContact> localContacts, std::span<const SharedContact> cloudContacts) {
    DuplicateIndex index(store());
    for (const auto& contact : cloudContacts) index.add(*contact);
    std::vector<SharedContact> duplicates;
    std::ranges::copy_if(localContacts, std::back_inserter(duplicates),
                         [&](const auto& contact) { return index.knows(*contact); });
    return duplicates;
}

}  // namespace baseapi::inline v1
