#include <algorithm>
#include <cctype>

#include "quillboxd/crypto/proof_code.h"
#include "quillboxd/handlers/file_create.h"
#include "quillboxd/handlers/file_json.h"
#include "quillboxd/handlers/handlers.h"
#include "quillboxd/store/revisions.h"
#include "quillboxd/store/uploads.h"

namespace quillboxd::files {
namespace {

constexpr Field partShape[] = {{"partNumber", Type::integer}, {"partSize", Type::integer},
                               {"partOffset", Type::integer}, {"hashCtx", Type::words},
                               {"uploadUrl", Type::text},     {"partId", Type::text}};

constexpr Field createShape[] = {
    {"createdTime", Type::text},   {"description", Type::text},   {"mimeType", Type::text},
    {"fileName", Type::text},      {"fileType", Type::text},      {"parentFolder", Type::texts},
    {"sha256", Type::text},        {"length", Type::integer},     {"uploadMode", Type::text},
    {"uploadType", Type::integer}, {"autoRename", Type::integer}, {"multiParts", Type::records, partShape},
    {"containerId", Type::text},   {"preHash", Type::text},       {"proofCode", Type::text},
    {"hidden", Type::boolean},     {"scene", Type::text}};

/// The digest in lower case; throws for what is no SHA-256 in hexadecimal.
std::string readDigest(const json::object& request) {
    auto digest = requiredText(request, "sha256");
    const bool valid = digest.size() == 64 && std::all_of(digest.begin(), digest.end(), [](unsigned char c) {
                           return std::isxdigit(c) != 0;
                       });
    if (!valid) badRequest("\"sha256\" must be 64 hexadecimal digits");
    std::transform(digest.begin(), digest.end(), digest.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return digest;
}

std::optional<Sha256::State> readState(const json::object& part, std::size_t index) {
    const auto* words = present(part, "hashCtx");
    if (!words) return std::nullopt;
    const auto& list = words->get_array();
    Sha256::State state;
    if (list.size() != state.size()) {
        badRequest("\"multiParts[" + std::to_string(index) + "].hashCtx\" must hold eight words");
    }
    std::transform(list.begin(), list.end(), state.begin(),
                   [](const json::value& word) { return static_cast<std::uint32_t>(word.get_int64()); });
    return state;
}

std::vector<Part> readParts(const json::object& request) {
    std::vector<Part> parts;
    const auto* list = present(request, "multiParts");
    if (!list) return parts;
    for (const auto& element : list->get_array()) {
        const auto& fields = element.get_object();
        Part part;
        part.number = requiredInteger(fields, "partNumber");
        part.size = requiredInteger(fields, "partSize");
        part.start = requiredInteger(fields, "partOffset");
        part.stateBefore = readState(fields, parts.size());
        parts.push_back(part);
    }
    return parts;
}

json::object partWithAddress(const Call& call, std::int64_t file, const Part& part) {
    json::object fields{{"partNumber", part.number}, {"partSize", part.size}, {"partOffset", part.start}};
    if (part.stateBefore) fields["hashCtx"] = json::array(part.stateBefore->begin(), part.stateBefore->end());
    fields["uploadUrl"] = call.origin + call.service.signer.part(file, part.number, now());
    fields["partId"] = std::to_string(file) + "-" + std::to_string(part.number);
    return fields;
}

json::array partsWithAddresses(const Call& call, std::int64_t file, const std::vector<Part>& parts) {
    json::array list;
    list.reserve(parts.size());
    for (const auto& part : parts) list.push_back(partWithAddress(call, file, part));
    return list;
}

Node newFile(const json::object& request, std::int64_t parent) {
    auto file = newNode(parent, requiredText(request, "fileName"), true);
    file.hidden = flag(request, "hidden", false);
    file.fileType = text(request, "fileType", file.fileType);
    file.mimeType = text(request, "mimeType", file.mimeType);
    file.description = text(request, "description");
    file.scene = text(request, "scene");
    file.createdTime = text(request, "createdTime", file.createdTime);
    return file;
}

/// Whoever names a content that the service knows must show that he holds it; the empty one has nothing to
/// show.
void checkProof(const Call& call, const json::object& request, std::int64_t content, std::int64_t length) {
    if (length == 0) return;
    const auto proof = optionalText(request, "proofCode");
    if (!proof) forbidden("the content is known, and \"proofCode\" is missing");
    const auto range = proofRange(call.token, length);
    if (*proof != hex(sha256(call.service.contents.read(content, range.offset, range.length)))) {
        forbidden("\"proofCode\" does not fit the content");
    }
}

CreatedFile created(const Call& call, const Node& file, bool rapid, bool exists, json::array parts) {
    return {file.id, success({{"fileId", Tree::wireId(file.id)},
                              {"rapidUpload", rapid},
                              {"exist", exists},
                              {"containerId", call.account.container},
                              {"fileName", file.name},
                              {"uploadId", Tree::wireId(file.id)},
                              {"parentFolder", json::array{Tree::wireId(file.parent)}},
                              {"multiParts", std::move(parts)}})};
}

Upload requireUpload(Uploads& uploads, const Call& call, const std::string& wireId) {
    const auto id = Tree::fromWireId(wireId);
    const auto upload = id ? uploads.find(call.account.id, *id) : std::nullopt;
    if (!upload) notFound("there is no upload of a file \"" + wireId + "\"");
    return *upload;
}

/// Names the blobs of the parts as a content; those of a content that is known already are no longer needed.
std::int64_t adopt(Contents& contents, const Upload& upload, const std::vector<Part>& parts,
                   std::vector<std::string>& unneeded) {
    if (const auto known = contents.find(upload.sha256, upload.length)) {
        for (const auto& part : parts) unneeded.push_back(part.blob);
        return *known;
    }
    std::vector<Piece> pieces;
    pieces.reserve(parts.size());
    for (const auto& part : parts) pieces.push_back({part.blob, 0, part.size});
    return contents.add(upload.sha256, upload.length, pieces);
}

bool sameBlobs(const std::vector<Part>& a, const std::vector<Part>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const Part& x, const Part& y) { return x.blob == y.blob; });
}

/// The file shows itself to people, under the name that is free by now; one that did before shows another
/// content.
void becomeFile(const Call& call, const Upload& upload, std::int64_t content) {
    auto tree = call.tree();
    Uploads(call.service.database).remove(upload.node);
    call.space().requireRoom(upload.length);
    if (tree.find(upload.node)) {
        tree.replaceContent(upload.node, content);
    } else {
        const auto file = tree.requireUnfinished(upload.node);
        tree.publish(file.id, tree.chooseName(file.parent, file.name, true, upload.nameRule), content);
    }
    call.accesses().note(upload.node, AccessKind::uploaded);
}

/// Whether an earlier request has completed the file with this hash already.
bool isCompleted(const Call& call, const std::string& wireId, const std::string& digest) {
    const auto id = Tree::fromWireId(wireId);
    const auto file = id ? call.tree().find(*id) : std::nullopt;
    if (!file || !file->isFile) return false;
    if (file->sha256 != digest) conflict(Code::conflict, "the file was completed with another sha256");
    return true;
}

/// The upload that is to end; nothing where an earlier request has ended it already.
std::optional<Upload> openUpload(const Call& call, const std::string& wireId, const std::string& digest) {
    Uploads uploads(call.service.database);
    const auto id = Tree::fromWireId(wireId);
    const auto upload = id ? uploads.find(call.account.id, *id) : std::nullopt;
    if (!upload && isCompleted(call, wireId, digest)) return std::nullopt;
    return upload ? upload : requireUpload(uploads, call, wireId);
}

/// A file whose content the service knows needs no upload.
CreatedFile storeKnown(const Call& call, const Node& file, bool replaces) {
    if (replaces) {
        call.tree().replaceContent(file.id, file.content.value());
    } else {
        call.tree().insert(file, true);
    }
    call.accesses().note(file.id, AccessKind::uploaded);
    return created(call, file, true, false, {});
}

/// A file that has held a content before may hold it again without a proof.
bool hasHeld(const Call& call, std::int64_t file, std::int64_t content) {
    return Revisions(call.service.database).hasHeld(file, content);
}

/// What a create says of the content to come.
struct Announced {
    Upload upload;
    std::vector<Part> parts;
};

Announced readAnnounced(const json::object& request) {
    if (requiredText(request, "uploadMode") != "multipart")
        badRequest("\"uploadMode\" must be \"multipart\"");
    Upload upload;
    upload.sha256 = readDigest(request);
    upload.length = requiredInteger(request, "length");
    upload.nameRule = nameRule(integer(request, "autoRename", 2), "autoRename", NameRule::replaceContent);
    if (upload.length < 0) badRequest("\"length\" must not be negative");
    auto parts = readParts(request);
    checkTiling(parts, upload.length);
    return {upload, std::move(parts)};
}

bool holds(const Node& file, const Upload& upload) {
    return file.isFile && file.sha256 == upload.sha256 && file.size == upload.length;
}

}  // namespace

