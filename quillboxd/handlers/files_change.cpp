#include "quillboxd/handlers/file_json.h"
#include "quillboxd/handlers/handlers.h"
#include "quillboxd/store/database.h"

namespace quillboxd::files {
namespace {

constexpr Field smartAttributeShape[] = {
    {"name", Type::text}, {"type", Type::integer}, {"sort", Type::integer}, {"value", Type::text}};

constexpr Field directoryShape[] = {{"createdTime", Type::text},
                                    {"description", Type::text},
                                    {"mimeType", Type::text},
                                    {"editedTime", Type::text},
                                    {"fileName", Type::text},
                                    {"fileType", Type::text},
                                    {"parentFolder", Type::texts},
                                    {"containerId", Type::text},
                                    {"renameMode", Type::integer},
                                    {"hidden", Type::boolean},
                                    {"smartFolderAttr", Type::records, smartAttributeShape},
                                    {"scene", Type::text}};

std::string taken(const std::string& name) {
    return "the name \"" + name + "\" is taken in this folder";
}

Node newFolder(const json::object& request, std::int64_t parent) {
    auto folder = newNode(parent, requiredText(request, "fileName"), false);
    folder.hidden = flag(request, "hidden", false);
    folder.mimeType = text(request, "mimeType", folder.mimeType);
    folder.description = text(request, "description");
    folder.scene = text(request, "scene");
    folder.createdTime = text(request, "createdTime", folder.createdTime);
    folder.editedTime = text(request, "editedTime", folder.editedTime);
    return folder;
}

/// A walk down a path lives on this answer: it is a success on the wire, and its code says where to go on.
Reply alreadyThere(const Node& existing) {
    return jsonReply(200, {{"code", static_cast<int>(Code::nameExists)},
                           {"msg", taken(existing.name)},
                           {"id", ""},
                           {"fileName", existing.name},
                           {"existFileId", Tree::wireId(existing.id)}});
}

}  // namespace

Reply createDirectory(Call& call) {
    const auto request = call.record(directoryShape);
    call.checkContainer(text(request, "containerId"));
    const auto rule = nameRule(integer(request, "renameMode", 2), "renameMode");
    auto tree = call.tree();
    auto folder = newFolder(request, requireParent(tree, request));
    if (const auto existing = tree.child(folder.parent, folder.name)) {
        if (rule == NameRule::reportExisting && !existing->isFile) return alreadyThere(*existing);
        if (rule == NameRule::reportExisting || rule == NameRule::refuse)
            conflict(Code::nameExists, taken(folder.name));
        folder.name = tree.freeName(folder.parent, folder.name, false);
    }
    tree.insert(folder, true);
    return success(
        {{"id", Tree::wireId(folder.id)}, {"fileName", folder.name}, {"mimeType", folder.mimeType}});
}

Reply rename(Call& call) {
    static constexpr Field shape[] = {{"fileId", Type::text},
                                      {"containerId", Type::text},
                                      {"name", Type::text},
                                      {"renameMode", Type::integer}};
    const auto request = call.record(shape);
    call.checkContainer(text(request, "containerId"));
    const auto rule = nameRule(integer(request, "renameMode", 2), "renameMode");
    const auto name = requiredText(request, "name");
    checkName(name);
    auto tree = call.tree();
    const auto node = tree.require(call.wildcards[0]);
    if (node.id == 0) forbidden("the root folder has no name to change");
    if (name == node.name) return success();
    tree.rename(node.id, tree.chooseName(node.parent, name, node.isFile, rule));
    return success();
}

}  // namespace quillboxd::files
