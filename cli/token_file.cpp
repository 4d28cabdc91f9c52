#include "cli/token_file.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <fstream>
#include <system_error>
#include <utility>

#include "cli/problems.h"

namespace quillbox {
namespace {

// How often the file is looked at where the system tells nothing of its changes.
constexpr int lookEveryMilliseconds = 500;

bool sameVersion(const struct stat& left, const struct stat& right) {
    return left.st_dev == right.st_dev && left.st_ino == right.st_ino && left.st_size == right.st_size &&
           left.st_mtim.tv_sec == right.st_mtim.tv_sec && left.st_mtim.tv_nsec == right.st_mtim.tv_nsec;
}

}  // namespace

std::optional<std::string> firstLine(const std::filesystem::path& file) {
    std::error_code ignored;
    if (std::filesystem::is_directory(file, ignored)) return std::nullopt;
    std::ifstream stream(file, std::ios::binary);
    if (!stream) return std::nullopt;
    std::string line;
    std::getline(stream, line);
    if (stream.bad()) return std::nullopt;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    return line;
}

TokenFile::TokenFile(std::filesystem::path file, std::function<void(const std::string&)> changed)
    : file_(std::move(file)), changed_(std::move(changed)) {
    // The watch stands before the first look, so no change falls in between.
    notify_ = ::inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
    if (notify_ >= 0) {
        watchFolder(file_.has_parent_path() ? file_.parent_path() : ".");
        std::error_code ignored;
        if (const auto target = std::filesystem::canonical(file_, ignored); !target.empty())
            watchFolder(target.parent_path());
    }
    errno = 0;
    auto token = firstLine(file_);
    if (!token) {
        const auto why = errno != 0 ? std::generic_category().message(errno) : std::string("it is no file");
        if (notify_ >= 0) ::close(notify_);
        throw UsageError{"the token file " + file_.string() + " cannot be read (" + why +
                         "); name one that can, or use --token"};
    }
    ::stat(file_.c_str(), &seen_);
    initial_ = std::move(*token);
    last_ = initial_;
    stop_ = ::eventfd(0, EFD_CLOEXEC);
    thread_ = std::thread([this] { follow(); });
}

TokenFile::~TokenFile() {
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = ::write(stop_, &one, sizeof one);
    thread_.join();
    ::close(stop_);
    if (notify_ >= 0) ::close(notify_);
}

void TokenFile::watchFolder(const std::filesystem::path& folder) const {
    // Only whole contents: a file that is being written is not looked at before it is closed.
    ::inotify_add_watch(notify_, folder.c_str(), IN_CLOSE_WRITE | IN_MOVED_TO);
}

void TokenFile::follow() {
    std::array<pollfd, 2> entries{pollfd{stop_, POLLIN, 0}, pollfd{notify_, POLLIN, 0}};
    const int limit = notify_ < 0 ? lookEveryMilliseconds : -1;
    while (true) {
        if (::poll(entries.data(), entries.size(), limit) < 0 && errno != EINTR) return;
        if (entries[0].revents != 0) return;
        std::array<char, 4096> events;
        while (notify_ >= 0 && ::read(notify_, events.data(), events.size()) > 0) {
        }
        std::lock_guard lock(mutex_);
        if (const auto token = firstLine(file_)) handOver(*token);
    }
}

void TokenFile::look() {
    std::lock_guard lock(mutex_);
    struct stat now {};
    if (::stat(file_.c_str(), &now) != 0 || sameVersion(now, seen_)) return;
    const auto token = firstLine(file_);
    // An empty file may be one that is being written: its end is told when it has come.
    if (!token || token->empty()) return;
    seen_ = now;
    handOver(*token);
}

void TokenFile::handOver(const std::string& token) {
    if (token == last_) return;
    last_ = token;
    changed_(token);
}

}  // namespace quillbox