CreatedFile createFile(Call& call) {
    const auto request = call.record(createShape);
    call.checkContainer(text(request, "containerId"));
    auto [upload, parts] = readAnnounced(request);
    auto tree = call.tree();
    auto file = newFile(request, requireParent(tree, request));
    const auto sameName = tree.child(file.parent, file.name);
    if (sameName && holds(*sameName, upload)) return created(call, *sameName, false, true, {});
    const bool replaces = upload.nameRule == NameRule::replaceContent && sameName && sameName->isFile;
    if (replaces) file = *sameName;
    file.content = call.service.contents.find(upload.sha256, upload.length);
    if (file.content && !(replaces && hasHeld(call, file.id, *file.content)))
        checkProof(call, request, *file.content, upload.length);
    const auto name = replaces ? file.name : tree.chooseName(file.parent, file.name, true, upload.nameRule);
    Uploads uploads(call.service.database);
    uploads.remove(file.id);  // the later one counts of two that replace the same file
    call.space().requireRoom(upload.length);
    if (file.content) {
        file.name = name;
        return storeKnown(call, file, replaces);
    }
    if (!replaces) tree.insert(file, false);
    upload.node = file.id;
    uploads.add(upload, parts);
    file.name = name;
    return created(call, file, false, false, partsWithAddresses(call, file.id, parts));
}

