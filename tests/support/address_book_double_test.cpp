#include "tests/support/address_book_double.h"

#include "tests/support/address_book_contract.h"

namespace test_support {

struct DoubleBooks {
    baseapi::AddressBook& book() { return book_; }
    baseapi::AddressBook& again() { return book_; }
    baseapi::AddressBook& refused() {
        book_.plan.status = baseapi::AddressBook::AuthorizationStatus::denied;
        return book_;
    }

    AddressBookDouble book_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Double, AddressBookContract, DoubleBooks);

}  // namespace test_support
