#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>
#include <span>
#include <string_view>

#include "baseapi/platform/export.h"

namespace baseapi::inline v1 {

/// One entry of a contact's list: a phone number as it was typed, or an email address. The label may be
/// absent.
struct LabeledText {
    std::optional<std::string_view> label;
    std::string_view value;

    bool operator==(const LabeledText&) const = default;
};

/// The texts that a contact is to be packed of, which stay with the caller; what it does not have is empty.
struct ContactTexts {
    std::string_view identifier;
    std::string_view givenName;
    std::string_view familyName;
    std::string_view middleName;
    std::string_view organizationName;
    std::string_view jobTitle;
    std::string_view departmentName;
    std::string_view note;
    std::span<const LabeledText> phoneNumbers;
    std::span<const LabeledText> emailAddresses;
};

class PackedContact;

/// A contact that nobody changes any more, and that therefore need not be copied from hand to hand. What is
/// read of it is there as long as it is. Contacts of one file share memory in pieces of 16 KiB: one that is
/// kept keeps its piece, and a copy, `shareContact(editableContact(*contact))`, does not.
using SharedContact = std::shared_ptr<const PackedContact>;

/// Packs the texts. A contact of 2 GiB or more counts as one that memory has no room for: `std::bad_alloc`.
BASEAPI_API SharedContact shareContact(const ContactTexts& texts);

/// A contact in one piece of memory, a third of what its texts take one by one: an address book may have
/// hundreds of thousands. `shareContact` makes it. What it does not have is empty.
class PackedContact {
  public:
    class Entries;

    PackedContact(const PackedContact&) = delete;
    PackedContact& operator=(const PackedContact&) = delete;

    /// Given by the address book when the contact is added.
    std::string_view identifier() const { return text(0); }
    /// The first name.
    std::string_view givenName() const { return text(1); }
    /// The last name.
    std::string_view familyName() const { return text(2); }
    /// The name between the two.
    std::string_view middleName() const { return text(3); }
    /// Where the contact works.
    std::string_view organizationName() const { return text(4); }
    /// What the contact is there.
    std::string_view jobTitle() const { return text(5); }
    /// In which part of the organisation.
    std::string_view departmentName() const { return text(6); }
    /// Whatever somebody wrote down.
    std::string_view note() const { return text(7); }
    /// In the address book's order, as typed.
    Entries phoneNumbers() const;
    /// In the address book's order.
    Entries emailAddresses() const;

    /// Whether all texts are equal.
    BASEAPI_API bool operator==(const PackedContact& other) const;

  private:
    friend SharedContact shareContact(const ContactTexts&);
    friend class ContactPacker;

    // Behind this follow, in memory of words, where each text begins and where the last one ends, in bytes,
    // then the texts: the names, then label and value of each entry. Nobody calls a destructor.
    static constexpr std::uint32_t nameCount = 8;
    /// Marks the beginning of a label that is absent.
    static constexpr std::uint32_t absent = 1U << 31;

    PackedContact(std::uint32_t phones, std::uint32_t emails) : phones_(phones), emails_(emails) {}
    static std::size_t wordsOf(const ContactTexts& texts);
    /// Takes as many words as `wordsOf` says.
    static const PackedContact* pack(const ContactTexts& texts, std::uint32_t* words);

    std::uint32_t textCount() const { return nameCount + 2 * (phones_ + emails_); }
    const std::uint32_t* offsets() const { return reinterpret_cast<const std::uint32_t*>(this + 1); }
    std::uint32_t offset(std::uint32_t index) const { return offsets()[index] & ~absent; }
    const char* texts() const { return reinterpret_cast<const char*>(offsets() + textCount() + 1); }
    std::string_view text(std::uint32_t index) const {
        return {texts() + offset(index), offset(index + 1) - offset(index)};
    }
    LabeledText entry(std::uint32_t index) const {
        const auto label = nameCount + 2 * index;
        LabeledText entry{std::nullopt, text(label + 1)};
        if ((offsets()[label] & absent) == 0) entry.label = text(label);
        return entry;
    }

    std::uint32_t phones_;
    std::uint32_t emails_;
};

/// The phone numbers or the email addresses of a contact, each a `LabeledText`; to be used while the contact
/// is there.
class PackedContact::Entries {
    /// @cond
    class Iterator {
      public:
        using iterator_concept = std::forward_iterator_tag;
        using iterator_category = std::input_iterator_tag;
        using difference_type = std::ptrdiff_t;
        using value_type = LabeledText;
        using reference = LabeledText;
        using pointer = void;

        Iterator() = default;
        Iterator(const PackedContact* contact, std::uint32_t index) : contact_(contact), index_(index) {}

        LabeledText operator*() const { return contact_->entry(index_); }
        Iterator& operator++() {
            ++index_;
            return *this;
        }
        Iterator operator++(int) {
            auto before = *this;
            ++index_;
            return before;
        }
        bool operator==(const Iterator&) const = default;

      private:
        const PackedContact* contact_ = nullptr;
        std::uint32_t index_ = 0;
    };
    /// @endcond

  public:
    /// What it is a range of.
    using value_type = LabeledText;
    /// A forward iterator; there is no other, since nobody changes an entry.
    using const_iterator = Iterator;

    /// The first entry.
    const_iterator begin() const { return {contact_, first_}; }
    /// Behind the last entry.
    const_iterator end() const { return {contact_, first_ + count_}; }
    /// How many there are.
    std::size_t size() const { return count_; }
    /// Whether there is none.
    bool empty() const { return count_ == 0; }

  private:
    friend class PackedContact;
    Entries(const PackedContact* contact, std::uint32_t first, std::uint32_t count)
        : contact_(contact), first_(first), count_(count) {}

    const PackedContact* contact_;
    std::uint32_t first_;
    std::uint32_t count_;
};

inline PackedContact::Entries PackedContact::phoneNumbers() const {
    return {this, 0, phones_};
}

inline PackedContact::Entries PackedContact::emailAddresses() const {
    return {this, phones_, emails_};
}

}  // namespace baseapi::inline v1
