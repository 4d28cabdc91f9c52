#include "hostkit/slice_file.h"

// The state words of a hash under way are visible in the low-level interface alone, which this version of the
// library marks as deprecated.
#define OPENSSL_SUPPRESS_DEPRECATED
#include <fcntl.h>
#include <openssl/sha.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>
#include <system_error>
#include <utility>
#include <vector>

#include "baseapi/json/codec.h"
#include "baseapi/transfer/file_info_util.h"

namespace hostkit {
namespace {

constexpr std::int64_t mebibyte = 1 << 20;
constexpr std::int64_t usualPartSize = 8 * mebibyte;
constexpr std::int64_t mostParts = 10'000;
// Half of what a core's second-level cache holds: the hash reads what the read has just written. Every part
// begins at a multiple of it.
constexpr std::size_t chunkSize = 256 * 1024;
constexpr const char* changed = "the file changed while it was read";
constexpr const char* stoppedText = "the work was stopped";

/// Ends a reading; becomes the refusal.
struct Refused {
    std::string why;
};

[[noreturn]] void refuseWithError() {
    throw Refused{std::generic_category().message(errno)};
}

class File {
  public:
    explicit File(const std::filesystem::path& path) {
        // Opening a FIFO would wait and opening a device may set it going, so the kind is looked at first.
        // What takes the file's place in between meets a read that does not wait.
        struct stat before {};
        if (::stat(path.c_str(), &before) != 0) refuseWithError();
        requireRegular(before);
        descriptor_ = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
        if (descriptor_ < 0) refuseWithError();
        try {
            first_ = status();
            requireRegular(first_);
        } catch (...) {
            ::close(descriptor_);
            throw;
        }
        if (first_.st_size > static_cast<std::int64_t>(chunkSize))
            ::posix_fadvise(descriptor_, 0, 0, POSIX_FADV_SEQUENTIAL);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File() { ::close(descriptor_); }

    std::int64_t size() const { return first_.st_size; }

    /// Fills `buffer` as far as the file goes; what is not filled is behind its end.
    std::size_t read(char* buffer, std::size_t length) const {
        std::size_t filled = 0;
        while (filled < length) {
            const auto count = ::read(descriptor_, buffer + filled, length - filled);
            if (count == 0) break;
            if (count > 0) filled += static_cast<std::size_t>(count);
            if (count < 0 && errno != EINTR) refuseWithError();
        }
        return filled;
    }

    void requireUnchanged() const {
        const auto last = status();
        const auto same = [](const timespec& left, const timespec& right) {
            return left.tv_sec == right.tv_sec && left.tv_nsec == right.tv_nsec;
        };
        if (last.st_size != first_.st_size || !same(last.st_mtim, first_.st_mtim) ||
            !same(last.st_ctim, first_.st_ctim))
            throw Refused{changed};
    }

  private:
    static void requireRegular(const struct stat& status) {
        if (!S_ISREG(status.st_mode)) throw Refused{S_ISDIR(status.st_mode) ? "a folder" : "no regular file"};
    }
    struct stat status() const {
        struct stat now {};
        if (::fstat(descriptor_, &now) != 0) refuseWithError();
        return now;
    }

    int descriptor_ = -1;
    struct stat first_ {};
};

std::string hexadecimal(const std::array<unsigned char, SHA256_DIGEST_LENGTH>& digest) {
    constexpr char digits[] = "0123456789abcdef";
    std::string text;
    text.reserve(2 * digest.size());
    for (const unsigned char byte : digest) {
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    return text;
}

/// The hash under way and the parts that have begun.
class Slicing {
  public:
    explicit Slicing(std::int64_t size) : size_(size), partSize_(SliceFile::partSize(size)) {
        SHA256_Init(&hash_);
        parts_.reserve(static_cast<std::size_t>((size + partSize_ - 1) / partSize_));
    }

    std::int64_t done() const { return done_; }

    void add(const char* bytes, std::size_t length) {
        if (done_ % partSize_ == 0) beginPart();
        SHA256_Update(&hash_, bytes, length);
        done_ += static_cast<std::int64_t>(length);
    }

    baseapi::Sha256Result finish(std::string mimeType) {
        std::array<unsigned char, SHA256_DIGEST_LENGTH> digest{};
        SHA256_Final(digest.data(), &hash_);
        baseapi::Sha256Result result;
        result.mimeType = std::move(mimeType);
        result.size = size_;
        result.hash = hexadecimal(digest);
        result.parts = std::move(parts_);
        return result;
    }

  private:
    void beginPart() {
        baseapi::PartInfo part;
        part.partNumber = static_cast<std::int64_t>(parts_.size()) + 1;
        part.partOffset = done_;
        part.partSize = std::min(partSize_, size_ - done_);
        part.hashCtx.emplace(std::begin(hash_.h), std::end(hash_.h));
        parts_.push_back(std::move(part));
    }

    const std::int64_t size_;
    const std::int64_t partSize_;
    std::int64_t done_ = 0;
    SHA256_CTX hash_{};
    std::vector<baseapi::PartInfo> parts_;
};

}  // namespace

std::int64_t SliceFile::partSize(std::int64_t fileSize) {
    const auto forced = fileSize / mostParts + (fileSize % mostParts != 0 ? 1 : 0);
    return std::max(usualPartSize, (forced + mebibyte - 1) / mebibyte * mebibyte);
}

SliceFile::Result SliceFile::slice(const std::filesystem::path& path) const try {
    if (stopped_) return Refusal{stoppedText};
    const File file(path);
    Slicing slicing(file.size());
    // One byte more than the file has, so that a small one is read once to its end.
    const auto atOnce = static_cast<std::size_t>(std::min<std::int64_t>(chunkSize, file.size() + 1));
    const auto buffer = std::make_unique_for_overwrite<char[]>(atOnce);
    for (auto length = atOnce; length == atOnce;) {
        length = file.read(buffer.get(), atOnce);
        if (length == 0) break;
        if (stopped_) return Refusal{stoppedText};
        if (slicing.done() + static_cast<std::int64_t>(length) > file.size()) return Refusal{changed};
        slicing.add(buffer.get(), length);
        if (observers_.progress) observers_.progress(slicing.done(), file.size());
    }
    if (slicing.done() != file.size()) return Refusal{changed};
    file.requireUnchanged();
    return slicing.finish(baseapi::FileInfoUtil::mimeType(baseapi::URL::file(path).pathExtension()));
} catch (Refused& refused) {
    return Refusal{std::move(refused.why)};
}

std::optional<std::string> SliceFile::calcSha256(const baseapi::URL& of) {
    auto result = of.isFileURL() ? slice(of.path()) : Refusal{"no file's address"};
    if (const auto* sliced = std::get_if<baseapi::Sha256Result>(&result)) return baseapi::encode(*sliced);
    if (observers_.refused) observers_.refused(of.path(), std::get<Refusal>(result).why);
    return std::nullopt;
}

}  // namespace hostkit
