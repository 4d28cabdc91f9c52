#include "bench/hand_written_reader.h"

#include <simdjson.h>

#include <string_view>
#include <utility>

namespace bench {
namespace {

using namespace baseapi;
using simdjson::error_code;
using simdjson::ondemand::value;

// The leaves come before what calls them. `SIMDJSON_TRY` is the library's own way to hand an error up.

error_code read(value source, std::string& target) {
    std::string_view text;
    SIMDJSON_TRY(source.get_string().get(text));
    target.assign(text);
    return simdjson::SUCCESS;
}
error_code read(value source, std::int64_t& target) {
    return source.get_int64().get(target);
}
error_code read(value source, bool& target) {
    return source.get_bool().get(target);
}

template <class T>
error_code read(value source, std::optional<T>& target);
template <class T>
error_code read(value source, std::vector<T>& target);
error_code read(value source, std::map<std::string, std::string>& target);

/// Calls `take(key, value)` for each member.
template <class Take>
error_code members(value source, Take take) {
    simdjson::ondemand::object object;
    SIMDJSON_TRY(source.get_object().get(object));
    for (auto item : object) {
        simdjson::ondemand::field field;
        SIMDJSON_TRY(std::move(item).get(field));
        SIMDJSON_TRY(take(field.key(), field.value()));
    }
    return simdjson::SUCCESS;
}

using Key = simdjson::ondemand::raw_json_string;

error_code read(value source, User& user) {
    return members(source, [&](Key key, value& member) {
        if (key == "userId") return read(member, user.userId);
        if (key == "displayName") return read(member, user.displayName);
        if (key == "me") return read(member, user.me);
        if (key == "permissionId") return read(member, user.permissionId);
        if (key == "category") return read(member, user.category);
        return simdjson::SUCCESS;
    });
}

error_code read(value source, DownloadLink& link) {
    return members(source, [&](Key key, value& member) {
        if (key == "usage") return read(member, link.usage);
        if (key == "version") return read(member, link.version);
        if (key == "downloadLink") return read(member, link.downloadLink);
        return simdjson::SUCCESS;
    });
}

error_code read(value source, UserCapabilities& can) {
    return members(source, [&](Key key, value& member) {
        switch (*key.raw()) {
            case 'a':
                if (key == "addChildNodePermission") return read(member, can.addChildNodePermission);
                break;
            case 'c':
                if (key == "copyPermission") return read(member, can.copyPermission);
                break;
            case 'd':
                if (key == "deletePermission") return read(member, can.deletePermission);
                if (key == "downloadPermission") return read(member, can.downloadPermission);
                break;
            case 'e':
                if (key == "editPermission") return read(member, can.editPermission);
                break;
            case 'l':
                if (key == "listChildNodePermission") return read(member, can.listChildNodePermission);
                break;
            case 'r':
                if (key == "removeChildNodePermission") return read(member, can.removeChildNodePermission);
                if (key == "renameFilePermission") return read(member, can.renameFilePermission);
                break;
            case 's':
                if (key == "shareFilePermission") return read(member, can.shareFilePermission);
                break;
            case 'u':
                if (key == "uploadPermission") return read(member, can.uploadPermission);
                break;
            case 'v':
                if (key == "viewPermission") return read(member, can.viewPermission);
                break;
            default:
                break;
        }
        return simdjson::SUCCESS;
    });
}

error_code read(value source, EndpointURLMetadata& endpoint) {
    return members(source, [&](Key key, value& member) {
        if (key == "url") return read(member, endpoint.url);
        if (key == "method") return read(member, endpoint.method);
        return simdjson::SUCCESS;
    });
}

error_code read(value source, Images& images) {
    return members(source, [&](Key key, value& member) {
        if (key == "process") return read(member, images.process);
        if (key == "downloadUrl") return read(member, images.downloadUrl);
        return simdjson::SUCCESS;
    });
}

error_code read(value source, FileListSliceObject& object) {
    return members(source, [&](Key key, value& member) {
        if (key == "id") return read(member, object.id);
        if (key == "start") return read(member, object.start);
        if (key == "downloadUrl") return read(member, object.downloadUrl);
        if (key == "images") return read(member, object.images);
        return simdjson::SUCCESS;
    });
}

error_code read(value source, FileListResource& resource) {
    return members(source, [&](Key key, value& member) {
        if (key == "object") return read(member, resource.object);
        return simdjson::SUCCESS;
    });
}

error_code read(value source, FileListAsset& asset) {
    return members(source, [&](Key key, value& member) {
        if (key == "mimeType") return read(member, asset.mimeType);
        if (key == "resource") return read(member, asset.resource);
        return simdjson::SUCCESS;
    });
}

error_code read(value source, FileListAttachment& attachment) {
    return members(source, [&](Key key, value& member) {
        if (key == "usage") return read(member, attachment.usage);
        if (key == "sha256") return read(member, attachment.sha256);
        if (key == "hash") return read(member, attachment.hash);
        if (key == "asset") return read(member, attachment.asset);
        return simdjson::SUCCESS;
    });
}

error_code read(value source, FileListMetadata& file) {
    return members(source, [&](Key key, value& member) {
        switch (*key.raw()) {
            case 'a':
                if (key == "attachments") return read(member, file.attachments);
                break;
            case 'c':
                if (key == "createdTime") return read(member, file.createdTime);
                if (key == "containers") return read(member, file.containers);
                break;
            case 'd':
                if (key == "directlyRecycled") return read(member, file.directlyRecycled);
                if (key == "downloadLinks") return read(member, file.downloadLinks);
                break;
            case 'e':
                if (key == "editedTime") return read(member, file.editedTime);
                break;
            case 'f':
                if (key == "fileName") return read(member, file.fileName);
                if (key == "fileType") return read(member, file.fileType);
                if (key == "favorite") return read(member, file.favorite);
                if (key == "fileSuffix") return read(member, file.fileSuffix);
                break;
            case 'h':
                if (key == "hidden") return read(member, file.hidden);
                break;
            case 'i':
                if (key == "id") return read(member, file.id);
                if (key == "idPath") return read(member, file.idPath);
                break;
            case 'l':
                if (key == "lastEditor") return read(member, file.lastEditor);
                break;
            case 'm':
                if (key == "mimeType") return read(member, file.mimeType);
                break;
            case 'o':
                if (key == "owners") return read(member, file.owners);
                break;
            case 'p':
                if (key == "parentFolder") return read(member, file.parentFolder);
                if (key == "properties") return read(member, file.properties);
                break;
            case 'r':
                if (key == "recycled") return read(member, file.recycled);
                if (key == "recycledTime") return read(member, file.recycledTime);
                break;
            case 's':
                if (key == "size") return read(member, file.size);
                if (key == "sha256") return read(member, file.sha256);
                break;
            case 'u':
                if (key == "userCapabilities") return read(member, file.userCapabilities);
                break;
            default:
                break;
        }
        return simdjson::SUCCESS;
    });
}

template <class T>
error_code read(value source, std::optional<T>& target) {
    bool null = false;
    SIMDJSON_TRY(source.is_null().get(null));
    return null ? simdjson::SUCCESS : read(source, target.emplace());
}

template <class T>
error_code read(value source, std::vector<T>& target) {
    simdjson::ondemand::array array;
    SIMDJSON_TRY(source.get_array().get(array));
    for (auto item : array) {
        value element;
        SIMDJSON_TRY(std::move(item).get(element));
        SIMDJSON_TRY(read(element, target.emplace_back()));
    }
    return simdjson::SUCCESS;
}

error_code read(value source, std::map<std::string, std::string>& target) {
    simdjson::ondemand::object object;
    SIMDJSON_TRY(source.get_object().get(object));
    for (auto item : object) {
        simdjson::ondemand::field field;
        std::string_view key;
        SIMDJSON_TRY(std::move(item).get(field));
        SIMDJSON_TRY(field.unescaped_key().get(key));
        SIMDJSON_TRY(read(field.value(), target[std::string(key)]));
    }
    return simdjson::SUCCESS;
}

error_code readPage(value source, FilesListResponse& response) {
    return members(source, [&](Key key, value& member) {
        if (key == "code") return read(member, response.code);
        if (key == "msg") return read(member, response.msg);
        if (key == "category") return read(member, response.category);
        if (key == "files") return read(member, response.files);
        if (key == "nextCursor") return read(member, response.nextCursor);
        if (key == "searchCompleted") return read(member, response.searchCompleted);
        return simdjson::SUCCESS;
    });
}

}  // namespace

bool readByHand(std::string& text, FilesListResponse& response) {
    static simdjson::ondemand::parser parser;
    text.reserve(text.size() + simdjson::SIMDJSON_PADDING);
    simdjson::ondemand::document document;
    value root;
    if (parser.iterate(text).get(document) || document.get_value().get(root)) return false;
    return readPage(root, response) == simdjson::SUCCESS;
}

}  // namespace bench
