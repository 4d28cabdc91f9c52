#include "tests/quillboxd/service_fixture.h"

#include <algorithm>
#include <random>
#include <stdexcept>

#include "quillboxd/crypto/proof_code.h"

namespace quillboxd_test {
namespace {

constexpr const char* prefix = "/quillbox/ose/v1";

}  // namespace

std::string someBytes(std::size_t count, unsigned seed) {
    std::mt19937 engine(seed);
    std::string bytes(count, '\0');
    std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(engine()); });
    return bytes;
}

Client::Client(std::string url, const std::string& authCode) : url_(std::move(url)) {
    const auto body = json::serialize(json::object{{"authCode", authCode}});
    const auto answer = send("POST", url_ + prefix + "/carrier/standard/user/auth", {}, body);
    if (answer.status != 200) throw std::runtime_error("no sign-in: " + answer.error + answer.body);
    token_ = textOf(answer.object(), "accessToken");
    container_ = textOf(answer.object().at("data").as_object(), "carrierUserId");
}

HttpAnswer Client::post(const std::string& path, const std::string& body) const {
    return send("POST", url_ + prefix + path, {"Authorization: " + token_, "Content-Type: application/json"},
                body);
}

HttpAnswer Client::get(const std::string& pathAndQuery) const {
    return send("GET", url_ + prefix + pathAndQuery, {"Authorization: " + token_});
}

json::object Client::createBody(const std::string& name, const std::string& bytes,
                                std::size_t partSize) const {
    json::array parts;
    quillboxd::Sha256 hash;
    for (std::size_t offset = 0; offset < bytes.size(); offset += partSize) {
        const auto size = std::min(partSize, bytes.size() - offset);
        const auto state = hash.state();
        parts.push_back({{"partNumber", parts.size() + 1},
                         {"partSize", size},
                         {"partOffset", offset},
                         {"hashCtx", json::array(state.begin(), state.end())}});
        hash.update(std::string_view(bytes).substr(offset, size));
    }
    return {{"fileName", name},       {"sha256", sha256Hex(bytes)},
            {"length", bytes.size()}, {"uploadMode", "multipart"},
            {"autoRename", 4},        {"multiParts", std::move(parts)}};
}

std::vector<HttpAnswer> Client::putParts(const json::object& created, const std::string& bytes) const {
    std::vector<HttpAnswer> answers;
    for (const auto& part : created.at("multiParts").as_array()) {
        const auto offset = part.at("partOffset").to_number<std::size_t>();
        const auto size = part.at("partSize").to_number<std::size_t>();
        answers.push_back(send("PUT", textOf(part.as_object(), "uploadUrl"),
                               {"Content-Type: application/octet-stream"}, bytes.substr(offset, size)));
    }
    return answers;
}

HttpAnswer Client::complete(const std::string& fileId, const std::string& bytes) const {
    return post("/files/complete",
                json::serialize(json::object{{"fileId", fileId}, {"sha256", sha256Hex(bytes)}}));
}

std::string Client::upload(const std::string& name, const std::string& bytes, std::size_t partSize,
                           const std::string& parent) const {
    auto body = createBody(name, bytes, partSize);
    body["parentFolder"] = json::array{parent};
    const auto created = create(body).object();
    const auto id = textOf(created, "fileId");
    for (const auto& answer : putParts(created, bytes))
        EXPECT_EQ(answer.status, 200) << answer.error << answer.body;
    const auto completed = complete(id, bytes);
    EXPECT_EQ(completed.status, 200) << completed.body;
    return id;
}

std::string Client::makeFolder(const std::string& name, const std::string& parent) const {
    const json::object body{{"fileName", name}, {"parentFolder", json::array{parent}}, {"renameMode", 1}};
    return textOf(post("/directory", json::serialize(body)).object(), "id");
}

std::string Client::contentUrl(const std::string& fileId) const {
    const auto detail = post("/files/" + fileId + "/detail", "{}").object();
    return textOf(detail.at("downloadLinks").as_array().at(0).as_object(), "downloadLink");
}

std::string Client::download(const std::string& fileId) const {
    return send("GET", contentUrl(fileId)).body;
}

std::vector<std::string> Client::names(const std::string& parent) const {
    std::vector<std::string> names;
    const auto answer = post("/files/list", json::serialize(json::object{{"parentFileId", parent}})).object();
    for (const auto& file : answer.at("files").as_array())
        names.push_back(textOf(file.as_object(), "fileName"));
    return names;
}

std::string Client::proofCode(const std::string& bytes) const {
    const auto range = quillboxd::proofRange(token_, static_cast<std::int64_t>(bytes.size()));
    return sha256Hex(std::string_view(bytes).substr(static_cast<std::size_t>(range.offset),
                                                    static_cast<std::size_t>(range.length)));
}

std::vector<std::string> column(const HttpAnswer& answer, const char* list, const char* key) {
    EXPECT_EQ(answer.status, 200) << answer.error << answer.body;
    std::vector<std::string> values;
    if (answer.status != 200) return values;
    const auto object = answer.object();
    for (const auto& row : object.at(list).as_array()) values.push_back(textOf(row.as_object(), key));
    return values;
}

void expectRefused(const HttpAnswer& answer, int status, const std::string& words) {
    ASSERT_EQ(answer.status, status) << answer.error << answer.body;
    const auto body = answer.object();
    EXPECT_NE(body.at("code").to_number<std::int64_t>(), 0) << answer.body;
    EXPECT_THAT(textOf(body, "msg"), testing::HasSubstr(words));
}

}  // namespace quillboxd_test
