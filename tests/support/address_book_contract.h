#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "baseapi/platform/address_book.h"

namespace test_support {

/// What every address book must do. `Books` makes an empty book with `book()`, another object of the same
/// book, as a later run would have it, with `again()`, and one without permission with `refused()`.
template <class Books>
class AddressBookContract : public testing::Test {
  protected:
    static constexpr std::array allKeys{
        baseapi::ContactKey::identifier,
        baseapi::ContactKey::givenName,
        baseapi::ContactKey::familyName,
        baseapi::ContactKey::middleName,
        baseapi::ContactKey::organizationName,
        baseapi::ContactKey::phoneNumbers,
        baseapi::ContactKey::emailAddresses,
        baseapi::ContactKey::jobTitle,
        baseapi::ContactKey::note,
        baseapi::ContactKey::fullName,
    };

    static std::vector<baseapi::SharedContact> contactsOf(baseapi::AddressBook& book) {
        std::vector<baseapi::SharedContact> contacts;
        const auto error = book.enumerateContacts(
            allKeys, [&](baseapi::SharedContact contact) { contacts.push_back(std::move(contact)); });
        EXPECT_FALSE(error) << error->message;
        return contacts;
    }
    static std::vector<std::string> givenNamesOf(baseapi::AddressBook& book) {
        std::vector<std::string> names;
        for (const auto& contact : contactsOf(book)) names.emplace_back(contact->givenName());
        return names;
    }
    static baseapi::SharedContact named(std::string given) {
        return shareContact(baseapi::AddressBookContact{.givenName = std::move(given)});
    }
    static void add(baseapi::AddressBook& book, const std::vector<baseapi::SharedContact>& contacts) {
        const auto error = book.execute({.added = contacts});
        EXPECT_FALSE(error) << error->message;
    }

