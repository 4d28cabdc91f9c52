#include "quillboxd/store/uploads.h"

#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <set>
#include <stdexcept>

#include "quillboxd/call.h"
#include "quillboxd/error.h"
#include "quillboxd/store/blob_store.h"
#include "quillboxd/store/database.h"

namespace quillboxd {
namespace {

/// How long an upload keeps its room after its last part, in seconds.
constexpr std::int64_t patience = 24 * 60 * 60;

template <class Bytes>
std::string_view view(const Bytes& bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), sizeof bytes};
}

template <class Bytes>
std::optional<Blob> blobOf(const std::optional<Bytes>& bytes) {
    return bytes ? std::optional(Blob{view(*bytes)}) : std::nullopt;
}

template <class Bytes>
std::optional<Bytes> readBytes(const Query& row, int column) {
    Bytes bytes;
    const auto stored = row.text(column);
    if (stored.size() != sizeof bytes) return std::nullopt;
    std::memcpy(bytes.data(), stored.data(), sizeof bytes);
    return bytes;
}

const std::string selectParts =
    "SELECT number, start, size, state_before, coalesce(blob, ''), state_after, digest_after FROM parts ";

Part readPart(const Query& row) {
    return {row.integer(0),
            row.integer(1),
            row.integer(2),
            readBytes<Sha256::State>(row, 3),
            row.text(4),
            readBytes<Sha256::State>(row, 5),
            readBytes<Sha256::Digest>(row, 6)};
}

std::string nameOf(const Part& part) {
    return "part " + std::to_string(part.number);
}

[[noreturn]] void stateDiffers(const Part& part) {
    conflict(Code::conflict, "the hashCtx of " + nameOf(part) + " does not fit the bytes before it");
}

[[noreturn]] void hashDiffers(const std::string& found, const Upload& upload) {
    conflict(Code::conflict, "the bytes have the SHA-256 " + found + ", not " + upload.sha256);
}

/// The state that the client gave for the part's start; the first part needs none.
std::optional<Sha256::State> claimedState(const Part& part) {
    if (!part.stateBefore && part.start == 0) return Sha256().state();
    return part.stateBefore;
}

bool isChained(const std::vector<Part>& parts) {
    return std::all_of(parts.begin(), parts.end(),
                       [](const Part& part) { return claimedState(part) && part.digestAfter; });
}

/// Each part was hashed on arrival from the state that the client claimed, so the states need only meet.
void verifyChain(const Upload& upload, const std::vector<Part>& parts) {
    auto reached = Sha256().state();
    auto digest = Sha256().digest();
    for (const auto& part : parts) {
        if (claimedState(part) != reached) stateDiffers(part);
        reached = part.stateAfter.value();
        digest = part.digestAfter.value();
    }
    if (hex(digest) != upload.sha256) hashDiffers(hex(digest), upload);
}

void hashBlob(Sha256& hash, const Part& part, const BlobStore& blobs) {
    std::string buffer(512 * 1024, '\0');
    const auto blob = blobs.open(part.blob);
    for (std::int64_t done = 0; done < part.size;) {
        const auto wanted =
            std::min<std::int64_t>(part.size - done, static_cast<std::int64_t>(buffer.size()));
        const auto count =
            ::pread(blob.file.get(), buffer.data(), static_cast<std::size_t>(wanted), blob.base + done);
        if (count <= 0) throw std::runtime_error("a stored part cannot be read");
        hash.update(std::string_view(buffer).substr(0, static_cast<std::size_t>(count)));
        done += count;
    }
}

void verifyByReading(const Upload& upload, const std::vector<Part>& parts, const BlobStore& blobs) {
    Sha256 hash;
    for (const auto& part : parts) {
        if (part.stateBefore && *part.stateBefore != hash.state()) stateDiffers(part);
        hashBlob(hash, part, blobs);
    }
    const auto found = hex(hash.digest());
    if (found != upload.sha256) hashDiffers(found, upload);
}

}  // namespace

