#include "baseapi/contacts/vcard_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/temporary_folder.h"

namespace {

using baseapi::AddressBookContact;
using testing::IsEmpty;
using testing::SizeIs;

std::string cardOf(const std::string& lines) {
    return "BEGIN:VCARD\r\n" + lines + "\r\nEND:VCARD\r\n";
}

class VCardFileTest : public testing::Test {
  protected:
    std::vector<AddressBookContact> parsed(std::string_view content) const {
        std::ofstream(file_, std::ios::binary) << content;
        std::vector<AddressBookContact> contacts;
        baseapi::parseVCardFile(file_,
                                [&](const auto& contact) { contacts.push_back(editableContact(*contact)); });
        return contacts;
    }
    std::vector<AddressBookContact> parsedAsText(std::string_view content) const {
        std::vector<AddressBookContact> contacts;
        baseapi::parseVCardText(content,
                                [&](const auto& contact) { contacts.push_back(editableContact(*contact)); });
        return contacts;
    }

    test_support::TemporaryFolder folder_;
    const std::filesystem::path file_ = folder_ / "contacts.vcf";
};

TEST_F(VCardFileTest, GivesTheContactsInOrder) {
    const auto contacts = parsed(cardOf("FN:Ann") + cardOf("FN:李雷"));
    ASSERT_THAT(contacts, SizeIs(2));
    EXPECT_EQ(contacts[0].givenName, "Ann");
    EXPECT_EQ(contacts[1].givenName, "李雷");
}

TEST_F(VCardFileTest, AnEmptyFileHasNone) {
    EXPECT_THAT(parsed(""), IsEmpty());
}

TEST_F(VCardFileTest, AFileOfManyPiecesGivesWhatItsTextGives) {
    std::string text = "before the first card\r\n";
    for (int index = 0; index < 20'000; ++index)
        text += cardOf("N:李;雷" + std::to_string(index) + ";;;\r\nTEL;TYPE=CELL:" + std::to_string(index));
    text += "BEGIN:VCARD\r\nFN:without an end\r\n";
    const auto contacts = parsed(text);
    EXPECT_THAT(contacts, SizeIs(20'000));
    EXPECT_EQ(contacts, parsedAsText(text));
}

TEST_F(VCardFileTest, APieceMayEndAnywhereInACard) {
    const auto cards = cardOf("N:李;雷;;;\r\nTEL;TYPE=CELL:1") + cardOf("FN:Ünal\nNOTE:\xe2\x80\xa8one");
    constexpr std::size_t piece = 256 << 10;
    for (std::size_t shift = 0; shift <= cards.size(); ++shift) {
        const auto text = std::string(piece - shift, 'x') + cards;
        ASSERT_EQ(parsed(text), parsedAsText(text)) << shift;
    }
}

TEST_F(VCardFileTest, ACardMayBeLongerThanAnyPiece) {
    const std::string picture(3 << 20, 'A');
    const auto contacts =
        parsed(cardOf("FN:Ann\r\nPHOTO:" + picture + "\r\nNOTE:" + picture) + cardOf("FN:Bob"));
    ASSERT_THAT(contacts, SizeIs(2));
    EXPECT_EQ(contacts[0].givenName, "Ann");
    EXPECT_EQ(contacts[0].note, picture);
    EXPECT_EQ(contacts[1].givenName, "Bob");
}

TEST_F(VCardFileTest, AFileOfManyPiecesThatIsNoUTF8AtItsEndIsRefused) {
    std::string text;
    while (text.size() < 1 << 20) text += cardOf("FN:Ann");
    EXPECT_THROW(parsed(text + "\xff"), std::runtime_error);
}

TEST_F(VCardFileTest, WhatIsNoFileIsRefused) {
    const auto refused = [](const auto& path) {
        EXPECT_THROW(baseapi::parseVCardFile(path, [](const auto&) {}), std::exception) << path;
    };
    refused(folder_ / "missing.vcf");
    refused(folder_.path());
    ASSERT_EQ(::mkfifo((folder_ / "pipe").c_str(), 0600), 0);
    refused(folder_ / "pipe");
}

}  // namespace
