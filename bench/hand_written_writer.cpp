#include "bench/hand_written_writer.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <string_view>

namespace bench {
namespace {

using namespace baseapi;
using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

void put(Writer& writer, std::string_view text) {
    writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

void field(Writer& writer, std::string_view key, const std::optional<std::string>& value) {
    if (!value) return;
    writer.Key(key.data(), static_cast<rapidjson::SizeType>(key.size()));
    put(writer, *value);
}

void field(Writer& writer, std::string_view key, std::int64_t value) {
    writer.Key(key.data(), static_cast<rapidjson::SizeType>(key.size()));
    writer.Int64(value);
}

void put(Writer& writer, const MultiPartInfo& part) {
    writer.StartObject();
    field(writer, "partNumber", part.partNumber);
    field(writer, "partSize", part.partSize);
    field(writer, "partOffset", part.partOffset);
    if (part.hashCtx) {
        writer.Key("hashCtx");
        writer.StartArray();
        for (const std::uint32_t word : *part.hashCtx) writer.Uint(word);
        writer.EndArray();
    }
    field(writer, "uploadUrl", part.uploadUrl);
    field(writer, "partId", part.partId);
    writer.EndObject();
}

}  // namespace

std::string writeByHand(const FilesCreateBean& request) {
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    writer.StartObject();
    field(writer, "createdTime", request.createdTime);
    field(writer, "description", request.description);
    field(writer, "mimeType", request.mimeType);
    field(writer, "fileName", request.fileName);
    field(writer, "fileType", request.fileType);
    if (request.parentFolder) {
        writer.Key("parentFolder");
        writer.StartArray();
        for (const auto& folder : *request.parentFolder) put(writer, folder);
        writer.EndArray();
    }
    field(writer, "sha256", request.sha256);
    field(writer, "length", request.length);
    field(writer, "uploadMode", request.uploadMode);
    field(writer, "uploadType", request.uploadType);
    field(writer, "autoRename", request.autoRename);
    if (request.multiParts) {
        writer.Key("multiParts");
        writer.StartArray();
        for (const auto& part : *request.multiParts) put(writer, part);
        writer.EndArray();
    }
    field(writer, "containerId", request.containerId);
    field(writer, "preHash", request.preHash);
    field(writer, "proofCode", request.proofCode);
    writer.Key("hidden");
    writer.Bool(request.hidden);
    writer.Key("scene");
    put(writer, request.scene);
    writer.EndObject();
    return {buffer.GetString(), buffer.GetSize()};
}

}  // namespace bench
