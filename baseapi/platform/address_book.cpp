#include "baseapi/platform/address_book.h"

namespace baseapi::inline v1 {
namespace {

std::string_view textOf(const PhoneNumber& number) {
    return number.stringValue;
}

std::string_view textOf(const std::string& address) {
    return address;
}

template <class T>
std::vector<LabeledText> textsOf(const std::vector<LabeledValue<T>>& entries) {
    std::vector<LabeledText> texts;
    texts.reserve(entries.size());
    for (const auto& [label, value] : entries) texts.push_back({label, textOf(value)});
    return texts;
}

template <class T>
std::vector<LabeledValue<T>> editableEntries(const PackedContact::Entries& entries) {
    std::vector<LabeledValue<T>> editable;
    editable.reserve(entries.size());
    for (const auto& [label, value] : entries)
        editable.push_back({std::optional<std::string>(label), T{std::string(value)}});
    return editable;
}

}  // namespace

SharedContact shareContact(const AddressBookContact& contact) {
    const auto phones = textsOf(contact.phoneNumbers);
    const auto emails = textsOf(contact.emailAddresses);
    return shareContact(ContactTexts{
        .identifier = contact.identifier,
        .givenName = contact.givenName,
        .familyName = contact.familyName,
        .middleName = contact.middleName,
        .organizationName = contact.organizationName,
        .jobTitle = contact.jobTitle,
        .departmentName = contact.departmentName,
        .note = contact.note,
        .phoneNumbers = phones,
        .emailAddresses = emails,
    });
}

AddressBookContact editableContact(const PackedContact& contact) {
    return {
        .identifier = std::string(contact.identifier()),
        .givenName = std::string(contact.givenName()),
        .familyName = std::string(contact.familyName()),
        .middleName = std::string(contact.middleName()),
        .organizationName = std::string(contact.organizationName()),
        .jobTitle = std::string(contact.jobTitle()),
        .departmentName = std::string(contact.departmentName()),
        .note = std::string(contact.note()),
        .phoneNumbers = editableEntries<PhoneNumber>(contact.phoneNumbers()),
        .emailAddresses = editableEntries<std::string>(contact.emailAddresses()),
    };
}

}  // namespace baseapi::inline v1
