#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "tests/quillboxd/service_fixture.h"

namespace quillboxd_test {

/// What the jobs of a person do and tell.
class JobsClient : public Client {
  public:
    explicit JobsClient(const std::string& url, const std::string& authCode = "someone")
        : Client(url, authCode), url_(url) {}

    /// The body of a job over the items of these ids.
    static json::object body(int type, const std::vector<std::string>& ids, const std::string& to = "") {
        json::array files;
        for (const auto& id : ids) files.push_back(json::object{{"fileId", id}});
        json::object task{{"fileInfo", std::move(files)}};
        if (!to.empty()) task["newFilePath"] = to;
        return {{"taskType", type}, {"taskInfo", std::move(task)}};
    }
    HttpAnswer create(const json::object& body) const { return post("/jobs", json::serialize(body)); }
    std::string start(const json::object& body) const {
        const auto answer = create(body);
        EXPECT_EQ(answer.status, 200) << answer.body;
        return answer.status == 200 ? textOf(answer.object(), "data") : "";
    }
    HttpAnswer cancel(const std::string& id) const {
        return post("/cancel", json::serialize(json::object{{"jobId", id}}));
    }
    json::object detail(const std::string& id) const { return get("/" + id).object().at("data").as_object(); }
    static json::object info(const json::object& detail) { return detail.at("jobInfo").as_object(); }
    static std::int64_t number(const json::object& object, const char* key) {
        return object.at(key).as_int64();
    }

    /// Asks until the job is at this point of its progress, or has ended.
    json::object awaitProgress(const std::string& id, std::int64_t percent) const {
        return await(id, [&](const auto& job) {
            return number(job, "status") == 1 && number(job, "progress") >= percent;
        });
    }
    /// Asks until the job has ended.
    json::object awaitEnd(const std::string& id) const {
        return await(id, [](const auto&) { return false; });
    }
    /// Makes the job and awaits its end.
    json::object run(const json::object& body) const { return awaitEnd(start(body)); }

    /// The texts of a key in the list of an answer's detail.
    static std::vector<std::string> column(const json::object& detail, const char* list, const char* key) {
        std::vector<std::string> texts;
        for (const auto& row : detail.at(list).as_array()) {
            const auto* value = row.as_object().if_contains(key);
            texts.push_back(value ? std::string(value->as_string()) : "");
        }
        return texts;
    }

    /// Lets the jobs make so many more steps.
    void allow(int steps) const {
        const auto body = json::serialize(json::object{{"steps", steps}});
        EXPECT_EQ(send("POST", url_ + "/_dev/jobs", {}, body).status, 200);
    }
    void release() const { EXPECT_EQ(send("DELETE", url_ + "/_dev/jobs").status, 200); }

  private:
    template <class Condition>
    json::object await(const std::string& id, Condition reached) const {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(2);
        while (std::chrono::steady_clock::now() < deadline) {
            auto detail = this->detail(id);
            if (number(info(detail), "status") >= 2 || reached(info(detail))) return detail;
        }
        ADD_FAILURE() << "the job " << id << " came to no end: " << json::serialize(detail(id));
        return detail(id);
    }

    std::string url_;
};

}  // namespace quillboxd_test
