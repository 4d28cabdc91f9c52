#include "hostkit/slice_file.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

// The deprecated interface is the one that can go on from a given state.
#define OPENSSL_SUPPRESS_DEPRECATED
#include <openssl/sha.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <thread>
#include <vector>

#include "baseapi/json/codec.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/without_root_rights.h"

namespace {

using baseapi::Sha256Result;
using baseapi::URL;
using hostkit::SliceFile;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::int64_t mebibyte = 1 << 20;

std::string patternOf(std::size_t size) {
    std::string bytes(size, '\0');
    std::uint32_t state = 1;
    for (auto& byte : bytes) byte = static_cast<char>((state = state * 1664525 + 1013904223) >> 24);
    return bytes;
}

std::string hexOf(const unsigned char* digest) {
    std::string text;
    for (int index = 0; index < SHA256_DIGEST_LENGTH; ++index) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02x", digest[index]);
        text += digits;
    }
    return text;
}

class SliceFileTest : public testing::Test {
  protected:
    std::filesystem::path write(const std::string& name, std::string_view content) const {
        const auto file = folder_ / name;
        std::ofstream(file, std::ios::binary) << content;
        return file;
    }
    std::optional<std::string> text(const std::filesystem::path& file) {
        return slicer_.calcSha256(URL::file(file));
    }
    Sha256Result sliced(const std::filesystem::path& file) const {
        return std::get<Sha256Result>(slicer_.slice(file));
    }
    std::string refusal(const std::filesystem::path& file) const {
        return std::get<SliceFile::Refusal>(slicer_.slice(file)).why;
    }

    test_support::TemporaryFolder folder_;
    SliceFile slicer_;
};

TEST_F(SliceFileTest, TheTextOfASmallFileIsOneSha256Result) {
    EXPECT_EQ(
        text(write("a.txt", "abc")),
        R"({"mimeType":"text/plain","size":3,)"
        R"("hash":"ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad",)"
        R"("parts":[{"partNumber":1,"partOffset":0,"partSize":3,)"
        R"("hashCtx":[1779033703,3144134277,1013904242,2773480762,1359893119,2600822924,528734635,1541459225]}]})");
}

TEST_F(SliceFileTest, AnEmptyFileHasTheHashOfNothingAndNoParts) {
    EXPECT_EQ(text(write("empty", "")),
              R"({"mimeType":"application/octet-stream","size":0,)"
              R"("hash":"e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855","parts":[]})");
}

TEST_F(SliceFileTest, PartsFollowEachOtherAndTheLastOneIsAsLongAsTheRest) {
    const auto result = sliced(write("big.bin", std::string(16 * mebibyte + 1, 'x')));
    ASSERT_THAT(result.parts, SizeIs(3));
    for (std::size_t index = 0; index < 3; ++index) {
        EXPECT_EQ(result.parts[index].partNumber, static_cast<std::int64_t>(index) + 1);
        EXPECT_EQ(result.parts[index].partOffset, static_cast<std::int64_t>(index) * 8 * mebibyte);
    }
    EXPECT_EQ(result.parts[1].partSize, 8 * mebibyte);
    EXPECT_EQ(result.parts[2].partSize, 1);
    EXPECT_EQ(result.size, 16 * mebibyte + 1);
}

TEST_F(SliceFileTest, AFileOfExactlyOnePartHasOnePart) {
    EXPECT_THAT(sliced(write("one", std::string(8 * mebibyte, 'x'))).parts, SizeIs(1));
}

