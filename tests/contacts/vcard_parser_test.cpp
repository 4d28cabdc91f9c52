#include "baseapi/contacts/vcard_parser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using baseapi::AddressBookContact;
using baseapi::LabeledValue;
using baseapi::parseVCardText;
using testing::ElementsAre;
using testing::IsEmpty;

std::string card(std::string_view lines) {
    return "BEGIN:VCARD\r\nVERSION:3.0\r\n" + std::string(lines) + "\r\nEND:VCARD\r\n";
}

std::vector<AddressBookContact> parsed(std::string_view text) {
    std::vector<AddressBookContact> contacts;
    parseVCardText(text, [&](const auto& contact) { contacts.push_back(editableContact(*contact)); });
    return contacts;
}

/// The one contact of a card of these lines.
AddressBookContact contactOf(std::string_view lines) {
    const auto contacts = parsed(card(lines));
    EXPECT_EQ(contacts.size(), 1u) << lines;
    return contacts.empty() ? AddressBookContact{} : contacts.front();
}

LabeledValue<baseapi::PhoneNumber> phone(std::string_view label, std::string number) {
    return {std::string(label), {std::move(number)}};
}

LabeledValue<std::string> email(std::string_view label, std::string address) {
    return {std::string(label), std::move(address)};
}

TEST(VCardParserTest, SevenPropertiesAreRead) {
    const auto contact = contactOf(
        "N:李;雷;Q;Dr;Jr\r\nFN:whoever\r\nTEL;TYPE=CELL:138\r\nEMAIL;TYPE=WORK:a@example.org\r\n"
        "ORG:Acme;R&D\r\nTITLE:Chief\r\nNOTE:note");
    AddressBookContact wanted;
    wanted.familyName = "李";
    wanted.givenName = "雷";
    wanted.middleName = "Q";
    wanted.phoneNumbers = {phone(baseapi::CNLabelPhoneNumberMobile, "138")};
    wanted.emailAddresses = {email(baseapi::CNLabelWork, "a@example.org")};
    wanted.organizationName = "Acme;R&D";
    wanted.jobTitle = "Chief";
    wanted.note = "note";
    EXPECT_EQ(contact, wanted);
}

TEST(VCardParserTest, EverythingElseIsIgnored) {
    const auto contact = contactOf(
        "N:a;b\nVERSION:2\nX-DEPARTMENT:x\nADR:x\nPHOTO:x\nURL:x\ntel;type=home:1\nitem1.TEL;TYPE=HOME:1\n"
        "TEL:1\nEMAIL:a\nUID:x\nn:c;d\nno colon");
    EXPECT_EQ(contact, (AddressBookContact{.givenName = "b", .familyName = "a"}));
}

TEST(VCardParserTest, TheFormattedNameStandsInForMissingNames) {
    EXPECT_EQ(contactOf("N:;;;;\r\nFN:Acme").givenName, "Acme");
    EXPECT_EQ(contactOf("N:Doe;\r\nFN:Acme").givenName, "");
    EXPECT_EQ(contactOf("FN:Acme").givenName, "Acme");
    EXPECT_EQ(contactOf("FN:one\nFN:two").givenName, "one");
}

TEST(VCardParserTest, ALaterNameReplacesTheFormattedName) {
    const auto contact = contactOf("FN:Jane Doe\r\nN:Doe;Jane;;;");
    EXPECT_EQ(contact.givenName, "Jane");
    EXPECT_EQ(contact.familyName, "Doe");
    EXPECT_EQ(contactOf("FN:Jane Doe\r\nN:Doe;;;;").givenName, "Jane Doe") << "an empty one does not";
}

TEST(VCardParserTest, TheNumberOfComponentsDecidesWhatANameLineSets) {
    EXPECT_EQ(contactOf("N:Doe;Jane"), (AddressBookContact{.givenName = "Jane", .familyName = "Doe"}));
    EXPECT_EQ(contactOf("N:Doe;Jane;Q"), (AddressBookContact{.givenName = "Jane", .familyName = "Doe"}));
    EXPECT_EQ(contactOf("N:Doe;Jane;Q;x"), (AddressBookContact{.givenName = "Jane", .familyName = "Doe"}));
    EXPECT_EQ(contactOf("N:Doe;Jane;Q;;"),
              (AddressBookContact{.givenName = "Jane", .familyName = "Doe", .middleName = "Q"}));
    EXPECT_EQ(contactOf("N:Doe;Jane;Q;;;more"),
              (AddressBookContact{.givenName = "Jane", .familyName = "Doe", .middleName = "Q"}));
    EXPECT_EQ(contactOf("N:;Jane"), (AddressBookContact{.givenName = "Jane"}));
    EXPECT_EQ(contactOf("N:Doe;"), (AddressBookContact{.familyName = "Doe"}));
}

