#include "bench/contacts.h"

#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "baseapi/contacts/vcard_text.h"
#include "baseapi/contacts/vcf_import_manager.h"
#include "baseapi/platform/platform.h"
#include "bench/dropped_lines.h"
#include "bench/hand_written_vcards.h"
#include "bench/measure.h"
#include "bench/require.h"
#include "tests/support/address_book_double.h"

namespace bench {

namespace {

using baseapi::ContactBean;

std::string numberOf(int index) {
    return "+86 138 " + std::to_string(10'000'000 + index);
}

std::string familyNameOf(int index) {
    return index % 2 ? "李" : "欧阳";
}

std::string givenNameOf(int index) {
    return "雷" + std::to_string(index);
}

std::vector<ContactBean> contacts(int count) {
    std::vector<ContactBean> all;
    all.reserve(static_cast<std::size_t>(count));
    for (int index = 0; index < count; ++index) {
        auto& contact = all.emplace_back();
        contact.id = "contact-" + std::to_string(index);
        contact.familyName = familyNameOf(index);
        contact.givenName = givenNameOf(index);
        contact.middleName = "";
        contact._displayName = familyNameOf(index) + givenNameOf(index);
        contact.addPhoneNumber({numberOf(index), baseapi::PhoneNumberType::mobile});
        contact.addPhoneNumber({"010-" + std::to_string(80'000'000 + index), baseapi::PhoneNumberType::work});
        contact.addEmail({"user" + std::to_string(index) + "@example.org", baseapi::EmailType::home});
        if (index % 3 == 0) contact.organization = ContactBean::OrganizationInfo{.company = "四海科技"};
    }
    return all;
}

/// Each second one has a number that the file does not have.
baseapi::AddressBookContact localContact(int index) {
    constexpr int otherNumbers = 1'000'000;
    baseapi::AddressBookContact contact;
    contact.familyName = familyNameOf(index);
    contact.givenName = givenNameOf(index);
    contact.phoneNumbers.push_back({std::string(baseapi::CNLabelPhoneNumberMobile),
                                    {numberOf(index % 2 ? index : otherNumbers + index)}});
    contact.emailAddresses.push_back({std::nullopt, "old" + std::to_string(index) + "@example.org"});
    return contact;
}

std::shared_ptr<test_support::AddressBookDouble> addressBookOf(int count) {
    const auto book = std::make_shared<test_support::AddressBookDouble>();
    book->forgetRequests();
    for (int index = 0; index < count; ++index) book->put(localContact(index));
    return book;
}

std::string textOfFile(const std::filesystem::path& file) {
    std::ifstream input(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(input), {}};
}

}  // namespace

void writeContacts(int count, const std::filesystem::path& file) {
    std::ofstream(file, std::ios::binary) << baseapi::vCardText(contacts(count));
}

void measureVCardText(int count) {
    const auto all = contacts(count);
    std::string text;
    printMeasured([&] { text = baseapi::vCardText(all); });
    require(text == appendByHand(all), "the two texts differ");
}

void measureVCardTextByHand(int count) {
    const auto all = contacts(count);
    std::string text;
    printMeasured([&] { text = appendByHand(all); });
    require(text == baseapi::vCardText(all), "the two texts differ");
}

void measureImport(int count, const std::filesystem::path& file) {
    const auto book = addressBookOf(count);
    baseapi::usePlatform({.log = std::make_shared<DroppedLines>(), .addressBook = book});
    std::int64_t imported = 0;
    printMeasured(
        [&] { imported = baseapi::VCFImportManager::importContactsFromVCF(baseapi::URL::file(file)); });
    require(imported == count, "not all contacts came in");
    require(book->size() == static_cast<std::size_t>(2 * count - count / 2), "wrong contacts were replaced");
}

void measureParsingByHand(int count, const std::filesystem::path& file) {
    const auto text = textOfFile(file);
    std::vector<ViewedContact> parsed;
    printMeasured([&] { parsed = parseByHand(text); });
    require(parsed.size() == static_cast<std::size_t>(count), "not all contacts were read");
}

}  // namespace bench
