#pragma once

#include <memory>

#include "baseapi/platform/address_book.h"

namespace baseapi::inline v1 {

/// Contacts by their name and phone numbers. A contact without a name or without a digit in its phone numbers
/// is like no other.
class DuplicateIndex {
  public:
    /// The address book gives the full names; it must outlive the index.
    explicit DuplicateIndex(AddressBook& names);
    ~DuplicateIndex();

    void add(const PackedContact& contact);

    /// Does the work now that the first `knows` would do, so that all memory is there before the address book
    /// is asked: what it calls must not fail.
    void prepare();

    /// Whether a contact of the same name and with one of the same phone numbers was added.
    bool knows(const PackedContact& contact);

  private:
    class Keys;
    AddressBook& names_;
    std::unique_ptr<Keys> keys_;
};

}  // namespace baseapi::inline v1
