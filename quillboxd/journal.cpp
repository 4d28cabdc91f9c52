#include "quillboxd/journal.h"

#include <boost/algorithm/string/replace.hpp>

#include "quillboxd/unicode.h"

namespace quillboxd {
namespace {

constexpr const char* mask = "***";

std::string masked(std::string text, const std::string* token) {
    if (token && !token->empty()) boost::algorithm::replace_all(text, *token, mask);
    return text;
}

}  // namespace

std::int64_t Journal::arrived(const Request& request) {
    const auto* token = request.header("Authorization");
    Entry entry;
    entry.verb = request.verb;
    entry.target = maskedTarget(request);
    for (const auto& [name, value] : request.headers) {
        const bool secret = equalsIgnoringCase(name, "Authorization");
        entry.headers.emplace_back(name, secret ? mask : readable(masked(value, token)));
    }
    const std::lock_guard lock(mutex_);
    entry.seq = ++lastSeq_;
    if (entries_.size() == capacity) entries_.pop_front();
    entries_.push_back(std::move(entry));
    return lastSeq_;
}

void Journal::answered(std::int64_t seq, int status, std::int64_t bodyLength, std::string bodySha256,
                       double millis) {
    const std::lock_guard lock(mutex_);
    if (entries_.empty() || seq < entries_.front().seq || seq > entries_.back().seq) return;
    auto& entry = entries_[static_cast<std::size_t>(seq - entries_.front().seq)];
    entry.status = status;
    entry.bodyLength = bodyLength;
    entry.bodySha256 = std::move(bodySha256);
    entry.millis = millis;
}

void Journal::clear() {
    const std::lock_guard lock(mutex_);
    entries_.clear();
}

json::array Journal::entries() const {
    const std::lock_guard lock(mutex_);
    json::array list;
    list.reserve(entries_.size());
    for (const auto& entry : entries_) list.push_back(toJson(entry));
    return list;
}

json::array Journal::latest(std::int64_t before, std::size_t count) const {
    const std::lock_guard lock(mutex_);
    json::array list;
    for (auto entry = entries_.rbegin(); entry != entries_.rend() && list.size() < count; ++entry)
        if (entry->seq < before) list.push_back(toJson(*entry));
    return list;
}

std::string Journal::maskedTarget(const Request& request) {
    return masked(request.target, request.header("Authorization"));
}

json::object Journal::toJson(const Entry& entry) {
    json::object headers;
    for (const auto& [name, value] : entry.headers) headers[name] = value;
    const auto question = std::min(entry.target.find('?'), entry.target.size());
    const auto query = std::min(entry.target.size(), question + 1);
    return {{"seq", entry.seq},
            {"verb", entry.verb},
            {"path", entry.target.substr(0, question)},
            {"query", entry.target.substr(query)},
            {"headers", std::move(headers)},
            {"bodyLength", entry.bodyLength},
            {"bodySha256", entry.bodySha256},
            {"status", entry.status},
            {"millis", entry.millis}};
}

}  // namespace quillboxd
