#include "quillboxd/faults.h"

#include <algorithm>
#include <array>
#include <utility>

#include "quillboxd/error.h"

namespace quillboxd {
namespace {

constexpr std::array<std::pair<std::string_view, FaultKind>, 9> kinds{{
    {"status", FaultKind::status},
    {"reset", FaultKind::reset},
    {"stall", FaultKind::stall},
    {"trickle", FaultKind::trickle},
    {"truncate", FaultKind::truncate},
    {"garbage", FaultKind::garbage},
    {"html", FaultKind::html},
    {"empty", FaultKind::empty},
    {"expire", FaultKind::expire},
}};

constexpr Field shape[] = {
    {"verb", Type::text},      {"path", Type::text},     {"after", Type::integer},
    {"times", Type::integer},  {"kind", Type::text},     {"status", Type::integer},
    {"seconds", Type::number}, {"bytes", Type::integer}, {"bytesPerSecond", Type::number},
};

double number(const json::object& record, std::string_view key) {
    const auto* value = present(record, key);
    return value ? value->to_number<double>() : 0;
}

FaultKind kindOf(const std::string& name) {
    for (const auto& [known, kind] : kinds) {
        if (known == name) return kind;
    }
    badRequest("there is no kind of fault \"" + name + "\"");
}

bool pathFits(std::string_view pattern, std::string_view path) {
    if (!pattern.ends_with('*')) return pattern == path;
    pattern.remove_suffix(1);
    return path.starts_with(pattern);
}

void checkDetails(const Fault& fault) {
    if (fault.after < 0) badRequest("\"after\" must not be negative");
    if (fault.times < 1) badRequest("\"times\" must be at least 1");
    switch (fault.kind) {
        case FaultKind::status:
            if (fault.status < 200 || fault.status > 599) badRequest("\"status\" must be from 200 to 599");
            break;
        case FaultKind::stall:
            if (!(fault.seconds > 0 && fault.seconds <= 86400))
                badRequest("\"seconds\" must be from 0 to 86400");
            break;
        case FaultKind::trickle:
            if (!(fault.bytesPerSecond >= 1)) badRequest("\"bytesPerSecond\" must be at least 1");
            break;
        case FaultKind::truncate:
            if (fault.bytes < 0) badRequest("\"bytes\" must not be negative");
            break;
        case FaultKind::expire:
            if (!fault.path.starts_with("/_part/") && !fault.path.starts_with("/_content/")) {
                badRequest("only a path below /_part/ or /_content/ can expire");
            }
            break;
        default:
            break;
    }
}

Fault readPlan(std::string_view body) {
    auto record = parseRecord(body, shape);
    Fault fault;
    fault.kind = kindOf(requiredText(record, "kind"));
    fault.verb = text(record, "verb");
    fault.path = requiredText(record, "path");
    fault.after = integer(record, "after", 0);
    fault.times = integer(record, "times", 1);
    fault.status = integer(record, "status", 0);
    fault.seconds = number(record, "seconds");
    fault.bytesPerSecond = number(record, "bytesPerSecond");
    fault.bytes = integer(record, "bytes", 0);
    if (const auto* answer = record.if_contains("body")) fault.body = json::serialize(*answer);
    checkDetails(fault);
    fault.asPlanned = std::move(record);
    return fault;
}

}  // namespace

std::int64_t Faults::plan(std::string_view body) {
    auto fault = readPlan(body);
    const std::lock_guard lock(mutex_);
    fault.id = ++lastId_;
    plans_.push_back(std::move(fault));
    any_ = true;
    return lastId_;
}

void Faults::clear() {
    const std::lock_guard lock(mutex_);
    plans_.clear();
    any_ = false;
    ++clearings_;
    cleared_.notify_all();
}

json::array Faults::list() const {
    const std::lock_guard lock(mutex_);
    json::array list;
    for (const auto& fault : plans_) {
        json::object entry{{"id", fault.id}};
        for (const auto& [key, value] : fault.asPlanned) entry[key] = value;
        entry["after"] = fault.after;
        entry["times"] = fault.times;
        entry["hits"] = fault.hits;
        list.push_back(std::move(entry));
    }
    return list;
}

std::optional<Fault> Faults::take(std::string_view verb, std::string_view path) {
    if (!any_) return std::nullopt;
    const std::lock_guard lock(mutex_);
    for (auto& fault : plans_) {
        if ((!fault.verb.empty() && fault.verb != verb) || !pathFits(fault.path, path)) continue;
        if (fault.seen++ < fault.after || fault.hits == fault.times) continue;
        ++fault.hits;
        return fault;
    }
    return std::nullopt;
}

void Faults::wait(std::chrono::duration<double> duration) {
    std::unique_lock lock(mutex_);
    const auto before = clearings_;
    cleared_.wait_for(lock, duration, [&] { return clearings_ != before; });
}

}  // namespace quillboxd
