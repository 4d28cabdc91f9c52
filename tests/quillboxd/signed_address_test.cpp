#include "quillboxd/crypto/signed_address.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace quillboxd_test {
namespace {

using quillboxd::AddressSigner;
using quillboxd::ContentAddress;
using quillboxd::parseContentAddress;
using quillboxd::parsePartAddress;
using quillboxd::PartAddress;

using Verdict = AddressSigner::Verdict;

const std::string someSignature(64, 'a');

TEST(SignedAddressTest, APartAddressIsReadBackAsItWasWritten) {
    const AddressSigner signer("key");
    const auto address = parsePartAddress(signer.part(12, 3, 1000));
    ASSERT_TRUE(address);
    EXPECT_EQ(address->file, 12);
    EXPECT_EQ(address->number, 3);
    EXPECT_EQ(address->expires, 1000 + AddressSigner::lifetimeSeconds);
    EXPECT_EQ(signer.check(*address, 1000), Verdict::valid);
}

TEST(SignedAddressTest, AContentAddressIsReadBackAsItWasWritten) {
    const AddressSigner signer("key");
    for (const auto& written : {ContentAddress{.file = 12}, ContentAddress{.file = 12, .inlineView = true},
                                ContentAddress{.file = 12, .revision = 5},
                                ContentAddress{.file = 12, .revision = 5, .inlineView = true}}) {
        auto address = parseContentAddress(signer.content(written, 1000));
        ASSERT_TRUE(address);
        EXPECT_EQ(address->expires, 1000 + AddressSigner::lifetimeSeconds);
        EXPECT_EQ(signer.check(*address, 1000), Verdict::valid);
        address->expires = 0;
        address->signature.clear();
        EXPECT_EQ(*address, written);
    }
}

TEST(SignedAddressTest, AnAddressForAVisitorNamesItsLink) {
    const AddressSigner signer("key");
    auto address =
        parseContentAddress(signer.content({.file = 12, .share = 7, .inlineView = true}, 1000)).value();
    EXPECT_EQ(address.file, 12);
    EXPECT_EQ(address.share, 7);
    EXPECT_TRUE(address.inlineView);
    EXPECT_EQ(signer.check(address, 1000), Verdict::valid);
    address.share = 0;
    EXPECT_EQ(signer.check(address, 1000), Verdict::altered);
}

TEST(SignedAddressTest, AnAddressLastsToItsLastSecond) {
    const AddressSigner signer("key");
    const auto address = parsePartAddress(signer.part(12, 3, 1000)).value();
    EXPECT_EQ(signer.check(address, address.expires), Verdict::valid);
    EXPECT_EQ(signer.check(address, address.expires + 1), Verdict::expired);
}

TEST(SignedAddressTest, EveryChangedFieldBreaksTheSignature) {
    const AddressSigner signer("key");
    const auto address = parsePartAddress(signer.part(12, 3, 1000)).value();
    auto other = address;
    other.file = 13;
    EXPECT_EQ(signer.check(other, 1000), Verdict::altered);
    other = address;
    other.number = 4;
    EXPECT_EQ(signer.check(other, 1000), Verdict::altered);
    other = address;
    ++other.expires;
    EXPECT_EQ(signer.check(other, 1000), Verdict::altered);
    other = address;
    other.signature = someSignature;
    EXPECT_EQ(signer.check(other, 1000), Verdict::altered);
    EXPECT_EQ(AddressSigner("another key").check(address, 1000), Verdict::altered);
}

TEST(SignedAddressTest, ASignatureOfContentOpensNoPart) {
    const AddressSigner signer("key");
    const auto content = parseContentAddress(signer.content({.file = 12}, 1000)).value();
    const PartAddress part{12, 1, content.expires, content.signature};
    EXPECT_EQ(signer.check(part, 1000), Verdict::altered);
}

TEST(SignedAddressTest, WhatTheServiceNeverWritesIsNoAddress) {
    const auto tail = "&signature=" + someSignature;
    for (const auto& text : {
             std::string(),
             std::string("/_part/"),
             std::string("/_part/1/2"),
             "/_part/1/2?expires=3" + std::string("&signature="),
             "/_part/01/2?expires=3" + tail,
             "/_part/+1/2?expires=3" + tail,
             "/_part/-1/2?expires=3" + tail,
             "/_part/1/0?expires=3" + tail,
             "/_part/1/2?expires=99999999999999999999" + tail,
             "/_part/1/2?expires=3" + tail + "&more=1",
             "/_part/1/2?expires=3" + tail + "a",
             "/_part/1/2?signature=" + someSignature + "&expires=3",
             "/_part/1/2?expires=3&signature=" + std::string(64, 'A'),
             "/_part/1/2/3?expires=3" + tail,
         }) {
        EXPECT_FALSE(parsePartAddress(text)) << text;
    }
    EXPECT_TRUE(parsePartAddress("/_part/1/2?expires=3" + tail));
    EXPECT_FALSE(parseContentAddress("/_content/1/attached?expires=3" + tail));
    EXPECT_FALSE(parseContentAddress("/_content/1/revision/0?expires=3" + tail));
    EXPECT_FALSE(parseContentAddress("/_content/1/share/?expires=3" + tail));
    EXPECT_FALSE(parseContentAddress("/_content/1/share/0?expires=3" + tail));
}

TEST(SignedAddressTest, TheSeedsOfTheFuzzTargetAreReadWithoutHarm) {
    int count = 0;
    for (const auto& seed :
         std::filesystem::directory_iterator(BASEAPI_SOURCE_DIR "/fuzz/seeds/part_address")) {
        std::ifstream stream(seed.path(), std::ios::binary);
        const std::string text{std::istreambuf_iterator<char>(stream), {}};
        const auto address = parsePartAddress(text);
        const bool named = seed.path().filename().string().starts_with("valid");
        EXPECT_EQ(address.has_value(), named) << seed.path();
        ++count;
    }
    EXPECT_GT(count, 5);
}

}  // namespace
}  // namespace quillboxd_test