    Books books_;
};

TYPED_TEST_SUITE_P(AddressBookContract);

TYPED_TEST_P(AddressBookContract, AnEmptyBookGrantsAndHasNoContacts) {
    auto& book = this->books_.book();
    EXPECT_EQ(static_cast<int>(book.authorizationStatus()), 3);
    EXPECT_TRUE(this->contactsOf(book).empty());
}

TYPED_TEST_P(AddressBookContract, WhatIsAddedIsThereWithAllItsFieldsInOrder) {
    baseapi::AddressBookContact contact;
    contact.givenName = "Ann, Jr; \"the\" \\ first";
    contact.familyName = "O'Neil:x";
    contact.middleName = "李";
    contact.organizationName = "Acme; Sons, Ltd";
    contact.jobTitle = "Chief\nof all";
    contact.note = "a\\b\nc\\n 雷雷雷雷雷雷雷雷雷雷雷雷雷雷雷雷雷雷雷雷雷雷雷雷雷雷雷雷雷雷雷雷雷雷雷雷 😀 ";
    contact.phoneNumbers = {{std::nullopt, {"+1;2,3"}}, {std::nullopt, {"138 0000 0000"}}};
    contact.emailAddresses = {{std::nullopt, "a@example.org"}, {std::nullopt, "b@example.org"}};
    this->add(this->books_.book(), {shareContact(contact)});

    const auto contacts = this->contactsOf(this->books_.again());
    ASSERT_EQ(contacts.size(), 1u);
    EXPECT_FALSE(contacts[0]->identifier().empty());
    contact.identifier = contacts[0]->identifier();
    EXPECT_EQ(editableContact(*contacts[0]), contact);
}

TYPED_TEST_P(AddressBookContract, AContactMayConsistOfAPhoneAlone) {
    baseapi::AddressBookContact contact;
    contact.phoneNumbers = {{std::nullopt, {"1"}}};
    this->add(this->books_.book(), {shareContact(contact)});
    const auto contacts = this->contactsOf(this->books_.again());
    ASSERT_EQ(contacts.size(), 1u);
    EXPECT_EQ(contacts[0]->givenName(), "");
    EXPECT_EQ(editableContact(*contacts[0]).phoneNumbers, contact.phoneNumbers);
}

TYPED_TEST_P(AddressBookContract, IdentifiersAreUniqueAndStable) {
    auto& book = this->books_.book();
    this->add(book, {this->named("same"), this->named("same"), this->named("same")});
    std::set<std::string> identifiers;
    for (const auto& contact : this->contactsOf(book)) identifiers.emplace(contact->identifier());
    EXPECT_EQ(identifiers.size(), 3u);
    for (const auto& contact : this->contactsOf(this->books_.again()))
        EXPECT_TRUE(identifiers.contains(std::string(contact->identifier())));
}

TYPED_TEST_P(AddressBookContract, TheOrderStays) {
    auto& book = this->books_.book();
    std::vector<baseapi::SharedContact> many;
    for (int index = 0; index < 50; ++index) many.push_back(this->named(std::to_string(index)));
    this->add(book, many);
    EXPECT_EQ(this->givenNamesOf(book), this->givenNamesOf(this->books_.again()));
}

TYPED_TEST_P(AddressBookContract, ADeleteTakesThatContactAloneAway) {
    auto& book = this->books_.book();
    this->add(book, {this->named("a"), this->named("b"), this->named("c")});
    auto gone = this->contactsOf(book);
    std::erase_if(gone, [](const auto& contact) { return contact->givenName() != "b"; });
    EXPECT_FALSE(book.execute({.deleted = gone}));
    EXPECT_THAT(this->givenNamesOf(this->books_.again()), testing::UnorderedElementsAre("a", "c"));
}

TYPED_TEST_P(AddressBookContract, ARequestOfNothingChangesNothing) {
    auto& book = this->books_.book();
    this->add(book, {this->named("a")});
    EXPECT_FALSE(book.execute({}));
    EXPECT_THAT(this->givenNamesOf(book), testing::ElementsAre("a"));
}

TYPED_TEST_P(AddressBookContract, ADeleteOfAContactThatIsNotThereFailsAndNothingOfItsRequestHappens) {
    auto& book = this->books_.book();
    this->add(book, {this->named("a"), this->named("b")});
    auto gone = this->contactsOf(book);
    EXPECT_FALSE(book.execute({.deleted = std::span(gone).first(1)}));
    const std::vector<baseapi::SharedContact> added{this->named("c")};

    const auto error = book.execute({.added = added, .deleted = gone});
    ASSERT_TRUE(error);
    EXPECT_FALSE(error->message.empty());
    EXPECT_THAT(this->givenNamesOf(book), testing::ElementsAre(gone[1]->givenName()));
}

TYPED_TEST_P(AddressBookContract, AnEnumerationMayChangeTheBook) {
    auto& book = this->books_.book();
    this->add(book, {this->named("a"), this->named("b")});
    const auto error = book.enumerateContacts(this->allKeys, [&](baseapi::SharedContact contact) {
        EXPECT_FALSE(book.execute({.deleted = std::span(&contact, 1)}));
    });
    EXPECT_FALSE(error);
    EXPECT_TRUE(this->contactsOf(book).empty());
}

TYPED_TEST_P(AddressBookContract, EqualNamesHaveOneFullName) {
    auto& book = this->books_.book();
    const auto contact = baseapi::shareContact(
        baseapi::AddressBookContact{.givenName = "Jane", .familyName = "Doe", .middleName = "Q"});
    this->add(book, {contact});
    const auto name = book.fullName(*contact);
    ASSERT_TRUE(name);
    EXPECT_FALSE(name->empty());
    EXPECT_EQ(book.fullName(*this->contactsOf(book).at(0)), name);
}

TYPED_TEST_P(AddressBookContract, WithoutANameThereIsNoFullName) {
    const auto contact = baseapi::shareContact(baseapi::AddressBookContact{.organizationName = "Acme"});
    EXPECT_EQ(this->books_.book().fullName(*contact), std::nullopt);
}

TYPED_TEST_P(AddressBookContract, WithoutPermissionNothingIsReadOrWritten) {
    auto& book = this->books_.refused();
    EXPECT_NE(static_cast<int>(book.authorizationStatus()), 3);
    int visited = 0;
    EXPECT_TRUE(book.enumerateContacts(this->allKeys, [&](const auto&) { ++visited; }));
    EXPECT_EQ(visited, 0);
    const std::vector<baseapi::SharedContact> added{this->named("a")};
    EXPECT_TRUE(book.execute({.added = added}));
}

REGISTER_TYPED_TEST_SUITE_P(AddressBookContract, AnEmptyBookGrantsAndHasNoContacts,
                            WhatIsAddedIsThereWithAllItsFieldsInOrder, AContactMayConsistOfAPhoneAlone,
                            IdentifiersAreUniqueAndStable, TheOrderStays, ADeleteTakesThatContactAloneAway,
                            ARequestOfNothingChangesNothing,
                            ADeleteOfAContactThatIsNotThereFailsAndNothingOfItsRequestHappens,
                            AnEnumerationMayChangeTheBook, EqualNamesHaveOneFullName,
                            WithoutANameThereIsNoFullName, WithoutPermissionNothingIsReadOrWritten);

}  // namespace test_support
