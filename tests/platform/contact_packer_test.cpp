#include "baseapi/platform/contact_packer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using baseapi::ContactPacker;
using baseapi::ContactTexts;
using baseapi::SharedContact;

SharedContact named(ContactPacker& packer, const std::string& name) {
    return packer.share(ContactTexts{.givenName = name});
}

bool shareMemory(const SharedContact& one, const SharedContact& other) {
    return !one.owner_before(other) && !other.owner_before(one);
}

TEST(ContactPackerTest, ManyContactsStandSideBySide) {
    ContactPacker packer;
    std::vector<SharedContact> contacts;
    for (int index = 0; index < 5'000; ++index) contacts.push_back(named(packer, std::to_string(index)));
    for (int index = 0; index < 5'000; ++index) {
        const auto& contact = *contacts[static_cast<std::size_t>(index)];
        EXPECT_EQ(contact, *shareContact(ContactTexts{.givenName = std::to_string(index)}));
    }
    EXPECT_TRUE(shareMemory(contacts[0], contacts[1]));
    EXPECT_FALSE(shareMemory(contacts.front(), contacts.back()));
}

TEST(ContactPackerTest, AContactOutlivesItsNeighboursAndThePacker) {
    SharedContact kept;
    {
        ContactPacker packer;
        const auto before = named(packer, "before");
        kept = named(packer, "kept");
        const auto after = named(packer, "after");
    }
    EXPECT_EQ(kept->givenName(), "kept");
}

TEST(ContactPackerTest, AChunkIsFilledToItsEnd) {
    // Two words, nine places and a name that is a multiple of four.
    constexpr std::size_t words = 64;
    constexpr std::size_t perChunk = 16 * 1024 / 4 / words;
    ContactPacker packer;
    std::vector<SharedContact> contacts;
    for (std::size_t index = 0; index <= perChunk; ++index)
        contacts.push_back(named(packer, std::string((words - 2 - 9) * 4, static_cast<char>('0' + index))));
    EXPECT_TRUE(shareMemory(contacts[0], contacts[perChunk - 1]));
    EXPECT_FALSE(shareMemory(contacts[0], contacts[perChunk]));
    for (std::size_t index = 0; index <= perChunk; ++index)
        EXPECT_EQ(contacts[index]->givenName().back(), static_cast<char>('0' + index));
}

TEST(ContactPackerTest, ALongContactHasRoomOfItsOwn) {
    ContactPacker packer;
    const std::string name(1'000'000, 'x');
    const auto before = named(packer, "before");
    const auto contact = named(packer, name);
    const auto after = named(packer, "after");
    EXPECT_EQ(contact->givenName(), name);
    EXPECT_EQ(before->givenName(), "before");
    EXPECT_EQ(after->givenName(), "after");
}

}  // namespace
