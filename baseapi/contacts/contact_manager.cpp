#include "baseapi/contacts/contact_manager.h"

#include "baseapi/contacts/contact_keys.h"
#include "baseapi/core/log.h"
#include "baseapi/platform/platform.h"

namespace baseapi::inline v1 {
namespace {

std::string displayNameOf(const PackedContact& contact) {
    if (!contact.familyName().empty() || !contact.givenName().empty())
        return std::string(contact.familyName()).append(contact.givenName());
    return std::string(contact.organizationName().empty() ? "unknown" : contact.organizationName());
}

/// A label counts as the text that it is, not as the address book's constant that it may be: the kinds of a
/// backup have always come out so.
std::string_view rawText(const std::optional<std::string_view>& label) {
    return label.value_or(std::string_view());
}

ContactBean beanOf(const PackedContact& contact) {
    ContactBean bean;
    bean.id = contact.identifier();
    bean.familyName = contact.familyName();
    bean.givenName = contact.givenName();
    bean.middleName = contact.middleName();
    bean._displayName = displayNameOf(contact);
    if (!contact.organizationName().empty())
        bean.organization = ContactBean::OrganizationInfo{.company = std::string(contact.organizationName())};
    bean.phoneNumbers.reserve(contact.phoneNumbers().size());
    for (const auto& phone : contact.phoneNumbers())
        bean.addPhoneNumber({std::string(phone.value), PhoneNumberType::fromString(rawText(phone.label))});
    bean.emails.reserve(contact.emailAddresses().size());
    for (const auto& email : contact.emailAddresses())
        bean.addEmail({std::string(email.value), EmailType::fromString(rawText(email.label))});
    return bean;
}

}  // namespace

ContactManager::ContactManager() : contactStore_(*platform().addressBook) {}

ContactManager& ContactManager::shared() {
    static ContactManager& manager = *new ContactManager;
    return manager;
}

std::vector<ContactBean> ContactManager::fetchAllContacts() const {
    if (contactStore_.authorizationStatus() != AddressBook::AuthorizationStatus::authorized) {
        logLine("No contacts authorization");
        return {};
    }
    std::vector<ContactBean> contacts;
    const auto error = contactStore_.enumerateContacts(
        backupContactKeys, [&](const SharedContact& contact) { contacts.push_back(beanOf(*contact)); });
    if (error) {
        logLine("fetchAllContacts error: ", error->message);
        return {};
    }
    logLine("fetchAllContacts success, count = ", contacts.size());
    return contacts;
}

}  // namespace baseapi::inline v1
