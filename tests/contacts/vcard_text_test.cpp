#include "baseapi/contacts/vcard_text.h"

#include <gtest/gtest.h>

namespace {

using baseapi::ContactBean;
using baseapi::EmailType;
using baseapi::PhoneNumberType;
using baseapi::vCardText;

std::string textOf(const ContactBean& contact) {
    return vCardText(std::span(&contact, 1));
}

TEST(VCardTextTest, ACardIsItsLinesInTheirOrder) {
    ContactBean contact("id", "李", "雷", "Q", "Dr", "Jr", "Lei", "note",
                        ContactBean::OrganizationInfo{"Acme", "Chief", "R&D"}, 3);
    contact.addPhoneNumber({"1", PhoneNumberType::faxWork});
    contact.addPhoneNumber({"2", PhoneNumberType::pager});
    contact.addEmail({"a@example.org", EmailType::mobile});
    contact.addEmail({"b@example.org", EmailType::home});
    EXPECT_EQ(textOf(contact),
              "BEGIN:VCARD\r\n"
              "VERSION:3.0\r\n"
              "N:李;雷;Q;Dr;Jr\r\n"
              "FN:Lei\r\n"
              "NOTE:note\r\n"
              "TEL;TYPE=WORK,FAX:1\r\n"
              "TEL;TYPE=PAGER:2\r\n"
              "EMAIL;TYPE=MOBILE:a@example.org\r\n"
              "EMAIL;TYPE=HOME:b@example.org\r\n"
              "ORG:Acme\r\n"
              "TITLE:Chief\r\n"
              "X-DEPARTMENT:R&D\r\n"
              "END:VCARD\r\n");
}

TEST(VCardTextTest, NamesAndNumbersAreEscaped) {
    ContactBean contact;
    contact.familyName = "O'Neil";
    contact.givenName = "Ann, Jr";
    contact.addPhoneNumber({"+1;2", PhoneNumberType::mobile});
    EXPECT_EQ(textOf(contact),
              "BEGIN:VCARD\r\n"
              "VERSION:3.0\r\n"
              "N:O'Neil;Ann\\, Jr;;;\r\n"
              "FN:O'NeilAnn\\, Jr\r\n"
              "TEL;TYPE=CELL:+1\\;2\r\n"
              "END:VCARD\r\n");
}

TEST(VCardTextTest, AnAbsentNameIsEmptyAndTheUnknownHasAName) {
    EXPECT_EQ(textOf({}), "BEGIN:VCARD\r\nVERSION:3.0\r\nN:;;;;\r\nFN:未知联系人\r\nEND:VCARD\r\n");
}

TEST(VCardTextTest, AnEmptyCompanyGivesABareLineAndNoName) {
    ContactBean contact;
    contact.organization = ContactBean::OrganizationInfo{.company = ""};
    EXPECT_EQ(textOf(contact), "BEGIN:VCARD\r\nVERSION:3.0\r\nN:;;;;\r\nORG:\r\nEND:VCARD\r\n");
}

TEST(VCardTextTest, EmptyNotesGiveNoLineButAnEmptyTitleDoes) {
    ContactBean contact;
    contact.givenName = "x";
    contact.notes = "";
    contact.organization = ContactBean::OrganizationInfo{.title = "", .department = ""};
    EXPECT_EQ(textOf(contact),
              "BEGIN:VCARD\r\nVERSION:3.0\r\nN:;x;;;\r\nFN:x\r\nTITLE:\r\nX-DEPARTMENT:\r\nEND:VCARD\r\n");
}

TEST(VCardTextTest, ALineFeedAndABackslashAreEscapedAndNotTwice) {
    ContactBean contact;
    contact.givenName = "x";
    contact.notes = "a\\b\nc";
    EXPECT_NE(textOf(contact).find("\r\nNOTE:a\\\\b\\nc\r\n"), std::string::npos);
    contact.notes = ",;\n\\";
    EXPECT_NE(textOf(contact).find("\r\nNOTE:\\,\\;\\n\\\\\r\n"), std::string::npos);
}

TEST(VCardTextTest, WhatIsEscapedIsFoundAtEveryPlaceOfAValueOfAnyLength) {
    for (std::size_t size = 1; size <= 20; ++size) {
        for (std::size_t at = 0; at < size; ++at) {
            for (const std::string special : {",", ";", "\\", "\n"}) {
                const std::string before(at, '-');
                const std::string after(size - at - 1, '\xE6');
                const auto written = special == "\n" ? "\\n" : "\\" + special;
                EXPECT_EQ(textOf(ContactBean(before + special + after, {}, {})),
                          "BEGIN:VCARD\r\nVERSION:3.0\r\nN:;;;;\r\nFN:" + before + written + after +
                              "\r\nEND:VCARD\r\n");
            }
        }
    }
}

TEST(VCardTextTest, ACarriageReturnAColonAndAllElseStandAsTheyAre) {
    ContactBean contact;
    contact.givenName = "x";
    contact.notes = "a\rb:c\"d\t😀";
    EXPECT_NE(textOf(contact).find("\r\nNOTE:a\rb:c\"d\t😀\r\n"), std::string::npos);
}

TEST(VCardTextTest, TheCommaOfANumberIsEscapedAndThatOfAKindIsNot) {
    const ContactBean contact("x", {{"1,2", PhoneNumberType::faxHome}}, {});
    EXPECT_NE(textOf(contact).find("\r\nTEL;TYPE=HOME,FAX:1\\,2\r\n"), std::string::npos);
}

TEST(VCardTextTest, CardsFollowEachOtherWithoutAnEmptyLine) {
    const std::vector<ContactBean> contacts{ContactBean("a", {}, {}), ContactBean("b", {}, {})};
    EXPECT_EQ(vCardText(contacts),
              "BEGIN:VCARD\r\nVERSION:3.0\r\nN:;;;;\r\nFN:a\r\nEND:VCARD\r\n"
              "BEGIN:VCARD\r\nVERSION:3.0\r\nN:;;;;\r\nFN:b\r\nEND:VCARD\r\n");
}

TEST(VCardTextTest, NoContactsGiveNoText) {
    EXPECT_EQ(vCardText({}), "");
}

TEST(VCardTextTest, ALongValueIsNotFolded) {
    const std::string name(100'000, 'x');
    const ContactBean contact(name, {}, {});
    EXPECT_EQ(textOf(contact), "BEGIN:VCARD\r\nVERSION:3.0\r\nN:;;;;\r\nFN:" + name + "\r\nEND:VCARD\r\n");
}

}  // namespace
