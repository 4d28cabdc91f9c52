#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "baseapi/platform/export.h"
#include "baseapi/platform/packed_contact.h"

namespace baseapi::inline v1 {

/// The labels that an address book itself gives to phones and addresses. A contact may carry any other text.
inline constexpr std::string_view CNLabelHome = "<home>";
inline constexpr std::string_view CNLabelWork = "<work>";
inline constexpr std::string_view CNLabelOther = "<other>";
inline constexpr std::string_view CNLabelPhoneNumberMobile = "<mobile>";
inline constexpr std::string_view CNLabelPhoneNumberiPhone = "<iphone>";
inline constexpr std::string_view CNLabelPhoneNumberMain = "<main>";
inline constexpr std::string_view CNLabelPhoneNumberHomeFax = "<home fax>";
inline constexpr std::string_view CNLabelPhoneNumberWorkFax = "<work fax>";
inline constexpr std::string_view CNLabelPhoneNumberOtherFax = "<other fax>";

/// One entry of a contact's list. The label may be absent.
template <class T>
struct LabeledValue {
    std::optional<std::string> label;
    T value;

    bool operator==(const LabeledValue&) const = default;
};

/// A phone number as it was typed.
struct PhoneNumber {
    std::string stringValue;

    bool operator==(const PhoneNumber&) const = default;
};

/// A contact of an address book, to be filled or changed; what it does not have is empty. It is passed on as
/// a `SharedContact`.
struct AddressBookContact {
    /// Given by the address book when the contact is added.
    std::string identifier;
    std::string givenName;
    std::string familyName;
    std::string middleName;
    std::string organizationName;
    std::string jobTitle;
    std::string departmentName;
    std::string note;
    std::vector<LabeledValue<PhoneNumber>> phoneNumbers;
    std::vector<LabeledValue<std::string>> emailAddresses;

    bool operator==(const AddressBookContact&) const = default;
};

/// Packs a contact. One of 2 GiB or more counts as one that memory has no room for: `std::bad_alloc`.
BASEAPI_API SharedContact shareContact(const AddressBookContact& contact);

/// A copy to be changed.
BASEAPI_API AddressBookContact editableContact(const PackedContact& contact);

/// What is asked of each contact of an enumeration.
enum class ContactKey {
    identifier,
    givenName,
    familyName,
    middleName,
    organizationName,
    phoneNumbers,
    emailAddresses,
    jobTitle,
    departmentName,
    note,
    /// Everything that `AddressBook::fullName` needs.
    fullName,
};

/// Changes that an address book takes as one. The lists and the contacts belong to the caller.
struct ContactSaveRequest {
    /// Each becomes a contact of the default container, under an identifier of the address book's.
    std::span<const SharedContact> added;
    /// Contacts of an enumeration, known by their identifier.
    std::span<const SharedContact> deleted;
};

/// Why an address book did not do what it was asked, in words.
struct AddressBookError {
    std::string message;
};

/// The contacts of the machine. All operations are synchronous and may be called from any thread and from
/// several at once. None of them throws.
class AddressBook {
  public:
    /// Every value but `authorized` counts as not granted.
    enum class AuthorizationStatus { notDetermined = 0, restricted = 1, denied = 2, authorized = 3 };

    virtual ~AddressBook() = default;

    /// Whether the contacts may be read and changed. Asked before each use.
    virtual AuthorizationStatus authorizationStatus() noexcept = 0;

    /// Calls `visit` once for each contact, always in the same order, on the caller's thread and with no lock
    /// held. A contact has what the keys ask for; the rest may be left empty. An error may come after some
    /// contacts have been visited.
    virtual std::optional<AddressBookError> enumerateContacts(
        std::span<const ContactKey> keys, const std::function<void(SharedContact)>& visit) noexcept = 0;

    /// Applies all changes, or none of them and gives the error. A contact to be deleted that is not there is
    /// an error.
    virtual std::optional<AddressBookError> execute(const ContactSaveRequest& request) noexcept = 0;

    /// The whole name of a contact, the same text for the same names at all times; nothing where it has none.
    virtual std::optional<std::string> fullName(const PackedContact& contact) noexcept = 0;
};

}  // namespace baseapi::inline v1