Reply create(Call& call) {
    return createFile(call).reply;
}

Reply uploadUrls(Call& call) {
    static constexpr Field shape[] = {{"fileId", Type::text}, {"multiParts", Type::records, partShape}};
    const auto request = call.record(shape);
    Uploads uploads(call.service.database);
    const auto upload = requireUpload(uploads, call, requiredText(request, "fileId"));
    json::array addresses;
    for (const auto& wanted : readParts(request)) {
        const auto part = uploads.part(upload.node, wanted.number);
        if (!part) notFound("the file has no part " + std::to_string(wanted.number));
        addresses.push_back(partWithAddress(call, upload.node, *part));
    }
    return success({{"multiParts", std::move(addresses)}});
}

Reply complete(Call& call) {
    static constexpr Field shape[] = {{"fileId", Type::text}, {"sha256", Type::text}};
    const auto request = call.record(shape);
    const auto id = requiredText(request, "fileId");
    const auto digest = readDigest(request);
    auto& service = call.service;
    Uploads uploads(service.database);

    Upload upload;
    std::vector<Part> parts;
    {
        Transaction transaction(service.database);
        const auto found = openUpload(call, id, digest);
        if (!found) return success();
        upload = *found;
        parts = uploads.parts(upload.node);
    }
    if (upload.sha256 != digest) conflict(Code::conflict, "the file was created with another sha256");
    // This may read the whole file, so nobody waits for it.
    verifyParts(upload, parts, service.blobs);

    std::vector<std::string> unneeded;
    {
        Transaction transaction(service.database);
        if (!openUpload(call, id, digest)) return success();
        if (!sameBlobs(parts, uploads.parts(upload.node))) {
            conflict(Code::conflict, "a part was sent again while the file was completed");
        }
        becomeFile(call, upload, adopt(service.contents, upload, parts, unneeded));
        transaction.commit();
    }
    for (const auto& blob : unneeded) service.blobs.remove(blob);
    return success();
}

}  // namespace quillboxd::files
