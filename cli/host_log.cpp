#include "cli/host_log.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <string>
#include <system_error>
#include <vector>

#include "cli/problems.h"
#include "cli/stream.h"

namespace quillbox {
namespace {

constexpr mode_t ownerAlone = 0600;

/// Also where the file is older than this program's interest in it.
void keepPrivate(int descriptor) {
    struct stat status {};
    if (::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) && (status.st_mode & 077) != 0)
        ::fchmod(descriptor, ownerAlone);
}

/// Leaves out of `pieces` what has been written.
void advance(std::vector<iovec>& pieces, std::size_t& first, std::size_t written) {
    while (first < pieces.size() && written >= pieces[first].iov_len) written -= pieces[first++].iov_len;
    if (first == pieces.size()) return;
    pieces[first].iov_base = static_cast<char*>(pieces[first].iov_base) + written;
    pieces[first].iov_len -= written;
}

bool endsWithin(std::string_view piece) {
    return piece.find_first_of("\r\n") != piece.npos;
}

/// The line with its inner line ends spelled out: an answer must not look like further lines of the log.
std::string inOneLine(std::span<const std::string_view> pieces) {
    std::string line;
    for (const auto piece : pieces)
        for (const char character : piece) {
            if (character == '\n')
                line += "\\n";
            else if (character == '\r')
                line += "\\r";
            else
                line += character;
        }
    return line;
}

thread_local bool unwritten = false;

}  // namespace

HostLog::Unwritten::Unwritten() {
    unwritten = true;
}

HostLog::Unwritten::~Unwritten() {
    unwritten = false;
}

HostLog::HostLog(const std::string& destination) {
    if (destination == "-") {
        descriptor_ = STDERR_FILENO;
        return;
    }
    descriptor_ =
        ::open(destination.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOCTTY, ownerAlone);
    if (descriptor_ < 0)
        throw UsageError{"the log " + destination + " cannot be written (" +
                         std::generic_category().message(errno) + "); give a file that can, or -"};
    owned_ = true;
    keepPrivate(descriptor_);
}

HostLog::~HostLog() {
    if (owned_) ::close(descriptor_);
}

void HostLog::line(std::span<const std::string_view> pieces) noexcept {
    reader_(pieces);
    if (descriptor_ < 0 || unwritten) return;
    if (std::any_of(pieces.begin(), pieces.end(), endsWithin)) {
        const auto line = inOneLine(pieces);
        const std::string_view whole = line;
        write({&whole, 1});
    } else {
        write(pieces);
    }
}

void HostLog::write(std::span<const std::string_view> pieces) {
    static char lineEnd = '\n';
    std::vector<iovec> rest;
    rest.reserve(pieces.size() + 1);
    for (const auto piece : pieces)
        rest.push_back({const_cast<char*>(piece.data()), piece.size()});  // writev only reads
    rest.push_back({&lineEnd, 1});

    std::lock_guard lock(mutex_);
    for (std::size_t first = 0; first < rest.size();) {
        const auto count = std::min<std::size_t>(rest.size() - first, IOV_MAX);
        const auto written = ::writev(descriptor_, &rest[first], static_cast<int>(count));
        if (written >= 0)
            advance(rest, first, static_cast<std::size_t>(written));
        else if (errno == EAGAIN)
            waitForRoom(descriptor_);
        else if (errno != EINTR)
            return;  // a log that cannot be written must not stop the work
    }
}

}  // namespace quillbox
