#pragma once

#include <string>
#include <vector>

#include "tests/quillboxd/service_fixture.h"

namespace quillboxd_test {

/// A service in memory with two people, who may come to share folders and albums.
class AlbumTest : public testing::Test {
  protected:
    HttpAnswer remove(const Client& client, const std::string& path, const std::string& body = "") const {
        return send("DELETE", process_.url() + "/quillbox/ose/v1" + path,
                    {"Authorization: " + client.token()}, body);
    }
    static json::object answerOf(const HttpAnswer& answer) {
        EXPECT_EQ(answer.status, 200) << answer.error << answer.body;
        return answer.status == 200 ? answer.object() : json::object();
    }
    static std::int64_t totalOf(const HttpAnswer& answer) { return answerOf(answer).at("total").as_int64(); }

    std::string newShareFolder(const Client& client, const std::string& name) const {
        return textOf(answerOf(client.post("/sharefolder/create", R"({"name":")" + name + "\"}")), "id");
    }
    HttpAnswer join(const std::string& folder, const std::string& user) const {
        return send("POST", process_.url() + "/_dev/sharefolders/" + folder + "/members", {},
                    R"({"userId":")" + user + "\"}");
    }
    std::string userId(const std::string& authCode) const {
        const auto answer = send("POST", process_.url() + "/quillbox/ose/v1/carrier/standard/user/auth", {},
                                 R"({"authCode":")" + authCode + "\"}");
        return std::to_string(answer.object().at("innerUserId").as_int64());
    }
    /// A new album with these members of the request besides.
    HttpAnswer askForAlbum(const Client& client, const std::string& name,
                           const std::string& more = "") const {
        return client.post("/album/create",
                           R"({"name":")" + name + "\"" + (more.empty() ? "" : "," + more) + "}");
    }
    std::string newAlbum(const Client& client, const std::string& name, const std::string& more = "") const {
        return textOf(answerOf(askForAlbum(client, name, more)), "albumId");
    }
    static HttpAnswer put(const Client& client, const std::string& album, const std::string& file) {
        return client.post("/album/" + album + "/add", R"({"fileIds":[{"fileId":")" + file + "\"}]}");
    }
    std::vector<std::string> contents(const Client& client, const std::string& album,
                                      const std::string& query = "") const {
        return column(client.get("/album/" + album + "/list" + query), "contentList", "fileName");
    }

    QuillboxdProcess process_{QuillboxdProcess::Storage::memory};
    Client owner_{process_.url(), "owner"};
    Client other_{process_.url(), "other"};
};

}  // namespace quillboxd_test
