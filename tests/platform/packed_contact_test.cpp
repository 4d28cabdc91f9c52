#include "baseapi/platform/packed_contact.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <new>
#include <string>
#include <vector>

#include "baseapi/platform/address_book.h"

namespace {

using baseapi::AddressBookContact;
using baseapi::ContactTexts;
using baseapi::LabeledText;
using testing::ElementsAre;
using testing::IsEmpty;

AddressBookContact fullContact() {
    return {
        .identifier = "id",
        .givenName = "雷",
        .familyName = "李",
        .middleName = "Q",
        .organizationName = "Acme",
        .jobTitle = "Chief",
        .departmentName = "R&D",
        .note = std::string(10'000, 'n') + '\0',
        .phoneNumbers = {{"HOME", {"1"}}, {std::nullopt, {"22"}}, {"", {"333"}}, {"WORK", {""}}},
        .emailAddresses = {{std::nullopt, "a@example.org"}, {"HOME", "b"}},
    };
}

TEST(PackedContactTest, HoldsEachTextInItsPlace) {
    const auto contact = shareContact(fullContact());
    EXPECT_EQ(contact->identifier(), "id");
    EXPECT_EQ(contact->givenName(), "雷");
    EXPECT_EQ(contact->familyName(), "李");
    EXPECT_EQ(contact->middleName(), "Q");
    EXPECT_EQ(contact->organizationName(), "Acme");
    EXPECT_EQ(contact->jobTitle(), "Chief");
    EXPECT_EQ(contact->departmentName(), "R&D");
    EXPECT_EQ(contact->note(), fullContact().note);
    EXPECT_THAT(contact->phoneNumbers(),
                ElementsAre(LabeledText{"HOME", "1"}, LabeledText{std::nullopt, "22"}, LabeledText{"", "333"},
                            LabeledText{"WORK", ""}));
    EXPECT_THAT(contact->emailAddresses(),
                ElementsAre(LabeledText{std::nullopt, "a@example.org"}, LabeledText{"HOME", "b"}));
}

TEST(PackedContactTest, WhatItDoesNotHaveIsEmpty) {
    const auto contact = baseapi::shareContact(ContactTexts{.middleName = "Q"});
    EXPECT_EQ(contact->identifier(), "");
    EXPECT_EQ(contact->middleName(), "Q");
    EXPECT_EQ(contact->note(), "");
    EXPECT_THAT(contact->phoneNumbers(), IsEmpty());
    EXPECT_THAT(contact->emailAddresses(), IsEmpty());
    EXPECT_EQ(editableContact(*baseapi::shareContact(ContactTexts{})), AddressBookContact{});
}

TEST(PackedContactTest, MayHaveEmailsAlone) {
    const std::array<LabeledText, 1> emails{{{std::nullopt, "a@example.org"}}};
    const auto contact = baseapi::shareContact(ContactTexts{.emailAddresses = emails});
    EXPECT_THAT(contact->phoneNumbers(), IsEmpty());
    EXPECT_THAT(contact->emailAddresses(), ElementsAre(emails[0]));
}

TEST(PackedContactTest, ACopyToBeChangedHasAllOfIt) {
    EXPECT_EQ(editableContact(*shareContact(fullContact())), fullContact());
}

TEST(PackedContactTest, KeepsNothingOfWhatItWasPackedOf) {
    std::string name = "Jane";
    std::vector<LabeledText> phones{{name, name}};
    const auto contact = baseapi::shareContact(ContactTexts{.givenName = name, .phoneNumbers = phones});
    name = "John";
    phones.front() = {"x", "y"};
    EXPECT_EQ(contact->givenName(), "Jane");
    EXPECT_THAT(contact->phoneNumbers(), ElementsAre(LabeledText{"Jane", "Jane"}));
}

TEST(PackedContactTest, IsEqualWhereAllTextsAre) {
    EXPECT_EQ(*shareContact(fullContact()), *shareContact(fullContact()));
    std::vector<AddressBookContact> others(7, fullContact());
    others[0].givenName = "蕾";
    others[1].givenName += others[1].familyName;
    others[1].familyName.clear();
    others[2].phoneNumbers[1].label = "";
    others[3].phoneNumbers[2].label.reset();
    others[4].emailAddresses.pop_back();
    others[5].phoneNumbers.push_back(
        {others[5].emailAddresses[0].label, {others[5].emailAddresses[0].value}});
    others[5].emailAddresses.erase(others[5].emailAddresses.begin());
    others[6].note += "x";
    for (const auto& other : others) EXPECT_FALSE(*shareContact(fullContact()) == *shareContact(other));
}

TEST(PackedContactTest, ItsEntriesCanBeSearched) {
    const auto contact = shareContact(fullContact());
    const auto numbers = contact->phoneNumbers();
    const auto found = std::ranges::find(numbers, "333", &LabeledText::value);
    ASSERT_NE(found, numbers.end());
    EXPECT_EQ((*found).label, "");
    EXPECT_EQ(std::ranges::distance(numbers), 4);
}

TEST(PackedContactTest, AContactOfTwoGibibytesCountsAsOneWithoutRoom) {
    // No byte of it is looked at.
    const std::string_view gibibyte("", std::size_t{1} << 30);
    EXPECT_THROW(baseapi::shareContact(ContactTexts{.jobTitle = gibibyte, .note = gibibyte}), std::bad_alloc);
    const std::array<LabeledText, 4> numbers{
        {{gibibyte, gibibyte}, {gibibyte, gibibyte}, {gibibyte, gibibyte}, {gibibyte, gibibyte}}};
    EXPECT_THROW(baseapi::shareContact(ContactTexts{.phoneNumbers = numbers}), std::bad_alloc);
}

}  // namespace
