#include "quillboxd/crypto/sha256.h"

#include <gtest/gtest.h>

#include "quillboxd/crypto/proof_code.h"
#include "tests/quillboxd/service_fixture.h"

namespace quillboxd_test {
namespace {

using quillboxd::hex;
using quillboxd::proofRange;
using quillboxd::Sha256;

TEST(Sha256Test, HashesWhatThePublishedExamplesSay) {
    EXPECT_EQ(sha256Hex(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(sha256Hex("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
}

TEST(Sha256Test, StartsFromTheStateWordsOfTheStandard) {
    const Sha256::State start{0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                              0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
    EXPECT_EQ(Sha256().state(), start);
}

TEST(Sha256Test, GoesOnFromAStateAsIfItHadReadTheBytesBefore) {
    const auto bytes = someBytes(1000);
    Sha256 first;
    first.update(bytes.substr(0, 640));
    auto second = Sha256::resume(first.state(), 640);
    second.update(bytes.substr(640));
    EXPECT_EQ(hex(second.digest()), sha256Hex(bytes));
}

TEST(Sha256Test, KeepsCountBeyondFourGigabytes) {
    constexpr std::uint64_t far = std::uint64_t{5} << 30;
    auto straight = Sha256::resume(Sha256().state(), far);
    straight.update(std::string(64, 'x'));
    straight.update("end");
    auto resumed = Sha256::resume(straight.state(), far + 64);
    resumed.update("end");
    EXPECT_EQ(hex(straight.digest()), hex(resumed.digest()));
    EXPECT_NE(hex(resumed.digest()), hex(Sha256::resume(straight.state(), 64).digest()));
}

TEST(ProofRangeTest, TakesEightBytesAtThePlaceThatTheTokenGives) {
    EXPECT_EQ(proofRange("", 1000).offset, 22);
    EXPECT_EQ(proofRange("", 1000).length, 8);
    EXPECT_EQ(proofRange("token", 3'000'000).offset, 1'137'486);
}

TEST(ProofRangeTest, StaysInsideAFileOfLessThanEightBytes) {
    for (int number = 0; number < 100; ++number) {
        const auto range = proofRange("token" + std::to_string(number), 5);
        EXPECT_GE(range.offset, 0);
        EXPECT_LT(range.offset, 5);
        EXPECT_EQ(range.length, 5 - range.offset);
    }
}

}  // namespace
}  // namespace quillboxd_test
