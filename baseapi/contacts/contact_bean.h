#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "baseapi/contacts/contact_kinds.h"
#include "baseapi/platform/address_book.h"
#include "baseapi/platform/export.h"

namespace baseapi::inline v1 {

/// A contact on its way from the address book into a vCard. It carries no lock: a record belongs to one run.
class BASEAPI_API ContactBean {
  public:
    /// Where the contact works.
    struct OrganizationInfo {
        std::optional<std::string> company;
        std::optional<std::string> title;
        std::optional<std::string> department;

        bool operator==(const OrganizationInfo&) const = default;
    };

    /// A phone number and what it is for.
    struct PhoneNumber {
        std::string number;
        PhoneNumberType type = PhoneNumberType::other;

        /// The kind's text, such as "CELL".
        std::string_view typeString() const { return type.rawValue(); }
        /// The same as `PhoneNumberType::fromString`.
        static PhoneNumberType parseType(std::optional<std::string_view> from) {
            return PhoneNumberType::fromString(from);
        }
        /// As the address book holds it.
        baseapi::PhoneNumber cnPhoneNumber() const { return {number}; }
        /// The same with the label of its kind.
        LabeledValue<baseapi::PhoneNumber> cnLabeledValue() const;

        bool operator==(const PhoneNumber&) const = default;
    };

    /// An email address and what it is for.
    struct Email {
        std::string address;
        EmailType type = EmailType::other;

        /// The kind's text, such as "HOME".
        std::string_view typeString() const { return type.rawValue(); }
        /// The same as `EmailType::fromString`.
        static EmailType parseType(std::optional<std::string_view> from) {
            return EmailType::fromString(from);
        }
        /// As the address book holds it.
        LabeledValue<std::string> cnLabeledValue() const;

        bool operator==(const Email&) const = default;
    };

    /// The address book's identifier.
    std::optional<std::string> id;
    std::optional<std::string> familyName;
    std::optional<std::string> givenName;
    std::optional<std::string> middleName;
    std::optional<std::string> namePrefix;
    std::optional<std::string> nameSuffix;
    /// As stored; read it through `displayName()`.
    std::optional<std::string> _displayName;
    std::optional<std::string> notes;
    std::optional<OrganizationInfo> organization;
    /// In the address book's order, as are the emails.
    std::vector<PhoneNumber> phoneNumbers;
    std::vector<Email> emails;
    /// Free for marking an operation; carried only.
    std::int64_t op = 0;

    ContactBean() = default;
    ContactBean(std::optional<std::string> identifier, std::optional<std::string> family,
                std::optional<std::string> given, std::optional<std::string> middle,
                std::optional<std::string> prefix, std::optional<std::string> suffix,
                std::optional<std::string> display, std::optional<std::string> note,
                std::optional<OrganizationInfo> employer, std::int64_t operation);
    ContactBean(std::optional<std::string> display, std::vector<PhoneNumber> phones,
                std::vector<Email> addresses);
    /// Takes the contact's note, job title and department too, and the given name for the display name; the
    /// names by themselves stay absent. `ContactManager` has its own, narrower way.
    explicit ContactBean(const AddressBookContact& contact);

    /// The stored display name, or `fullName()` where that is absent or empty.
    std::string displayName() const;
    /// Replaces the stored display name.
    void setDisplayName(std::optional<std::string> name) { _displayName = std::move(name); }

    /// Family name and given name without anything in between. Where both are absent or empty the company,
    /// which may be empty, and without one "未知联系人".
    std::string fullName() const;

    /// Family, given, middle name, prefix and suffix, joined with ";" and without any escaping.
    std::string vcfNameField() const;

    /// Puts a phone number behind the others.
    void addPhoneNumber(PhoneNumber phoneNumber) { phoneNumbers.push_back(std::move(phoneNumber)); }
    /// Puts an email address behind the others.
    void addEmail(Email email) { emails.push_back(std::move(email)); }

    /// The contact for the address book: its given name is the whole display name.
    AddressBookContact cnContact() const;

    /// Looks at the address book's label names and has no effect.
    static void printAvailableCNLabels();

    bool operator==(const ContactBean&) const = default;
};

}  // namespace baseapi::inline v1