TEST_F(SliceFileTest, FromTheStateBeforeAPartTheRestOfTheFileGivesTheHashOfTheWhole) {
    const auto content = patternOf(16 * mebibyte + 12345);
    const auto result = sliced(write("pattern", content));
    unsigned char whole[SHA256_DIGEST_LENGTH];
    SHA256(reinterpret_cast<const unsigned char*>(content.data()), content.size(), whole);
    ASSERT_EQ(result.hash, hexOf(whole));

    for (const auto& part : result.parts) {
        SHA256_CTX context;
        SHA256_Init(&context);
        std::copy(part.hashCtx->begin(), part.hashCtx->end(), context.h);
        context.Nl = static_cast<SHA_LONG>(part.partOffset * 8);
        const auto offset = static_cast<std::size_t>(part.partOffset);
        SHA256_Update(&context, content.data() + offset, content.size() - offset);
        unsigned char digest[SHA256_DIGEST_LENGTH];
        SHA256_Final(digest, &context);
        EXPECT_EQ(hexOf(digest), result.hash) << "part " << part.partNumber;
    }
}

TEST_F(SliceFileTest, PartsAreFewForSmallFilesAndNeverMoreThanTenThousand) {
    for (const std::int64_t size :
         {std::int64_t{1}, mebibyte, 8 * mebibyte, 1024 * mebibyte, 10'000 * 8 * mebibyte,
          10'000 * 8 * mebibyte + 1, std::int64_t{1} << 40, std::int64_t{1} << 50, INT64_MAX}) {
        const auto part = SliceFile::partSize(size);
        EXPECT_EQ(part % 64, 0) << size;
        EXPECT_LE(size / part + (size % part != 0), 10'000) << size;
    }
    EXPECT_EQ(SliceFile::partSize(0), 8 * mebibyte);
    EXPECT_EQ(SliceFile::partSize(10'000 * 8 * mebibyte), 8 * mebibyte);
    EXPECT_EQ(SliceFile::partSize(10'000 * 8 * mebibyte + 1), 9 * mebibyte);
}

TEST_F(SliceFileTest, TheNameOfAFileMayBeOfAnyBytes) {
    for (const auto* name : {"new\nline", "\xff\xfe", "\"quoted\"", "中文.pdf", "-"})
        EXPECT_TRUE(text(write(name, "x"))) << name;
}

TEST_F(SliceFileTest, ALinkToAFileIsTheFile) {
    std::filesystem::create_symlink(write("target", "abc"), folder_ / "link");
    EXPECT_EQ(sliced(folder_ / "link").hash, sliced(folder_ / "target").hash);
}

TEST_F(SliceFileTest, WhatIsNoRegularFileGivesNothingAndIsNotWaitedFor) {
    ASSERT_EQ(::mkfifo((folder_ / "fifo").c_str(), 0600), 0);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, (folder_ / "socket").c_str(), sizeof address.sun_path - 1);
    ASSERT_EQ(::bind(socket, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    std::filesystem::create_symlink("nowhere", folder_ / "dangling");
    std::filesystem::create_symlink("loop", folder_ / "loop");

    for (const auto* name : {"fifo", "socket", "dangling", "loop", "missing", ""})
        EXPECT_EQ(text(folder_ / name), std::nullopt) << name;
    EXPECT_EQ(text("/dev/null"), std::nullopt);
    EXPECT_EQ(text("/proc/self/status"), std::nullopt) << "its size says nothing of its content";
    ::close(socket);
}

TEST_F(SliceFileTest, AnAddressThatIsNoFilesGivesNothing) {
    EXPECT_EQ(slicer_.calcSha256(URL("https://example.org/a")), std::nullopt);
}

TEST_F(SliceFileTest, TheReasonOfARefusalIsTold) {
    std::string told;
    SliceFile slicer(
        {[&](const auto& file, const auto& why) { told = file.filename().string() + ": " + why; }, {}});
    EXPECT_FALSE(slicer.calcSha256(URL::file(folder_ / "missing")));
    EXPECT_EQ(told, "missing: No such file or directory");
    EXPECT_EQ(refusal(folder_.path()), "a folder");
    EXPECT_EQ(refusal("/dev/null"), "no regular file");
}

TEST_F(SliceFileTest, AFileThatMayNotBeReadGivesNothing) {
    const auto file = write("secret", "x");
    ASSERT_EQ(::chmod(file.c_str(), 0), 0);
    std::string why;
    test_support::withoutRootRights([&] { why = refusal(file); });
    EXPECT_EQ(why, "Permission denied");
}

class ChangingFileTest : public SliceFileTest {
  protected:
    /// Slices a file of 3 MiB and makes the change once, in the middle.
    SliceFile::Result slicedWhile(const std::function<void(const std::filesystem::path&)>& change) {
        const auto file = write("changing", std::string(3 * mebibyte, 'x'));
        bool changed = false;
        SliceFile slicer({{}, [&](std::int64_t done, std::int64_t) {
                              if (!changed && done >= mebibyte) change(file);
                              changed = done >= mebibyte;
                          }});
        return slicer.slice(file);
    }
    static std::string whyOf(const SliceFile::Result& result) {
        return std::get<SliceFile::Refusal>(result).why;
    }
    static constexpr const char* changedText = "the file changed while it was read";
};

TEST_F(ChangingFileTest, AFileThatGrowsGivesNothing) {
    EXPECT_EQ(whyOf(slicedWhile([](const auto& file) { std::ofstream(file, std::ios::app) << "more"; })),
              changedText);
}

TEST_F(ChangingFileTest, ASmallFileThatGrowsGivesNothing) {
    const auto file = write("small", "four");
    const SliceFile slicer(
        {{}, [&](std::int64_t, std::int64_t) { std::ofstream(file, std::ios::app) << "more"; }});
    EXPECT_EQ(whyOf(slicer.slice(file)), changedText);
}

TEST_F(ChangingFileTest, AFileThatHoldsMoreThanItsSizeGivesNothing) {
    ASSERT_EQ(std::filesystem::file_size("/proc/self/status"), 0u);
    EXPECT_EQ(whyOf(SliceFile().slice("/proc/self/status")), changedText);
}

TEST_F(ChangingFileTest, AFileThatShrinksGivesNothing) {
    EXPECT_EQ(whyOf(slicedWhile([](const auto& file) { std::filesystem::resize_file(file, 2 * mebibyte); })),
              changedText);
}

TEST_F(ChangingFileTest, AFileThatIsOverwrittenWithTheSameLengthGivesNothing) {
    EXPECT_EQ(whyOf(slicedWhile([](const auto& file) {
                  std::fstream(file, std::ios::in | std::ios::out | std::ios::binary) << "y";
              })),
              changedText);
}

TEST_F(ChangingFileTest, AFileThatStaysAsItIsGivesItsHash) {
    EXPECT_TRUE(std::holds_alternative<Sha256Result>(slicedWhile([](const auto&) {})));
}

TEST_F(SliceFileTest, StopEndsTheFileThatIsBeingReadAndAllLaterOnes) {
    const auto file = write("long", std::string(4 * mebibyte, 'x'));
    SliceFile* running = nullptr;
    std::int64_t last = 0;
    SliceFile slicer({{}, [&](std::int64_t done, std::int64_t) {
                          last = done;
                          running->stop();
                      }});
    running = &slicer;
    EXPECT_FALSE(slicer.calcSha256(URL::file(file)));
    EXPECT_LT(last, 4 * mebibyte);
    EXPECT_FALSE(slicer.calcSha256(URL::file(write("small", "x"))));
}

TEST_F(SliceFileTest, SeveralThreadsSliceAtOnce) {
    const auto first = write("first", patternOf(3 * mebibyte));
    const auto second = write("second", patternOf(2 * mebibyte));
    const auto wantedFirst = sliced(first).hash;
    const auto wantedSecond = sliced(second).hash;
    std::vector<std::thread> threads;
    for (int index = 0; index < 4; ++index)
        threads.emplace_back([&, index] {
            EXPECT_EQ(sliced(index % 2 ? first : second).hash, index % 2 ? wantedFirst : wantedSecond);
        });
    for (auto& thread : threads) thread.join();
}

}  // namespace
