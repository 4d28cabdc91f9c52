#include "baseapi/transfer/proof_code_calculator.h"

#include <gmock/gmock.h>

#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/temporary_folder.h"
#include "tests/support/test_platform.h"

namespace baseapi {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

class ProofCodeTest : public testing::Test {
  protected:
    URL fileOf(const std::string& content) const {
        std::ofstream(folder_ / "file", std::ios::binary) << content;
        return URL::file(folder_ / "file");
    }
    /// A file of that size with the eight bytes "01234567" at `offset`.
    URL sparseFile(std::int64_t size, std::int64_t offset) const {
        std::ofstream file(folder_ / "sparse", std::ios::binary);
        file.seekp(offset);
        file << "01234567";
        file.close();
        std::error_code error;
        std::filesystem::resize_file(folder_ / "sparse", static_cast<std::uintmax_t>(size), error);
        if (error || !file) return URL::file("");
        return URL::file(folder_ / "sparse");
    }

    test_support::TemporaryFolder folder_;
};

/// A token that was searched for since it names a byte that a sparse file can have.
constexpr std::string_view nearToken = "token-30479549";
constexpr std::int64_t nearPlace = 92712892683;

// The token names byte 6439965407170722022 ("") or 1782910411171137486 ("token"), modulo the size.

TEST_F(ProofCodeTest, HashesTheEightBytesThatTheTokenNames) {
    std::string content;
    for (int i = 0; i < 1024; ++i) content += static_cast<char>(i);
    const auto file = fileOf(content);
    EXPECT_EQ(ProofCodeCalculator::calcProofCode("", file),
              "8b4e292c9d814d3982acbb232ed554e8514cde5d6ce9bd022a995834be4c38f4");
    EXPECT_EQ(ProofCodeCalculator::calcProofCode("token", file),
              "d4d45568a638b7c8dcc6f00137488dd92f6cd45093f8aad044f4d923f5d1c8bf");
}

TEST_F(ProofCodeTest, HashesFewerBytesAtTheEndOfTheFile) {
    const auto file = fileOf("hello, world");
    EXPECT_EQ(ProofCodeCalculator::calcProofCode("", file),  // "ld", at 10
              "e5a08ffd3d7509c66e79642edbdcd8ed889269a7164c718afca541304188423d");
    EXPECT_EQ(ProofCodeCalculator::calcProofCode("token", file),  // " world", at 6
              "045f13dd864bafaad0dd977ac971de549b090cb2836f061d0779b26dd9bb8f4b");
}

TEST_F(ProofCodeTest, HashesAFileShorterThanEightBytesFromTheNamedByteToItsEnd) {
    EXPECT_EQ(ProofCodeCalculator::calcProofCode("", fileOf("a")),
              "ca978112ca1bbdcafac231b39a23dc4da786eff8147c4e72b9807785afee48bb");
    EXPECT_EQ(ProofCodeCalculator::calcProofCode("", fileOf("abcdefg")),  // "bcdefg"
              "43edef5220ae3ad71899cd358452c1f0a16ac40bbb60972fb3e2fde59f0677f0");
}

TEST_F(ProofCodeTest, TakesThePlaceAsItIsInAFileThatIsLongEnough) {
    const auto file = sparseFile(nearPlace + 1000, nearPlace);
    if (file.text().empty()) GTEST_SKIP() << "no sparse files here";
    EXPECT_EQ(ProofCodeCalculator::calcProofCode(nearToken, file),
              "924592b9b103f14f833faafb67f480691f01988aa457c0061769f58cd47311bc");
}

TEST_F(ProofCodeTest, HashesFewerBytesWhereThePlaceLiesWithinTheLastSeven) {
    const auto file = sparseFile(nearPlace + 3, nearPlace);
    if (file.text().empty()) GTEST_SKIP() << "no sparse files here";
    EXPECT_EQ(ProofCodeCalculator::calcProofCode(nearToken, file),
              "bf6aaaab7c143ca12ae448c69fb72bb4cf1b29154b9086a927a0a91ae334cdf7");
}

TEST_F(ProofCodeTest, HashesNoBytesWhereThePlaceIsTheEndOfTheFile) {
    const auto file = sparseFile(nearPlace, nearPlace);
    if (file.text().empty()) GTEST_SKIP() << "no sparse files here";
    EXPECT_EQ(ProofCodeCalculator::calcProofCode(nearToken, file),
              "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
}

TEST_F(ProofCodeTest, IsTheSameEachTimeAndAnotherForAnotherToken) {
    const auto file = fileOf("hello, world");
    EXPECT_EQ(ProofCodeCalculator::calcProofCode("token", file),
              ProofCodeCalculator::calcProofCode("token", file));
    EXPECT_NE(ProofCodeCalculator::calcProofCode("token", file),
              ProofCodeCalculator::calcProofCode("other", file));
}

TEST_F(ProofCodeTest, IsAbsentForAFileThatCannotBeOpened) {
    auto& log = test_support::recordingLog();
    log.clear();
    EXPECT_FALSE(ProofCodeCalculator::calcProofCode("token", URL::file(folder_ / "missing")));
    EXPECT_THAT(log.lines(), ElementsAre("calcProofCode exception: " + (folder_ / "missing").string() +
                                         ": No such file or directory"));
}

TEST_F(ProofCodeTest, IsAbsentForAFolder) {
    auto& log = test_support::recordingLog();
    log.clear();
    EXPECT_FALSE(ProofCodeCalculator::calcProofCode("token", URL::file(folder_.path())));
    EXPECT_THAT(log.lines(), ElementsAre(StartsWith("calcProofCode exception: ")));
}

TEST_F(ProofCodeTest, IsAbsentForATokenThatIsNotUTF8) {
    auto& log = test_support::recordingLog();
    log.clear();
    EXPECT_FALSE(ProofCodeCalculator::calcProofCode("\xff", fileOf("a")));
    EXPECT_THAT(log.lines(), ElementsAre("calcProofCode exception: 哈希计算失败"));
}

TEST_F(ProofCodeTest, MayBeCalledFromSeveralThreads) {
    const auto file = fileOf("hello, world");
    std::vector<std::optional<std::string>> codes(4);
    std::vector<std::thread> threads;
    for (auto& code : codes)
        threads.emplace_back([&] { code = ProofCodeCalculator::calcProofCode("token", file); });
    for (auto& thread : threads) thread.join();
    for (const auto& code : codes) EXPECT_EQ(code, codes.front());
}

TEST_F(ProofCodeTest, ErrorsHaveTheirWords) {
    EXPECT_EQ(localizedDescription(ProofCodeError::hashError), "哈希计算失败");
    EXPECT_EQ(localizedDescription(ProofCodeError::invalidHashLength), "哈希长度无效");
    EXPECT_EQ(localizedDescription(ProofCodeError::fileError), "文件操作失败");
}

using ProofCodeDeathTest = ProofCodeTest;

TEST_F(ProofCodeDeathTest, EndsTheProcessForAnEmptyFile) {
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_DEATH(ProofCodeCalculator::calcProofCode("token", fileOf("")), "division by zero");
}

}  // namespace
}  // namespace baseapi
