#pragma once

#include <vector>

#include "baseapi/contacts/contact_bean.h"
#include "baseapi/platform/address_book.h"
#include "baseapi/platform/export.h"

namespace baseapi::inline v1 {

/// The one reader of the address book.
class BASEAPI_API ContactManager {
  public:
    /// Made on first use, never destroyed. Callable from any thread.
    static ContactManager& shared();

    ContactManager(const ContactManager&) = delete;
    ContactManager& operator=(const ContactManager&) = delete;

    /// All contacts, in the address book's order; synchronous. Notes, job titles, departments, prefixes and
    /// suffixes are not read. Empty also without permission and where the address book fails: the log alone
    /// tells which.
    std::vector<ContactBean> fetchAllContacts() const;

  private:
    ContactManager();

    AddressBook& contactStore_;
};

}  // namespace baseapi::inline v1