TEST(VCardParserTest, ANameOfOneComponentSetsNothing) {
    EXPECT_THAT(parsed(card("N:Doe")), IsEmpty());
    EXPECT_THAT(parsed(card("N:")), IsEmpty());
    EXPECT_EQ(contactOf("N:Doe\nFN:x").familyName, "");
}

TEST(VCardParserTest, AnEscapedSemicolonSplitsAsWell) {
    const auto contact = contactOf("N:a\\;b;c");
    EXPECT_EQ(contact.familyName, "a\\");
    EXPECT_EQ(contact.givenName, "b");
}

TEST(VCardParserTest, AnEmptyComponentLeavesWhatIsThere) {
    const auto contact = contactOf("N:Doe;Jane;Q;;\nN:;John;;;");
    EXPECT_EQ(contact, (AddressBookContact{.givenName = "John", .familyName = "Doe", .middleName = "Q"}));
}

TEST(VCardParserTest, ACardWithoutANameOrAnOrganisationIsLost) {
    EXPECT_THAT(parsed(card("TEL;TYPE=CELL:1\nEMAIL;TYPE=HOME:a\nNOTE:x\nTITLE:y\nN:;;Q;;")), IsEmpty());
    EXPECT_EQ(contactOf("ORG:Acme").organizationName, "Acme");
    EXPECT_THAT(parsed(card("ORG:")), IsEmpty());
}

TEST(VCardParserTest, ARepeatedPropertyOverwrites) {
    const auto contact = contactOf("ORG:a\nORG:b\nTITLE:c\nTITLE:d\nNOTE:e\nNOTE:");
    EXPECT_EQ(contact, (AddressBookContact{.organizationName = "b", .jobTitle = "d", .note = ""}));
}

TEST(VCardParserTest, ValuesStayEscaped) {
    const auto contact = contactOf("N:x;a\\, b\nNOTE:a\\\\b\\nc\nTEL;TYPE=CELL:+1\\;2");
    EXPECT_EQ(contact.givenName, "a\\, b");
    EXPECT_EQ(contact.note, "a\\\\b\\nc");
    EXPECT_EQ(contact.phoneNumbers.at(0).value.stringValue, "+1\\;2");
}

TEST(VCardParserTest, AFoldedValueKeepsItsFirstLine) {
    EXPECT_EQ(contactOf("N:a;b\r\nNOTE:first\r\n  second").note, "first");
    EXPECT_EQ(contactOf("N:a;b\r\nNOTE:first\r\n ORG:second").organizationName, "second")
        << "and the next one is a line of its own";
}

TEST(VCardParserTest, LinesEndAtEveryLineEndOfThePlatform) {
    const auto contact = contactOf("N:a;b\vORG:c\fTITLE:d\u0085NOTE:e\u2028TEL;x:1\u2029EMAIL;x:f\rTEL;x:2");
    EXPECT_EQ(contact.organizationName, "c");
    EXPECT_EQ(contact.jobTitle, "d");
    EXPECT_EQ(contact.note, "e");
    EXPECT_EQ(contact.phoneNumbers.size(), 2u);
    EXPECT_EQ(contact.emailAddresses.at(0).value, "f");
}

TEST(VCardParserTest, BlanksAroundALineDoNotCount) {
    const auto contact = contactOf(" \tN:a;b \t\n\u3000NOTE: c \u00A0");
    EXPECT_EQ(contact.familyName, "a");
    EXPECT_EQ(contact.givenName, "b");
    EXPECT_EQ(contact.note, " c") << "the blank behind the prefix is the value's";
}

TEST(VCardParserTest, APhonesLabelIsThatOfTheFirstKindOfTheTable) {
    const auto contact = contactOf(
        "FN:x\nTEL;TYPE=CELL:1\nTEL;TYPE=MOBILE:2\nTEL;TYPE=WORK:3\nTEL;TYPE=HOME:4\nTEL;TYPE=FAX:5\nTEL;"
        "PREF=1:6\n"
        "TEL;TYPE=WORK,FAX:7\nTEL;TYPE=HOME,FAX:8\nTEL;TYPE=PAGER:9\nTEL;TYPE=OTHER:10\nTEL;TYPE=HOME;TYPE="
        "CELL:11\n"
        "TEL;TYPE=FAX;TYPE=WORK:12\nTEL;TYPE=cell:13\nTEL;TYPE=:14");
    using namespace baseapi;
    EXPECT_THAT(
        contact.phoneNumbers,
        ElementsAre(phone(CNLabelPhoneNumberMobile, "1"), phone(CNLabelPhoneNumberMobile, "2"),
                    phone(CNLabelWork, "3"), phone(CNLabelHome, "4"), phone(CNLabelPhoneNumberWorkFax, "5"),
                    phone(CNLabelPhoneNumberMain, "6"), phone(CNLabelWork, "7"), phone(CNLabelHome, "8"),
                    phone(CNLabelPhoneNumberMain, "9"), phone(CNLabelPhoneNumberMain, "10"),
                    phone(CNLabelPhoneNumberMobile, "11"), phone(CNLabelWork, "12"),
                    phone(CNLabelPhoneNumberMain, "13"), phone(CNLabelPhoneNumberMain, "14")));
}

