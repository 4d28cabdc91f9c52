#include "hostkit/vcard.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using baseapi::AddressBookContact;
using baseapi::LabeledValue;
using hostkit::BrokenCard;
using hostkit::readVCard;
using testing::ElementsAre;

std::string card(std::string_view lines, std::string_view version = "3.0") {
    return "BEGIN:VCARD\r\nVERSION:" + std::string(version) + "\r\n" + std::string(lines) +
           "\r\nEND:VCARD\r\n";
}

AddressBookContact contactOf(std::string_view text) {
    const auto read = readVCard(text);
    if (const auto* broken = std::get_if<BrokenCard>(&read)) {
        ADD_FAILURE() << broken->why;
        return {};
    }
    return std::get<AddressBookContact>(read);
}

std::string writeVCard(const AddressBookContact& contact, std::string_view uid) {
    return hostkit::writeVCard(*shareContact(contact), uid);
}

std::string whyBroken(std::string_view text) {
    const auto read = readVCard(text);
    const auto* broken = std::get_if<BrokenCard>(&read);
    return broken ? broken->why : "";
}

LabeledValue<baseapi::PhoneNumber> phone(std::optional<std::string> label, std::string number) {
    return {std::move(label), {std::move(number)}};
}

TEST(VCardTest, ACardOfVersionThreeIsReadUnfoldedAndUnescaped) {
    const auto contact = contactOf(
        card("item1.N:O'Neil\\;x;Ann\\, Jr;李;Dr;Jr\r\nFN:whoever\r\nORG:Acme\\, Ltd;R&D\r\nTITLE:Chief\r\n"
             "NOTE:a\\\\b\\nc\r\n  "
             "d\r\nTEL;TYPE=home,voice;type=Pref:+1\r\nTEL:2\r\nEMAIL;TYPE=INTERNET:a@example.org\r\n"
             "PHOTO;ENCODING=b:AAAA\r\nX-OTHER:x"));
    AddressBookContact wanted;
    wanted.familyName = "O'Neil;x";
    wanted.givenName = "Ann, Jr";
    wanted.middleName = "李";
    wanted.organizationName = "Acme, Ltd";
    wanted.jobTitle = "Chief";
    wanted.note = "a\\b\nc d";
    wanted.phoneNumbers = {phone("HOME,VOICE,PREF", "+1"), phone(std::nullopt, "2")};
    wanted.emailAddresses = {{"INTERNET", "a@example.org"}};
    EXPECT_EQ(contact, wanted);
}

TEST(VCardTest, ACardOfVersionFourIsReadWithQuotedTypesAndTelAddresses) {
    const auto contact = contactOf(card(
        "FN:Jane\r\nTEL;VALUE=uri;PREF=1;TYPE=\"cell,voice\":tel:+1-555\r\nEMAIL;PREF=1:jane@example.org",
        "4.0"));
    EXPECT_EQ(contact.givenName, "Jane");
    EXPECT_THAT(contact.phoneNumbers, ElementsAre(phone("CELL,VOICE", "+1-555")));
    EXPECT_EQ(contact.emailAddresses.at(0).label, std::nullopt);
}

TEST(VCardTest, EmptyTypesAreNoLabel) {
    const auto contact = contactOf(card("FN:Jane\r\nTEL;TYPE=:1\r\nTEL;TYPE=,home,:2"));
    EXPECT_THAT(contact.phoneNumbers, ElementsAre(phone(std::nullopt, "1"), phone("HOME", "2")));
}

TEST(VCardTest, TheFormattedNameStandsInForAnAbsentOrEmptyName) {
    EXPECT_EQ(contactOf(card("FN:Jane Doe")).givenName, "Jane Doe");
    EXPECT_EQ(contactOf(card("FN:Jane Doe\nN:;;;;")).givenName, "Jane Doe");
    EXPECT_EQ(contactOf(card("FN:Jane Doe\nN:Doe")).givenName, "");
}

TEST(VCardTest, LineFeedsALowerCaseAndAByteOrderMarkAreTaken) {
    EXPECT_EQ(contactOf("\xEF\xBB\xBF"
                        "begin:vcard\nversion:3.0\n\nn:Doe;Jane\nend:vcard")
                  .familyName,
              "Doe");
}

