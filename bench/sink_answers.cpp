#include "bench/sink_answers.h"

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <string_view>
#include <utility>

namespace bench {

namespace {

constexpr std::string_view operations = "/quillbox/ose/v1/files/";
constexpr std::string_view directory = "/quillbox/ose/v1/directory";
constexpr std::string_view contents = "/content/";
constexpr std::string_view backup = "/v1/backup/";
constexpr std::string_view bucket = "/bucket";

constexpr std::string_view listAnswer =
    R"({"code":0,"msg":"success","files":[)"
    R"({"id":"f1","fileName":"a.jpg","fileType":"15","mimeType":"image/jpeg","size":1048576,)"
    R"("parentFolder":["root"],"createdTime":"2024-01-01T00:00:00Z","editedTime":"2024-01-01T00:00:00Z"},)"
    R"({"id":"f2","fileName":"b.txt","fileType":"45","mimeType":"text/plain","size":12,)"
    R"("parentFolder":["root"],"createdTime":"2024-01-01T00:00:00Z","editedTime":"2024-01-01T00:00:00Z"}],)"
    R"("nextCursor":""})";

/// The parts asked for, each with an address.
std::string createAnswer(const Request& request) {
    rapidjson::Document asked;
    asked.Parse(request.body.data(), request.body.size());
    if (asked.HasParseError() || !asked.IsObject()) return R"({"code":1,"msg":"no JSON object"})";

    rapidjson::StringBuffer text;
    rapidjson::Writer<rapidjson::StringBuffer> writer(text);
    writer.StartObject();
    writer.Key("code"), writer.Int(0);
    writer.Key("msg"), writer.String("success");
    writer.Key("fileId"), writer.String("f3");
    writer.Key("rapidUpload"), writer.Bool(false);
    writer.Key("exist"), writer.Bool(false);
    writer.Key("multiParts"), writer.StartArray();
    if (asked.HasMember("multiParts") && asked["multiParts"].IsArray())
        for (const auto& part : asked["multiParts"].GetArray()) {
            writer.StartObject();
            for (const char* key : {"partNumber", "partSize", "partOffset"})
                writer.Key(key), writer.Int64(part[key].GetInt64());
            const auto address =
                "http://" + request.host + "/parts/" + std::to_string(part["partNumber"].GetInt64());
            writer.Key("uploadUrl"), writer.String(address.c_str());
            writer.EndObject();
        }
    writer.EndArray();
    writer.EndObject();
    return text.GetString();
}

std::string operationBody(const Request& request) {
    const auto operation = std::string_view(request.path).substr(operations.size());
    if (operation == "create") return createAnswer(request);
    if (operation == "complete") return R"({"code":0,"msg":"success"})";
    return std::string(listAnswer);
}

/// The array of that name in a JSON object.
std::string arrayOf(const std::string& text, const char* name) {
    rapidjson::Document object;
    object.Parse(text.data(), text.size());
    if (object.HasParseError() || !object.IsObject() || !object.HasMember(name)) return "[]";
    rapidjson::StringBuffer array;
    rapidjson::Writer<rapidjson::StringBuffer> writer(array);
    object[name].Accept(writer);
    return array.GetString();
}

/// With the headers that any service sends.
Answer json(std::string body) {
    return {.body = std::move(body),
            .extraHeaders = "Date: Mon, 01 Jan 2024 00:00:00 GMT\r\nContent-Type: application/json\r\n"};
}

Answer xml(std::string body) {
    return {.body = R"(<?xml version="1.0" encoding="UTF-8"?>)" + std::move(body),
            .extraHeaders = "Content-Type: application/xml\r\n"};
}

}  // namespace

Answer SinkAnswers::answer(const Request& request) {
    if (request.path.starts_with(operations)) return json(operationBody(request));
    if (request.path == directory) return json(R"({"code":0,"msg":"success","id":"folder"})");
    if (request.path.find(backup) != std::string::npos) return json(backupBody(request));
    if (request.path.starts_with(contents))
        return {.filler = std::stoull(request.path.substr(contents.size())),
                .extraHeaders = "ETag: \"1\"\r\n"};
    if (request.path == "/connections") return {.body = std::to_string(request.connections)};
    if (request.path.starts_with(bucket)) return answerBucket(request);
    return {.status = request.verb == "PUT" ? 200 : 404};
}

std::string SinkAnswers::backupBody(const Request& request) {
    if (request.path.ends_with("/lock")) return R"({"code":0,"msg":"success","data":{"lockId":"lock"}})";
    if (request.path.ends_with("/record"))
        return request.verb == "POST"
                   ? R"({"code":0,"msg":"success","data":{"recordId":"record","status":0,"version":1}})"
                   : R"({"code":0,"msg":"success","data":[]})";
    if (!request.path.ends_with("/scope")) return R"({"code":0,"msg":"success"})";
    if (request.verb == "POST") scopes_ = arrayOf(request.body, "scopeList");
    return R"({"code":0,"msg":"success","scopeList":)" + scopes_ + "}";
}

Answer SinkAnswers::answerBucket(const Request& request) {
    static const std::string etag = "ETag: \"00000000000000000000000000000000-1\"\r\n";
    if (request.verb == "PUT") {
        objects_[request.path] += request.bodyLength;
        return {.extraHeaders = etag};
    }
    if (request.verb == "POST" && request.query.starts_with("uploads")) {
        objects_[request.path] = 0;
        return xml("<InitiateMultipartUploadResult><UploadId>1</UploadId></InitiateMultipartUploadResult>");
    }
    if (request.verb == "POST")
        return xml(
            "<CompleteMultipartUploadResult><ETag>\"00000000000000000000000000000000-1\"</ETag>"
            "</CompleteMultipartUploadResult>");
    if (request.verb == "GET")
        return xml(
            "<ListBucketResult><Name>bucket</Name><IsTruncated>false</IsTruncated></ListBucketResult>");
    if (request.verb == "DELETE") {
        objects_.erase(request.path);
        return {.status = 204};
    }
    const auto object = objects_.find(request.path);
    if (object == objects_.end()) return {.status = 404};
    return {.headLength = object->second,
            .extraHeaders = etag + "Last-Modified: Mon, 01 Jan 2024 00:00:00 GMT\r\n"};
}

}  // namespace bench
