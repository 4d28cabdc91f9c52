#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/support/test_platform.h"

/// A test with the program's address book and log, both empty.
class AddressBookTest : public testing::Test {
  protected:
    AddressBookTest() {
        book_.reset();
        log_.clear();
    }
    ~AddressBookTest() override { book_.reset(); }

    static baseapi::SharedContact shared(const baseapi::AddressBookContact& contact) {
        return shareContact(contact);
    }
    static baseapi::AddressBookContact person(std::string given, std::string family,
                                              const std::vector<std::string>& phones = {}) {
        baseapi::AddressBookContact contact;
        contact.givenName = std::move(given);
        contact.familyName = std::move(family);
        for (const auto& phone : phones) contact.phoneNumbers.push_back({std::nullopt, {phone}});
        return contact;
    }

    test_support::AddressBookDouble& book_ = test_support::addressBook();
    test_support::RecordingLog& log_ = test_support::recordingLog();
};