void Uploads::add(const Upload& upload, const std::vector<Part>& parts) {
    database_.run(
        "INSERT INTO uploads (node, sha256, length, auto_rename, reserved_until) VALUES (?, ?, ?, ?, ?)",
        upload.node, upload.sha256, upload.length, static_cast<int>(upload.nameRule), now() + patience);
    for (const auto& part : parts) {
        database_.run("INSERT INTO parts (node, number, start, size, state_before) VALUES (?, ?, ?, ?, ?)",
                      upload.node, part.number, part.start, part.size, blobOf(part.stateBefore));
    }
}

std::optional<Upload> Uploads::find(std::int64_t account, std::int64_t node) {
    auto row = database_.query(
        "SELECT sha256, length, auto_rename FROM uploads JOIN nodes ON nodes.id = node "
        "WHERE node = ? AND account = ?",
        node, account);
    if (!row.next()) return std::nullopt;
    return Upload{node, row.text(0), row.integer(1), static_cast<NameRule>(row.integer(2))};
}

std::vector<Part> Uploads::parts(std::int64_t node) {
    auto rows = database_.query(selectParts + "WHERE node = ? ORDER BY start", node);
    std::vector<Part> parts;
    while (rows.next()) parts.push_back(readPart(rows));
    return parts;
}

std::optional<Part> Uploads::part(std::int64_t node, std::int64_t number) {
    auto row = database_.query(selectParts + "WHERE node = ? AND number = ?", node, number);
    return row.next() ? std::optional(readPart(row)) : std::nullopt;
}

void Uploads::received(std::int64_t node, const Part& part) {
    database_.run(
        "UPDATE parts SET blob = ?, state_after = ?, digest_after = ? WHERE node = ? AND number = ?",
        part.blob, blobOf(part.stateAfter), blobOf(part.digestAfter), node, part.number);
    database_.run("UPDATE uploads SET reserved_until = ? WHERE node = ?", now() + patience, node);
}

std::int64_t Uploads::underWay(std::int64_t account) {
    const auto time = now();
    auto sum = database_.query(
        "SELECT coalesce(sum(length), 0) FROM uploads JOIN nodes ON nodes.id = node "
        "WHERE account = ? AND reserved_until > ?",
        account, time);
    sum.next();
    return sum.integer(0);
}

void Uploads::remove(std::int64_t node) {
    database_.run("DELETE FROM parts WHERE node = ?", node);
    database_.run("DELETE FROM uploads WHERE node = ?", node);
}

void checkTiling(std::vector<Part> parts, std::int64_t length) {
    std::set<std::int64_t> numbers;
    for (const auto& part : parts) {
        if (part.number < 1) badRequest("a partNumber is less than 1");
        if (!numbers.insert(part.number).second) badRequest(nameOf(part) + " stands in the list twice");
        if (part.size < 1) badRequest(nameOf(part) + " has no bytes");
    }
    std::sort(parts.begin(), parts.end(), [](const Part& a, const Part& b) { return a.start < b.start; });
    std::int64_t end = 0;
    for (const auto& part : parts) {
        if (part.start != end) {
            badRequest(nameOf(part) + " starts at " + std::to_string(part.start) + ", not at " +
                       std::to_string(end));
        }
        if (part.size > length - end) badRequest(nameOf(part) + " ends behind the file's end");
        end += part.size;
    }
    if (end != length) {
        badRequest("the parts hold " + std::to_string(end) + " of the file's " + std::to_string(length) +
                   " bytes");
    }
}

void verifyParts(const Upload& upload, const std::vector<Part>& parts, const BlobStore& blobs) {
    for (const auto& part : parts) {
        if (part.blob.empty()) conflict(Code::conflict, nameOf(part) + " is missing");
    }
    if (isChained(parts)) {
        verifyChain(upload, parts);
    } else {
        verifyByReading(upload, parts, blobs);
    }
}

}  // namespace quillboxd