TEST(VCardParserTest, TheWholeLineIsSearchedForTheKind) {
    EXPECT_EQ(contactOf("FN:x\nTEL;X:TYPE=HOME:1").phoneNumbers.at(0).label, baseapi::CNLabelHome);
    EXPECT_EQ(contactOf("FN:x\nTEL;X-TYPE=HOME:1").phoneNumbers.at(0).label, baseapi::CNLabelHome);
    EXPECT_EQ(contactOf("FN:x\nTEL;A=B;TYPE=HOME;C=D:1").phoneNumbers.at(0).label, baseapi::CNLabelHome);
    EXPECT_THAT(contactOf("FN:x\nTEL;X:TYPE=").phoneNumbers,
                ElementsAre(phone(baseapi::CNLabelPhoneNumberMain, "TYPE=")));
}

TEST(VCardParserTest, ANumberIsWhatStandsBehindTheLastColon) {
    const auto contact =
        contactOf("FN:x\nTEL;TYPE=CELL:tel:+1 2\t\nTEL;TYPE=CELL:\nTEL;TYPE=CELL: \nTEL;CELL\nORG:y");
    ASSERT_EQ(contact.phoneNumbers.size(), 1u);
    EXPECT_EQ(contact.phoneNumbers[0].value.stringValue, "+1 2");
    EXPECT_EQ(contact.organizationName, "y") << "the rest of the card stands";
}

TEST(VCardParserTest, AnEmailsLabelIsWorkHomeOrOther) {
    const auto contact = contactOf(
        "FN:x\nEMAIL;TYPE=HOME;TYPE=WORK:1\nEMAIL;TYPE=HOME:2\nEMAIL;TYPE=MOBILE:3\nEMAIL;TYPE=CELL: 4 "
        "\nEMAIL;x:\n"
        "EMAIL;x");
    using namespace baseapi;
    EXPECT_THAT(contact.emailAddresses, ElementsAre(email(CNLabelWork, "1"), email(CNLabelHome, "2"),
                                                    email(CNLabelOther, "3"), email(CNLabelOther, "4")));
}

TEST(VCardParserTest, CardsComeInTheTextsOrder) {
    const auto contacts =
        parsed(card("FN:a") + "between\r\n" + card("FN:b") + card("TEL;x:1") + card("FN:c"));
    std::vector<std::string> names;
    for (const auto& contact : contacts) names.push_back(contact.givenName);
    EXPECT_THAT(names, ElementsAre("a", "b", "c"));
}

TEST(VCardParserTest, ALastCardWithoutAnEndIsLost) {
    EXPECT_EQ(parsed(card("FN:a") + "BEGIN:VCARD\r\nFN:b\r\n").size(), 1u);
    EXPECT_THAT(parsed("BEGIN:VCARD\r\nFN:b\r\nEND:VCAR"), IsEmpty());
}

TEST(VCardParserTest, ACardInTheMiddleWithoutAnEndIsLostToo) {
    const auto contacts = parsed("BEGIN:VCARD\nFN:a\n" + card("FN:b"));
    ASSERT_EQ(contacts.size(), 1u);
    EXPECT_EQ(contacts[0].givenName, "b");
}

TEST(VCardParserTest, WhatStandsBeforeTheFirstCardIsNoCard) {
    EXPECT_THAT(parsed("FN:x\r\nEND:VCARD\r\n"), IsEmpty());
    EXPECT_THAT(parsed(""), IsEmpty());
}

TEST(VCardParserTest, WhatStandsBehindTheEndIsReadLikeTheCard) {
    EXPECT_EQ(parsed("BEGIN:VCARD\nFN:a\nEND:VCARD\nORG:b\n").at(0).organizationName, "b");
}

TEST(VCardParserTest, ABeginSplitsAlsoInTheMiddleOfALine) {
    const auto contacts = parsed("BEGIN:VCARD\nFN:a\nNOTE:x END:VCARD y BEGIN:VCARDFN:lost\nFN:b\nEND:VCARD");
    ASSERT_EQ(contacts.size(), 2u);
    EXPECT_EQ(contacts[0].note, "x END:VCARD y");
    EXPECT_EQ(contacts[1].givenName, "b");
}

TEST(VCardParserTest, LowerCaseIsNoCard) {
    EXPECT_THAT(parsed("begin:vcard\nFN:a\nend:vcard\n"), IsEmpty());
}

}  // namespace
