#include <algorithm>
#include <charconv>
#include <optional>

#include "quillboxd/handlers/handlers.h"
#include "quillboxd/handlers/share_visit.h"
#include "quillboxd/store/revisions.h"
#include "quillboxd/store/uploads.h"

namespace quillboxd::addresses {
namespace {

template <class Address>
Address checked(std::optional<Address> address, const AddressSigner& signer) {
    if (!address) forbidden("this is no address that the service has given");
    switch (signer.check(*address, now())) {
        case AddressSigner::Verdict::valid:
            break;
        case AddressSigner::Verdict::altered:
            forbidden("the address was altered: its signature does not fit");
        case AddressSigner::Verdict::expired:
            forbidden("the address has expired");
    }
    return std::move(*address);
}

Part requirePart(Service& service, const PartAddress& address) {
    Transaction transaction(service.database);
    auto part = Uploads(service.database).part(address.file, address.number);
    if (!part) notFound("the file expects no such part; its upload may be complete already");
    return *part;
}

/// Where a part can be hashed from on its own: at the start, and at whole blocks with a known state.
std::optional<Sha256> hashAtStart(const Part& part) {
    if (part.start == 0 && !part.stateBefore) return Sha256();
    if (!part.stateBefore || part.start % 64 != 0) return std::nullopt;
    return Sha256::resume(*part.stateBefore, static_cast<std::uint64_t>(part.start));
}

/// Writes the body into a blob and notes in the part what its bytes lead to.
void receive(RequestReader& reader, BlobWriter& blob, Part& part) {
    auto hash = hashAtStart(part);
    for (auto bytes = reader.readBody(); !bytes.empty(); bytes = reader.readBody()) {
        if (hash) hash->update(bytes);
        blob.write(bytes);
    }
    part.blob = blob.id();
    if (!hash) return;
    part.stateAfter = hash->state();
    part.digestAfter = hash->digest();
}

/// One range of the header's form "bytes=first-last"; nothing where it asks for anything else.
struct ByteRange {
    std::int64_t first = 0;
    std::int64_t last = 0;
};

std::optional<std::int64_t> parseOffset(std::string_view digits) {
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error != std::errc() || end != digits.data() + digits.size() || value < 0) return std::nullopt;
    return value;
}

enum class RangeKind { whole, part, unsatisfiable };

RangeKind readRange(std::string_view header, std::int64_t size, ByteRange& range) {
    if (!header.starts_with("bytes=")) return RangeKind::whole;
    header.remove_prefix(6);
    const auto dash = header.find('-');
    if (dash == header.npos || header.find(',') != header.npos) return RangeKind::whole;
    const auto first = parseOffset(header.substr(0, dash));
    const auto last = parseOffset(header.substr(dash + 1));
    const bool fromEnd = dash == 0;
    const bool openEnd = dash + 1 == header.size();
    if ((!first && !fromEnd) || (!last && !openEnd) || (fromEnd && openEnd)) return RangeKind::whole;
    if (fromEnd) {
        range = {std::max<std::int64_t>(0, size - *last), size - 1};
        return *last > 0 && size > 0 ? RangeKind::part : RangeKind::unsatisfiable;
    }
    if (last && *last < *first) return RangeKind::whole;
    range = {*first, openEnd ? size - 1 : std::min(*last, size - 1)};
    return *first < size ? RangeKind::part : RangeKind::unsatisfiable;
}

std::string disposition(const Node& file, bool inlineView) {
    std::string plain = file.name;
    for (char& c : plain) {
        if (c < ' ' || c > '~' || c == '"' || c == '\\' || c == '%') c = '_';
    }
    return std::string(inlineView ? "inline" : "attachment") + "; filename=\"" + plain +
           "\"; filename*=UTF-8''" + encodePercent(file.name);
}

bool isHeaderSafe(std::string_view text) {
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

struct StoredFile {
    Node node;
    std::int64_t account = 0;
};

/// The file as it was in an earlier revision.
Node inRevision(Service& service, Node file, std::int64_t id) {
    const auto revision = Revisions(service.database).find(id);
    if (!revision || revision->node != file.id) notFound("the revision of this address is gone");
    file.content = revision->content;
    file.sha256 = revision->sha256;
    file.size = revision->size;
    return file;
}

StoredFile requireContent(Service& service, const ContentAddress& address) {
    const auto id = address.file;
    std::optional<std::int64_t> account;
    {
        auto owner =
            service.database.query("SELECT account FROM items WHERE id = ? AND content IS NOT NULL", id);
        if (owner.next()) account = owner.integer(0);
    }
    auto node = account ? Tree(service.database, *account).find(id) : std::nullopt;
    if (!node) notFound("the file of this address is gone");
    if (address.revision) node = inRevision(service, *node, address.revision);
    return {*node, *account};
}

Reply unsatisfiable(std::int64_t size) {
    auto reply = errorReply(ApiError(416, Code::malformed, "the range lies behind the file's end"));
    reply.headers.emplace_back("Content-Range", "bytes */" + std::to_string(size));
    return reply;
}

}  // namespace

Reply putPart(Call& call) {
    auto& service = call.service;
    const auto address = checked(parsePartAddress(call.request.target), service.signer);
    auto part = requirePart(service, address);
    const auto length = call.reader.announcedLength();
    if (!length) throw ApiError(411, Code::malformed, "a part needs the header Content-Length");
    if (*length != part.size) {
        badRequest("part " + std::to_string(part.number) + " has " + std::to_string(part.size) +
                   " bytes, not " + std::to_string(*length));
    }
    auto blob = service.blobs.create(part.size);
    receive(call.reader, blob, part);

    Transaction transaction(service.database);
    Uploads uploads(service.database);
    const auto before = uploads.part(address.file, address.number);
    if (!before) notFound("the file's upload has ended meanwhile");
    uploads.received(address.file, part);
    blob.keep();  // a commit whose answer is lost may still have happened
    transaction.commit();
    if (!before->blob.empty()) service.blobs.remove(before->blob);
    return success();
}

Reply getContent(Call& call) {
    auto& service = call.service;
    const auto address = checked(parseContentAddress(call.request.target), service.signer);
    Transaction transaction(service.database);
    const auto [file, account] = requireContent(service, address);
    if (address.share) {
        shares::requireOpenFor(call, address);
    } else {
        RecentAccesses(service.database, account)
            .note(file.id, address.inlineView ? AccessKind::viewed : AccessKind::downloaded);
    }

    const std::string tag = '"' + file.sha256 + '"';
    const auto* condition = call.request.header("If-Range");
    const auto* asked = call.request.header("Range");
    ByteRange range{0, file.size - 1};
    const bool rangeCounts = asked && (!condition || *condition == tag);
    const auto kind = rangeCounts ? readRange(*asked, file.size, range) : RangeKind::whole;
    if (kind == RangeKind::unsatisfiable) return unsatisfiable(file.size);
    if (address.share && !address.inlineView && range.first == 0 && call.request.verb == "GET")
        Shares(service.database).countDownload(address.share);

    Reply reply;
    // Whoever uploaded the file chose its type: no script in it may run as the service's own.
    reply.contentType = isHeaderSafe(file.mimeType) ? file.mimeType : "application/octet-stream";
    reply.headers = {{"Accept-Ranges", "bytes"},
                     {"ETag", tag},
                     {"X-Content-Type-Options", "nosniff"},
                     {"Content-Security-Policy", "sandbox"},
                     {"Content-Disposition", disposition(file, address.inlineView)}};
    if (kind == RangeKind::part) {
        reply.status = 206;
        reply.headers.emplace_back("Content-Range", "bytes " + std::to_string(range.first) + '-' +
                                                        std::to_string(range.last) + '/' +
                                                        std::to_string(file.size));
    }
    reply.pieces = service.contents.pieces(*file.content, range.first, range.last - range.first + 1);
    transaction.commit();
    return reply;
}

}  // namespace quillboxd::addresses
