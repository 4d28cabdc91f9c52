#include "baseapi/contacts/contact_manager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

#include "tests/contacts/address_book_fixture.h"

namespace {

using baseapi::AddressBookContact;
using baseapi::ContactBean;
using baseapi::ContactManager;
using baseapi::EmailType;
using baseapi::PhoneNumberType;
using testing::ElementsAre;

class ContactManagerTest : public AddressBookTest {
  protected:
    static std::vector<ContactBean> fetch() { return ContactManager::shared().fetchAllContacts(); }
    ContactBean fetched(const AddressBookContact& contact) {
        book_.put(contact);
        return fetch().at(0);
    }
};

TEST_F(ContactManagerTest, AsksForExactlySevenKeysInTheirOrder) {
    fetch();
    using enum baseapi::ContactKey;
    EXPECT_THAT(book_.keys(), ElementsAre(identifier, givenName, familyName, middleName, organizationName,
                                          phoneNumbers, emailAddresses));
}

TEST_F(ContactManagerTest, GivesAllContactsInTheBooksOrderAndLogsTheirNumber) {
    book_.put(person("b", ""));
    book_.put(person("a", ""));
    const auto contacts = fetch();
    ASSERT_EQ(contacts.size(), 2u);
    EXPECT_EQ(contacts[0].givenName, "b");
    EXPECT_EQ(contacts[1].givenName, "a");
    EXPECT_THAT(log_.lines(), ElementsAre("fetchAllContacts success, count = 2"));
}

TEST_F(ContactManagerTest, WithoutPermissionThereIsNothingAndTheBookIsNotRead) {
    book_.put(person("a", ""));
    for (const auto status : {baseapi::AddressBook::AuthorizationStatus::notDetermined,
                              baseapi::AddressBook::AuthorizationStatus::restricted,
                              baseapi::AddressBook::AuthorizationStatus::denied}) {
        book_.plan.status = status;
        EXPECT_TRUE(fetch().empty());
    }
    EXPECT_TRUE(book_.keys().empty());
    EXPECT_THAT(log_.lines(), testing::Each("No contacts authorization"));
    EXPECT_EQ(log_.lines().size(), 3u);
}

TEST_F(ContactManagerTest, AFailedEnumerationDropsWhatWasCollected) {
    book_.put(person("a", ""));
    book_.put(person("b", ""));
    book_.plan.enumerationError = "the store is locked";
    book_.plan.visitedBeforeError = 1;
    EXPECT_TRUE(fetch().empty());
    EXPECT_THAT(log_.lines(), ElementsAre("fetchAllContacts error: the store is locked"));
}

TEST_F(ContactManagerTest, NamesAreThereAlsoWhereTheyAreEmpty) {
    const auto contact = fetched(person("雷", "李"));
    EXPECT_EQ(contact.id, "contact-1");
    EXPECT_EQ(contact.familyName, "李");
    EXPECT_EQ(contact.givenName, "雷");
    EXPECT_EQ(contact.middleName, "");
    EXPECT_EQ(contact._displayName, "李雷");
    EXPECT_EQ(contact.fullName(), "李雷");
    EXPECT_EQ(contact.namePrefix, std::nullopt);
    EXPECT_EQ(contact.nameSuffix, std::nullopt);
    EXPECT_EQ(contact.notes, std::nullopt);
    EXPECT_EQ(contact.organization, std::nullopt);
    EXPECT_EQ(contact.op, 0);
}

TEST_F(ContactManagerTest, AnOrganisationAloneIsTheDisplayName) {
    const auto contact = fetched({.organizationName = "Acme"});
    EXPECT_EQ(contact._displayName, "Acme");
    EXPECT_EQ(contact.organization, (ContactBean::OrganizationInfo{.company = "Acme"}));
    EXPECT_EQ(contact.familyName, "");
    EXPECT_EQ(contact.givenName, "");
}

TEST_F(ContactManagerTest, WithoutNamesAndOrganisationTheDisplayNameIsUnknown) {
    EXPECT_EQ(fetched({.middleName = "Q"})._displayName, "unknown");
}

TEST_F(ContactManagerTest, NoteTitleAndDepartmentAreNotFetched) {
    const auto contact =
        fetched({.organizationName = "Acme", .jobTitle = "x", .departmentName = "y", .note = "z"});
    EXPECT_EQ(contact.notes, std::nullopt);
    EXPECT_EQ(contact.organization->title, std::nullopt);
    EXPECT_EQ(contact.organization->department, std::nullopt);
}

TEST_F(ContactManagerTest, ALabelCountsAsTheTextThatItIs) {
    AddressBookContact from;
    for (const auto& label :
         {std::string("mobile"), std::string(baseapi::CNLabelHome), std::string("WORK,FAX")})
        from.phoneNumbers.push_back({label, {"1"}});
    from.phoneNumbers.push_back({std::nullopt, {"2"}});
    from.emailAddresses = {{"Work", "a"}, {std::string(baseapi::CNLabelWork), "b"}, {std::nullopt, "c"}};
    const auto contact = fetched(from);
    EXPECT_THAT(contact.phoneNumbers, ElementsAre(ContactBean::PhoneNumber{"1", PhoneNumberType::mobile},
                                                  ContactBean::PhoneNumber{"1", PhoneNumberType::other},
                                                  ContactBean::PhoneNumber{"1", PhoneNumberType::faxWork},
                                                  ContactBean::PhoneNumber{"2", PhoneNumberType::other}));
    EXPECT_THAT(contact.emails, ElementsAre(ContactBean::Email{"a", EmailType::work},
                                            ContactBean::Email{"b", EmailType::other},
                                            ContactBean::Email{"c", EmailType::other}));
}

TEST_F(ContactManagerTest, SeveralThreadsShareOneManager) {
    book_.put(person("a", ""));
    std::vector<std::thread> threads;
    for (int index = 0; index < 4; ++index) threads.emplace_back([] { EXPECT_EQ(fetch().size(), 1u); });
    for (auto& thread : threads) thread.join();
}

}  // namespace