TEST(VCardTest, WhatComesOnceCountsWhereItComesFirst) {
    const auto contact = contactOf(card("N:a;b\nN:c;d\nNOTE:e\nNOTE:f\nORG:\nORG:g"));
    EXPECT_EQ(contact, (AddressBookContact{.givenName = "b", .familyName = "a", .note = "e"}));
}

TEST(VCardTest, ABrokenCardSaysWhatIsWrong) {
    EXPECT_EQ(whyBroken(""), "no BEGIN:VCARD");
    EXPECT_EQ(whyBroken("N:a;b\n"), "no BEGIN:VCARD");
    EXPECT_EQ(whyBroken("BEGIN:VCARD\nVERSION:3.0\nN:a;b\n"), "no END:VCARD");
    EXPECT_EQ(whyBroken("BEGIN:VCARD\nN:a;b\nEND:VCARD\n"), "no VERSION");
    EXPECT_EQ(whyBroken(card("N:a;b", "2.1")), "vCard version 2.1");
    EXPECT_EQ(whyBroken(card("N:a;b") + card("N:c;d")), "more than one card");
    EXPECT_EQ(whyBroken(card("N:a;b\nEND:VCARD")), "more than one card");
    EXPECT_EQ(whyBroken(card("N:a;b\nno colon")), "a line that is none of a vCard: no colon");
    EXPECT_EQ(whyBroken(card("N:\xff")), "no UTF-8 text");
}

TEST(VCardTest, AContactIsWrittenAsOneCardOfVersionThree) {
    AddressBookContact contact;
    contact.familyName = "O'Neil";
    contact.givenName = "Ann, Jr";
    contact.organizationName = "Acme";
    contact.departmentName = "R;D";
    contact.jobTitle = "Chief";
    contact.note = "a\nb";
    contact.phoneNumbers = {phone(std::string(baseapi::CNLabelPhoneNumberMobile), "1;2")};
    contact.emailAddresses = {{std::string(baseapi::CNLabelWork), "a@example.org"}};
    EXPECT_EQ(writeVCard(contact, "U"),
              "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:U\r\nN:O'Neil;Ann\\, Jr;;;\r\nFN:Ann\\, Jr O'Neil\r\n"
              "ORG:Acme;R\\;D\r\nTITLE:Chief\r\nTEL;TYPE=CELL:1\\;2\r\nEMAIL;TYPE=WORK:a@example.org\r\n"
              "NOTE:a\\nb\r\nEND:VCARD\r\n");
}

TEST(VCardTest, ACardWithoutANameHasTheOrganisationForIt) {
    EXPECT_EQ(writeVCard({.organizationName = "Acme"}, "U"),
              "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:U\r\nN:;;;;\r\nFN:Acme\r\nORG:Acme\r\nEND:VCARD\r\n");
}

TEST(VCardTest, LabelsAreWrittenAsTypes) {
    AddressBookContact contact;
    using namespace baseapi;
    const std::vector<std::pair<std::string_view, std::optional<std::string>>> rows{
        {CNLabelHome, "HOME"},
        {CNLabelWork, "WORK"},
        {CNLabelOther, std::nullopt},
        {CNLabelPhoneNumberMobile, "CELL"},
        {CNLabelPhoneNumberiPhone, "CELL"},
        {CNLabelPhoneNumberMain, std::nullopt},
        {CNLabelPhoneNumberHomeFax, "HOME,FAX"},
        {CNLabelPhoneNumberWorkFax, "WORK,FAX"},
        {CNLabelPhoneNumberOtherFax, "FAX"},
        {"PAGER", "PAGER"},
        {"at \"home\";x:y\n", "AT  HOME  X Y "},
        {"", std::nullopt},
    };
    for (const auto& row : rows) contact.phoneNumbers.push_back({std::string(row.first), {"1"}});
    const auto again = contactOf(writeVCard(contact, "U"));
    ASSERT_EQ(again.phoneNumbers.size(), rows.size());
    for (std::size_t index = 0; index < rows.size(); ++index)
        EXPECT_EQ(again.phoneNumbers[index].label, rows[index].second) << rows[index].first;
}

}  // namespace
