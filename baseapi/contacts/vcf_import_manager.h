#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "baseapi/core/url.h"
#include "baseapi/platform/address_book.h"
#include "baseapi/platform/export.h"

namespace baseapi::inline v1 {

/// Brings the contacts of a vCard file into the address book. The file wins: a local contact of the same name
/// that shares a phone number with one of the file's is replaced. All operations are synchronous, run on the
/// caller's thread and leave the permission to the caller.
class BASEAPI_API VCFImportManager {
  public:
    VCFImportManager() = delete;

    /// The number of contacts saved, 0 where the file has no usable one, -1 where it cannot be read. A failed
    /// delete leaves old and new contact side by side; where the address book refuses all contacts together
    /// they are saved one by one.
    static std::int64_t importContactsFromVCF(const URL& vcfFileURL);

    /// All local contacts, those alone that were visited before the address book failed, if it did. They are
    /// the address book's own: nothing here edits one.
    static std::vector<SharedContact> getLocalMutableContactsForComparison();

    /// The members of `localContacts`, in their order, that a member of `cloudContacts` replaces: one with an
    /// equal name and at least one equal phone number. Names are the address book's full names in lower case
    /// without whitespace around; of a phone number the digits count. The work grows with the sum of both
    /// lengths.
    static std::vector<SharedContact> findDuplicateContactsToDeleteEfficient(
        std::span<const SharedContact> localContacts, std::span<const SharedContact> cloudContacts);
};

}  // namespace baseapi::inline v1
