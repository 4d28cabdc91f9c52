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

// In milliseconds: how often the file is looked at where the system tells nothing of its changes.
constexpr int usualPause = 500;

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
    const bool watched = watch();
    ::stat(file_.c_str(), &seen_);
    errno = 0;
    const auto token = firstLine(file_);
    if (!token) {
        const auto why = errno != 0 ? std::generic_category().message(errno) : std::string("it is no file");
        if (notify_ >= 0) ::close(notify_);
        throw UsageError{"the token file " + file_.string() + " cannot be read (" + why +
                         "); name one that can, or use --token"};
    }
    last_ = *token;
    changed_(last_);
    stop_ = ::eventfd(0, EFD_CLOEXEC);
    thread_ = std::thread([this, limit = watched ? -1 : usualPause] { follow(limit); });
}

TokenFile::~TokenFile() {
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = ::write(stop_, &one, sizeof one);
    thread_.join();
    ::close(stop_);
    if (notify_ >= 0) ::close(notify_);
}

/// False where the system will not tell of all changes.
bool TokenFile::watch() const {
    if (notify_ < 0 || !watchFolder(file_.has_parent_path() ? file_.parent_path() : ".")) return false;
    std::error_code ignored;
    const auto target = std::filesystem::canonical(file_, ignored);
    return target.empty() || watchFolder(target.parent_path());
}

bool TokenFile::watchFolder(const std::filesystem::path& folder) const {
    return ::inotify_add_watch(notify_, folder.c_str(), IN_CLOSE_WRITE | IN_MOVED_TO) >= 0;
}

void TokenFile::follow(int lookEveryMilliseconds) {
    std::array<pollfd, 2> entries{pollfd{stop_, POLLIN, 0}, pollfd{notify_, POLLIN, 0}};
    while (true) {
        if (::poll(entries.data(), entries.size(), lookEveryMilliseconds) < 0 && errno != EINTR) return;
        if (entries[0].revents != 0) return;
        std::array<char, 4096> events;
        while (notify_ >= 0 && ::read(notify_, events.data(), events.size()) > 0) {
        }
        // Two changes may fall into one tick of the file's clock, so its times are not asked.
        std::lock_guard lock(mutex_);
        if (struct stat now{}; ::stat(file_.c_str(), &now) == 0) read(now);
    }
}

void TokenFile::look() {
    std::lock_guard lock(mutex_);
    struct stat now {};
    if (::stat(file_.c_str(), &now) == 0 && !sameVersion(now, seen_)) read(now);
}

void TokenFile::read(const struct stat& now) {
    const auto token = firstLine(file_);
    // An empty file may be one that is being written: its end is told when it has come.
    if (!token || token->empty()) return;
    seen_ = now;
    if (*token == last_) return;
    last_ = *token;
    changed_(last_);
}

}  // namespace quillbox
