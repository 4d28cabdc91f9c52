#include "cli/upload_cause.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

#include "baseapi/api/files/records.h"
#include "baseapi/json/codec.h"

namespace quillbox {
namespace {

// A line of more bytes tells no cause: it is an answer with many parts.
constexpr std::size_t longestLine = 64 * 1024;

std::size_t lengthOf(std::span<const std::string_view> pieces) {
    std::size_t length = 0;
    for (const auto piece : pieces) length += piece.size();
    return length;
}

/// What follows `prefix`, where the line begins with it.
std::optional<std::string> behind(std::string_view line, std::string_view prefix) {
    if (!line.starts_with(prefix)) return std::nullopt;
    return std::string(line.substr(prefix.size()));
}

constexpr std::string_view createFailed = "filesCreateRequest failure code = ";
constexpr std::string_view completeFailed = "filesCompleteRequest failure code = ";
constexpr std::string_view created = "filesCreateRequest success resp = ";

/// Lines that say all in themselves: their beginning, and the words for people before what follows it.
struct Saying {
    std::string_view prefix;
    std::string_view words;
};
constexpr Saying sayings[] = {
    {"filesCreateRequest get sha256 nil", "its hash could not be computed"},
    {"Unable to convert JSON string to Data", "its hash could not be read"},
    {"JSON decoding failed: ", "its hash could not be read: "},
    {"获取文件大小失败: ", "its size cannot be read: "},
    {"filesCreateRequest success but change json error", "the service's answer cannot be kept"},
    {"文件打开失败: ", "it cannot be opened: "},
    {"UploadTask: onFailure ret = ", "a part could not be sent: "},
    {"UploadTask: IOException ", "a part cannot be read: "},
    {"UploadTask: file or uploadUrl is null", "the service gave no address for a part"},
    {"uploadProcessTask cancel", "it was cancelled"},
    {"file hasCancel", "it was cancelled"},
    {"VCardGenerator: Error generating VCF file - ", "the contacts cannot be written into a file: "},
    {"down file error = ", "the download broke: "},
    {"parseVCFFile error: ", "the file of the contacts cannot be read: "},
};

/// Whether a line that begins like this may be of interest, by its first bytes alone: most lines are not.
bool mayTell(std::string_view beginning) {
    const auto begins = [&](std::string_view prefix) {
        return beginning.substr(0, prefix.size()) == prefix.substr(0, beginning.size());
    };
    return begins(createFailed) || begins(completeFailed) || begins(created) ||
           begins("file create failed:") ||
           std::any_of(std::begin(sayings), std::end(sayings),
                       [&](const Saying& saying) { return begins(saying.prefix); });
}

/// The first bytes of a line.
class Beginning {
  public:
    explicit Beginning(std::span<const std::string_view> pieces) {
        for (const auto piece : pieces) {
            const auto count = std::min(piece.size(), bytes_.size() - length_);
            std::copy_n(piece.data(), count, bytes_.data() + length_);
            length_ += count;
        }
    }
    std::string_view view() const { return {bytes_.data(), length_}; }

  private:
    std::array<char, 64> bytes_;
    std::size_t length_ = 0;
};

}  // namespace

std::string failureText(const std::string& aim, std::int64_t code, const std::string& message) {
    const auto request = "the request " + (aim.starts_with("to ") ? "" : std::string("for ")) + aim;
    if (code != -1) return "the service refused " + aim + ": " + std::to_string(code) + " " + message;
    if (const auto why = behind(message, "request error "))
        return "the service did not answer " + request + ": " + *why;
    if (const auto status = behind(message, "response status code = "))
        return "the service refused " + aim + ": status " + *status;
    if (const auto why = behind(message, "str to bean error "))
        return "the service's answer to " + request + " cannot be understood: " + *why;
    if (message == "callRequest error: invalidURL")
        return request + " has no valid address (is the host right, as in https://cloud.example.org?)";
    if (message == "params build faild") return request + " cannot be built (is each name valid UTF-8?)";
    return "the service refused " + aim + ": " + message;
}

std::string refusalText(const std::string& aim, std::string_view codeAndMessage) {
    constexpr std::string_view between = ", msg = ";
    const auto end = std::min(codeAndMessage.find(between), codeAndMessage.size());
    const auto code = std::strtoll(std::string(codeAndMessage.substr(0, end)).c_str(), nullptr, 10);
    const auto message = codeAndMessage.substr(std::min(end + between.size(), codeAndMessage.size()));
    return failureText(aim, code, std::string(message));
}

std::string joinedLine(std::span<const std::string_view> pieces) {
    std::string line;
    line.reserve(lengthOf(pieces));
    for (const auto piece : pieces) line += piece;
    return line;
}

void UploadCause::read(std::span<const std::string_view> pieces) {
    if (!mayTell(Beginning(pieces).view()) || lengthOf(pieces) > longestLine) return;
    readWhole(joinedLine(pieces));
}

void UploadCause::readWhole(std::string_view line) {
    if (auto answer = behind(line, created)) {
        std::lock_guard lock(mutex_);
        creation_ = std::move(*answer);
    } else if (const auto failed = behind(line, createFailed)) {
        say(refusalText("to create it", *failed));
    } else if (const auto unfinished = behind(line, completeFailed)) {
        say(refusalText("to complete it", *unfinished));
    } else if (const auto message = behind(line, "file create failed:")) {
        baseapi::FilesCreateResponse response;
        std::unique_lock lock(mutex_);
        auto refusing = std::exchange(creation_, {});
        lock.unlock();
        const bool understood = !baseapi::decode(refusing, response);
        say(failureText("to create it", understood ? response.code.value_or(-1) : -1, *message));
    } else {
        for (const auto& saying : sayings)
            if (const auto rest = behind(line, saying.prefix)) say(std::string(saying.words) + *rest);
    }
}

void UploadCause::say(const std::string& cause) {
    std::lock_guard lock(mutex_);
    creation_ = {};
    if (!cause_) cause_ = cause;
}

void UploadCause::reset() {
    std::lock_guard lock(mutex_);
    cause_.reset();
    creation_.clear();
}

std::optional<std::string> UploadCause::cause() const {
    std::lock_guard lock(mutex_);
    return cause_;
}

}  // namespace quillbox
