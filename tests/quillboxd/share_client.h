#pragma once

#include <string>
#include <vector>

#include "tests/quillboxd/service_fixture.h"

namespace quillboxd_test {

/// A service in memory with two people, and a file and a folder of the first one's.
class ShareTest : public testing::Test {
  protected:
    HttpAnswer put(const Client& client, const std::string& path, const std::string& body) const {
        return send("PUT", process_.url() + "/quillbox/ose/v1" + path, {"Authorization: " + client.token()},
                    body);
    }

    static json::object linkOf(const HttpAnswer& answer) {
        EXPECT_EQ(answer.status, 200) << answer.error << answer.body;
        if (answer.status != 200) return {};
        return answer.object().at("shareLink").as_object();
    }
    HttpAnswer askForShare(const std::string& members) const {
        return owner_.post("/share", "{" + members + "}");
    }
    /// A new link to the file with these members of the request besides.
    json::object share(const std::string& more = "") const {
        return linkOf(askForShare(R"("fileIds":[")" + file_ + "\"]" + (more.empty() ? "" : "," + more)));
    }
    static std::string idOf(const json::object& link) { return textOf(link, "shareId"); }
    static std::string shortUrlOf(const json::object& link) { return textOf(link, "shortUrl"); }

    json::object detail(const std::string& id) const { return linkOf(owner_.get("/share/" + id)); }
    HttpAnswer modify(const std::string& id, const std::string& body) const {
        return put(owner_, "/share/" + id, body);
    }
    HttpAnswer cancel(const std::string& ids) const {
        return owner_.post("/share/cancel", R"({"shareIds":)" + ids + "}");
    }
    /// What a visitor who is not signed in gets.
    HttpAnswer visit(const json::object& link, const std::string& more = "") const {
        return send("POST", process_.url() + "/quillbox/ose/v1/share/files", {},
                    R"({"shortUrl":")" + shortUrlOf(link) + "\"" + (more.empty() ? "" : "," + more) + "}");
    }
    static HttpAnswer visitAs(const Client& client, const json::object& link) {
        return client.post("/share/files", R"({"shortUrl":")" + shortUrlOf(link) + "\"}");
    }
    std::vector<std::string> listed(const std::string& query = "") const {
        return column(owner_.get("/share" + query), "shareLinks", "displayName");
    }
    /// The address of the visitor's first file, of the usage "content" or "preview".
    std::string address(const json::object& link, const std::string& usage,
                        const std::string& more = "") const {
        const auto answer = visit(link, more).object();
        for (const auto& each : answer.at("files").at(0).at("downloadLinks").as_array())
            if (textOf(each.as_object(), "usage") == usage) return textOf(each.as_object(), "downloadLink");
        return {};
    }
    void expireLinks() const { EXPECT_EQ(send("DELETE", process_.url() + "/_dev/shares").status, 200); }
    /// The account id of a person, as it stands on the wire.
    std::string userId(const std::string& authCode) const {
        const auto answer = send("POST", process_.url() + "/quillbox/ose/v1/carrier/standard/user/auth", {},
                                 R"({"authCode":")" + authCode + "\"}");
        return std::to_string(answer.object().at("innerUserId").as_int64());
    }

    QuillboxdProcess process_{QuillboxdProcess::Storage::memory};
    Client owner_{process_.url(), "owner"};
    Client other_{process_.url(), "other"};
    std::string file_ = owner_.upload("a.txt", "hello");
    std::string folder_ = owner_.makeFolder("folder");
};

}  // namespace quillboxd_test
