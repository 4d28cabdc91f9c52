#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "baseapi/platform/export.h"

namespace baseapi::inline v1 {

/// What a phone number is for. Its text is the vCard word.
class BASEAPI_API PhoneNumberType {
  public:
    /// The kinds by themselves, for a `switch`.
    enum Case : std::uint8_t { home, mobile, work, faxWork, faxHome, pager, other };
    static constexpr std::array<Case, 7> allCases{home, mobile, work, faxWork, faxHome, pager, other};

    constexpr PhoneNumberType(Case value) : case_(value) {}  // NOLINT(google-explicit-constructor)
    constexpr operator Case() const { return case_; }        // NOLINT(google-explicit-constructor)

    /// The kind of exactly this text, such as "WORK,FAX"; nothing for any other.
    static std::optional<PhoneNumberType> ofRawValue(std::string_view text);
    /// The kind of a text in upper or lower case, "MOBILE" included; `other` for any other and for none.
    static PhoneNumberType fromString(std::optional<std::string_view> text);

    /// The kind's text, such as "CELL".
    std::string_view rawValue() const;
    /// The address book's label. It has none for a pager, which becomes `CNLabelOther`.
    std::string_view cnLabel() const;

  private:
    Case case_;
};

/// What an email address is for. Its text is the vCard word.
class BASEAPI_API EmailType {
  public:
    /// The kinds by themselves, for a `switch`.
    enum Case : std::uint8_t { home, work, other, mobile };
    static constexpr std::array<Case, 4> allCases{home, work, other, mobile};

    constexpr EmailType(Case value) : case_(value) {}  // NOLINT(google-explicit-constructor)
    constexpr operator Case() const { return case_; }  // NOLINT(google-explicit-constructor)

    /// The kind of exactly this text; nothing for any other.
    static std::optional<EmailType> ofRawValue(std::string_view text);
    /// The kind of a text in upper or lower case; `other` for any other and for none.
    static EmailType fromString(std::optional<std::string_view> text);

    /// The kind's text, such as "HOME".
    std::string_view rawValue() const;
    /// The address book's label. It has none for `mobile`, which becomes `CNLabelOther`.
    std::string_view cnLabel() const;

  private:
    Case case_;
};

}  // namespace baseapi::inline v1
