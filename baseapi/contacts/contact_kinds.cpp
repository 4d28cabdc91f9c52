#include "baseapi/contacts/contact_kinds.h"

#include "baseapi/contacts/unicode_text.h"
#include "baseapi/platform/address_book.h"

namespace baseapi::inline v1 {
namespace {

struct Row {
    std::string_view text;
    std::string_view label;
};

/// Both in the order of the cases.
constexpr std::array<Row, PhoneNumberType::allCases.size()> phoneRows{{
    {"HOME", CNLabelHome},
    {"CELL", CNLabelPhoneNumberMobile},
    {"WORK", CNLabelWork},
    {"WORK,FAX", CNLabelPhoneNumberWorkFax},
    {"HOME,FAX", CNLabelPhoneNumberHomeFax},
    {"PAGER", CNLabelOther},
    {"OTHER", CNLabelOther},
}};
constexpr std::array<Row, EmailType::allCases.size()> emailRows{{
    {"HOME", CNLabelHome},
    {"WORK", CNLabelWork},
    {"OTHER", CNLabelOther},
    {"MOBILE", CNLabelOther},
}};

template <class Type, std::size_t size>
std::optional<Type> kindOf(std::string_view text, const std::array<Row, size>& rows) {
    for (const auto value : Type::allCases)
        if (rows[value].text == text) return value;
    return std::nullopt;
}

}  // namespace

std::optional<PhoneNumberType> PhoneNumberType::ofRawValue(std::string_view text) {
    return kindOf<PhoneNumberType>(text, phoneRows);
}

PhoneNumberType PhoneNumberType::fromString(std::optional<std::string_view> text) {
    if (!text) return other;
    const auto word = upperCased(*text);
    if (word == "MOBILE") return mobile;
    return ofRawValue(word).value_or(other);
}

std::string_view PhoneNumberType::rawValue() const {
    return phoneRows[case_].text;
}

std::string_view PhoneNumberType::cnLabel() const {
    return phoneRows[case_].label;
}

std::optional<EmailType> EmailType::ofRawValue(std::string_view text) {
    return kindOf<EmailType>(text, emailRows);
}

EmailType EmailType::fromString(std::optional<std::string_view> text) {
    if (!text) return other;
    return ofRawValue(upperCased(*text)).value_or(other);
}

std::string_view EmailType::rawValue() const {
    return emailRows[case_].text;
}

std::string_view EmailType::cnLabel() const {
    return emailRows[case_].label;
}

}  // namespace baseapi::inline v1
