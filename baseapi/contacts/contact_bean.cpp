#include "baseapi/contacts/contact_bean.h"

#include <map>
#include <utility>

namespace baseapi::inline v1 {
namespace {

bool hasText(const std::optional<std::string>& text) {
    return text && !text->empty();
}

std::string_view textOf(const std::optional<std::string>& text) {
    return text ? std::string_view(*text) : std::string_view();
}

PhoneNumberType phoneTypeOfLabel(std::string_view label) {
    if (label == CNLabelHome) return PhoneNumberType::home;
    if (label == CNLabelPhoneNumberMobile) return PhoneNumberType::mobile;
    if (label == CNLabelWork) return PhoneNumberType::work;
    if (label == CNLabelPhoneNumberHomeFax) return PhoneNumberType::faxHome;
    if (label == CNLabelPhoneNumberWorkFax) return PhoneNumberType::faxWork;
    return PhoneNumberType::other;
}

EmailType emailTypeOfLabel(std::string_view label) {
    if (label == CNLabelHome) return EmailType::home;
    if (label == CNLabelWork) return EmailType::work;
    return EmailType::other;
}

}  // namespace

LabeledValue<PhoneNumber> ContactBean::PhoneNumber::cnLabeledValue() const {
    return {std::string(type.cnLabel()), cnPhoneNumber()};
}

LabeledValue<std::string> ContactBean::Email::cnLabeledValue() const {
    return {std::string(type.cnLabel()), address};
}

ContactBean::ContactBean(std::optional<std::string> identifier, std::optional<std::string> family,
                         std::optional<std::string> given, std::optional<std::string> middle,
                         std::optional<std::string> prefix, std::optional<std::string> suffix,
                         std::optional<std::string> display, std::optional<std::string> note,
                         std::optional<OrganizationInfo> employer, std::int64_t operation)
    : id(std::move(identifier)),
      familyName(std::move(family)),
      givenName(std::move(given)),
      middleName(std::move(middle)),
      namePrefix(std::move(prefix)),
      nameSuffix(std::move(suffix)),
      _displayName(std::move(display)),
      notes(std::move(note)),
      organization(std::move(employer)),
      op(operation) {}

ContactBean::ContactBean(std::optional<std::string> display, std::vector<PhoneNumber> phones,
                         std::vector<Email> addresses)
    : _displayName(std::move(display)), phoneNumbers(std::move(phones)), emails(std::move(addresses)) {}

ContactBean::ContactBean(const AddressBookContact& contact) : id(contact.identifier), notes(contact.note) {
    if (!contact.givenName.empty()) {
        _displayName = contact.givenName;
    } else if (!contact.organizationName.empty()) {
        _displayName = contact.organizationName;
    }
    if (!contact.organizationName.empty())
        organization = OrganizationInfo{contact.organizationName, contact.jobTitle, contact.departmentName};
    for (const auto& phone : contact.phoneNumbers)
        addPhoneNumber({phone.value.stringValue, phoneTypeOfLabel(textOf(phone.label))});
    for (const auto& email : contact.emailAddresses)
        addEmail({email.value, emailTypeOfLabel(textOf(email.label))});
}

std::string ContactBean::displayName() const {
    return hasText(_displayName) ? *_displayName : fullName();
}

std::string ContactBean::fullName() const {
    if (hasText(familyName) || hasText(givenName))
        return std::string(textOf(familyName)).append(textOf(givenName));
    if (organization && organization->company) return *organization->company;
    return "未知联系人";
}

std::string ContactBean::vcfNameField() const {
    std::string field(textOf(familyName));
    for (const auto* name : {&givenName, &middleName, &namePrefix, &nameSuffix})
        field.append(";").append(textOf(*name));
    return field;
}

AddressBookContact ContactBean::cnContact() const {
    AddressBookContact contact;
    contact.givenName = displayName();
    if (organization) {
        contact.organizationName = textOf(organization->company);
        contact.jobTitle = textOf(organization->title);
        contact.departmentName = textOf(organization->department);
    }
    contact.note = textOf(notes);
    for (const auto& phone : phoneNumbers) contact.phoneNumbers.push_back(phone.cnLabeledValue());
    for (const auto& email : emails) contact.emailAddresses.push_back(email.cnLabeledValue());
    return contact;
}

void ContactBean::printAvailableCNLabels() {
    const std::map<std::string_view, std::string_view> labels{
        {"CNLabelHome", CNLabelHome},
        {"CNLabelWork", CNLabelWork},
        {"CNLabelOther", CNLabelOther},
        {"CNLabelPhoneNumberMobile", CNLabelPhoneNumberMobile},
        {"CNLabelPhoneNumberiPhone", CNLabelPhoneNumberiPhone},
        {"CNLabelPhoneNumberMain", CNLabelPhoneNumberMain},
        {"CNLabelPhoneNumberHomeFax", CNLabelPhoneNumberHomeFax},
        {"CNLabelPhoneNumberWorkFax", CNLabelPhoneNumberWorkFax},
        {"CNLabelPhoneNumberOtherFax", CNLabelPhoneNumberOtherFax},
    };
    static_cast<void>(labels);
}

}  // namespace baseapi::inline v1
