#pragma once

#include <optional>
#include <string>

#include "tests/quillboxd/service_fixture.h"

namespace quillboxd_test {

/// What a backup asks of the service.
class BackupClient : public Client {
  public:
    explicit BackupClient(std::string url, const std::string& authCode = "someone")
        : Client(url, authCode), url_(std::move(url)) {}

    using Lock = std::optional<std::string>;

    /// `path` stands behind "/quillbox/ose/v1/backup/".
    HttpAnswer plain(const std::string& verb, const std::string& path, const std::string& body = "",
                     const Lock& lock = {}) const {
        return ask(verb, "/quillbox/ose/v1/backup/" + path, body, lock);
    }
    /// Behind "/quillbox/cloudfileh5/v1/backup/".
    HttpAnswer cloudFile(const std::string& verb, const std::string& path, const std::string& body = "",
                         const Lock& lock = {}) const {
        return ask(verb, "/quillbox/cloudfileh5/v1/backup/" + path, body, lock);
    }

    HttpAnswer askForLock(const std::string& module) const {
        return plain("POST", "lock", json::serialize(json::object{{"moduleCode", module}}));
    }
    std::string takeLock(const std::string& module = "102") const {
        return textOf(dataOf(askForLock(module)), "lockId");
    }
    HttpAnswer askForRecord(const Lock& lock, const std::string& module = "102",
                            std::int64_t device = 7) const {
        return plain("POST", "record",
                     json::serialize(json::object{{"moduleCode", module}, {"deviceId", device}}), lock);
    }
    std::string addRecord(const std::string& lock, const std::string& module = "102",
                          std::int64_t device = 7) const {
        return textOf(dataOf(askForRecord(lock, module, device)), "recordId");
    }
    HttpAnswer finish(const std::string& record, const Lock& lock, const std::string& body = "{}") const {
        return cloudFile("PATCH", "record/" + record, body, lock);
    }
    HttpAnswer remove(const std::string& record, const Lock& lock) const {
        return plain("DELETE", "record/" + record, json::serialize(json::object{{"recordId", record}}), lock);
    }
    json::object record(const std::string& id) const { return dataOf(plain("GET", "record/" + id)); }
    /// The values of `key` in the list of an answer.
    std::vector<std::string> recordIds(const std::string& query) const {
        return column(cloudFile("GET", "record?" + query), "data", "recordId");
    }

    static json::object dataOf(const HttpAnswer& answer) {
        EXPECT_EQ(answer.status, 200) << answer.error << answer.body;
        if (answer.status != 200) return {};
        return answer.object().at("data").as_object();
    }

  private:
    HttpAnswer ask(const std::string& verb, const std::string& path, const std::string& body,
                   const Lock& lock) const {
        std::vector<std::string> headers{"Authorization: " + token(), "Content-Type: application/json"};
        // libcurl takes a header without a value with a semicolon in the colon's place.
        if (lock) headers.push_back(lock->empty() ? "x-backup-lock-id;" : "x-backup-lock-id: " + *lock);
        return send(verb, url_ + path, headers, body);
    }

    std::string url_;
};

/// A service in memory, with one device of one person.
class BackupTest : public testing::Test {
  protected:
    void expireLocks() const { EXPECT_EQ(send("DELETE", process_.url() + "/_dev/locks").status, 200); }

    QuillboxdProcess process_{QuillboxdProcess::Storage::memory};
    BackupClient client_{process_.url()};
};

}  // namespace quillboxd_test
