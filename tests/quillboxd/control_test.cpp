#include <chrono>
#include <future>
#include <thread>

#include "tests/quillboxd/service_fixture.h"

namespace quillboxd_test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

using Clock = std::chrono::steady_clock;

class ControlTest : public ServiceTest {
  protected:
    HttpAnswer dev(const std::string& verb, const std::string& path, const std::string& body = "") const {
        return send(verb, process_.url() + "/_dev/" + path, {}, body);
    }

    HttpAnswer plan(const json::object& fault) const { return dev("POST", "faults", json::serialize(fault)); }
    HttpAnswer planAt(const std::string& path, json::object fault) const {
        fault["path"] = path;
        return plan(fault);
    }

    json::array journal() const { return dev("GET", "requests").object().at("requests").as_array(); }

    static constexpr const char* list_ = "/quillbox/ose/v1/files/list";
};

TEST_F(ControlTest, HealthTellsVersionAndState) {
    const auto health = dev("GET", "health").object();
    EXPECT_EQ(textOf(health, "state"), "ready");
    EXPECT_FALSE(textOf(health, "version").empty());
}

TEST_F(ControlTest, AResetLeavesNothing) {
    const auto id = client_.upload("file", "bytes");
    const auto url = client_.contentUrl(id);
    planAt(list_, {{"kind", "html"}});
    EXPECT_EQ(dev("POST", "reset").status, 200);
    EXPECT_THAT(journal(), IsEmpty());
    EXPECT_THAT(dev("GET", "faults").object().at("faults").as_array(), IsEmpty());
    expectRefused(client_.get("/access"), 401, "unknown");
    expectRefused(send("GET", url), 404, "gone");
    const Client again(process_.url());
    EXPECT_THAT(again.names(), IsEmpty());
    EXPECT_FALSE(again.create(again.createBody("file", "bytes", 64)).object().at("rapidUpload").as_bool());
}

TEST_F(ControlTest, TheJournalNamesEachRequestInOrder) {
    client_.post("/files/list", R"({"type":"list"})");
    client_.get("/files/path?fileId=5");
    const auto entries = journal();
    ASSERT_EQ(entries.size(), 3u);
    const auto& list = entries[1].as_object();
    EXPECT_EQ(list.at("seq").as_int64(), 2);
    EXPECT_EQ(textOf(list, "verb"), "POST");
    EXPECT_EQ(textOf(list, "path"), list_);
    EXPECT_EQ(textOf(list, "query"), "");
    EXPECT_EQ(list.at("bodyLength").as_int64(), 15);
    EXPECT_EQ(textOf(list, "bodySha256"), sha256Hex(R"({"type":"list"})"));
    EXPECT_EQ(list.at("status").as_int64(), 200);
    EXPECT_GT(list.at("millis").to_number<double>(), 0);
    EXPECT_EQ(textOf(list.at("headers").as_object(), "Content-Type"), "application/json");
    const auto& path = entries[2].as_object();
    EXPECT_EQ(textOf(path, "query"), "fileId=5");
    EXPECT_EQ(path.at("status").as_int64(), 404);
    EXPECT_EQ(textOf(path, "bodySha256"), sha256Hex(""));
}

TEST_F(ControlTest, TheJournalKnowsTheBytesOfAPart) {
    const auto bytes = someBytes(1'500'000);
    client_.upload("a.bin", bytes, 2'000'000);
    const auto entries = journal();
    const auto& put = entries.at(2).as_object();
    EXPECT_EQ(textOf(put, "verb"), "PUT");
    EXPECT_EQ(put.at("bodyLength").as_int64(), 1'500'000);
    EXPECT_EQ(textOf(put, "bodySha256"), sha256Hex(bytes));
}

TEST_F(ControlTest, TheTokenIsMaskedWhereverItStands) {
    const auto& token = client_.token();
    send("GET", process_.url() + "/quillbox/ose/v1/files/path?fileId=" + token,
         {"Authorization: " + token, "X-Copy: before " + token + " after"});
    send("GET", process_.url() + "/path/" + token, {"Authorization: " + token});
    const auto text = dev("GET", "requests").body;
    EXPECT_THAT(text, Not(HasSubstr(token)));
    EXPECT_THAT(text, HasSubstr("before *** after"));
    EXPECT_THAT(text, HasSubstr("/path/***"));
}

TEST_F(ControlTest, TheJournalStaysJsonWhateverABytesAHeaderHolds) {
    exchangeRaw(process_.port(),
                "GET /x HTTP/1.1\r\nHost: x\r\nX-Odd: \xff\xfe\xc3\r\nConnection: close\r\n\r\n");
    EXPECT_THAT(textOf(journal().at(1).at("headers").as_object(), "X-Odd"), "???");
}

TEST_F(ControlTest, AStatusTakesTheAnswersPlaceAndTheWorkIsNotDone) {
    planAt("/quillbox/ose/v1/directory",
           {{"verb", "POST"}, {"kind", "status"}, {"status", 507}, {"body", {{"code", 5}, {"msg", "full"}}}});
    const auto answer = client_.post("/directory", R"({"fileName":"x"})");
    EXPECT_EQ(answer.status, 507);
    EXPECT_EQ(answer.body, R"({"code":5,"msg":"full"})");
    EXPECT_THAT(client_.names(), IsEmpty());
    EXPECT_EQ(client_.post("/directory", R"({"fileName":"x"})").status, 200);
}

TEST_F(ControlTest, AfterAndTimesChooseTheRequests) {
    planAt(list_, {{"after", 1}, {"times", 2}, {"kind", "status"}, {"status", 503}});
    std::vector<int> statuses;
    for (int i = 0; i < 5; ++i) statuses.push_back(client_.post("/files/list", "{}").status);
    EXPECT_THAT(statuses, ElementsAre(200, 503, 503, 200, 200));
    const auto faults = dev("GET", "faults").object();
    const auto& fault = faults.at("faults").at(0).as_object();
    EXPECT_EQ(fault.at("hits").as_int64(), 2);
    EXPECT_EQ(textOf(fault, "path"), list_);
}

TEST_F(ControlTest, AStarFitsEveryPathThatStartsSo) {
    planAt("/quillbox/ose/v1/files/*", {{"times", 2}, {"kind", "status"}, {"status", 503}});
    EXPECT_EQ(client_.get("/access").status, 200);
    EXPECT_EQ(client_.get("/files/path").status, 503);
    EXPECT_EQ(client_.post("/files/list", "{}").status, 503);
    EXPECT_EQ(client_.get("/files/path").status, 200);
}

TEST_F(ControlTest, AnotherVerbIsNotHit) {
    planAt(list_, {{"verb", "GET"}, {"kind", "status"}, {"status", 503}});
    EXPECT_EQ(client_.post("/files/list", "{}").status, 200);
}

TEST_F(ControlTest, PlansAreForgottenTogether) {
    EXPECT_EQ(planAt(list_, {{"kind", "html"}}).object().at("id").as_int64(), 1);
    EXPECT_EQ(planAt(list_, {{"kind", "html"}}).object().at("id").as_int64(), 2);
    EXPECT_EQ(dev("DELETE", "faults").status, 200);
    EXPECT_EQ(client_.post("/files/list", "{}").header("content-type"), "application/json; charset=utf-8");
}

TEST_F(ControlTest, AResetBreaksTheConnection) {
    planAt(list_, {{"kind", "reset"}});
    const auto answer = client_.post("/files/list", "{}");
    EXPECT_EQ(answer.status, 0);
    EXPECT_THAT(answer.error, HasSubstr("receiving data"));
    EXPECT_EQ(client_.post("/files/list", "{}").status, 200);
}

TEST_F(ControlTest, AResetBreaksAPartOnItsWay) {
    const auto bytes = someBytes(4'000'000);
    planAt("/_part/*", {{"kind", "reset"}});
    const auto created = client_.create(client_.createBody("a.bin", bytes, bytes.size())).object();
    EXPECT_EQ(client_.putParts(created, bytes).at(0).status, 0);
    expectRefused(client_.complete(textOf(created, "fileId"), bytes), 409, "missing");
}

TEST_F(ControlTest, AStallAnswersLate) {
    planAt(list_, {{"kind", "stall"}, {"seconds", 0.3}});
    const auto start = Clock::now();
    EXPECT_EQ(client_.post("/files/list", "{}").status, 200);
    EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(300));
}

TEST_F(ControlTest, ForgettingThePlansEndsAStall) {
    planAt(list_, {{"kind", "stall"}, {"seconds", 3600}});
    auto answer = std::async(std::launch::async, [&] { return client_.post("/files/list", "{}"); });
    while (dev("GET", "faults").object().at("faults").at(0).at("hits").as_int64() == 0)
        std::this_thread::yield();
    dev("DELETE", "faults");
    EXPECT_EQ(answer.get().status, 200);
}

TEST_F(ControlTest, AStalledRequestStandsInTheJournalWithoutAStatus) {
    planAt(list_, {{"kind", "stall"}, {"seconds", 3600}});
    auto answer = std::async(std::launch::async, [&] { return client_.post("/files/list", "{}"); });
    while (journal().size() < 2) std::this_thread::yield();
    EXPECT_EQ(journal().at(1).at("status").as_int64(), 0);
    dev("DELETE", "faults");
    answer.get();
    EXPECT_EQ(journal().at(1).at("status").as_int64(), 200);
}

TEST_F(ControlTest, ATrickleSendsTheRealAnswerSlowly) {
    const auto url = client_.contentUrl(client_.upload("file", std::string(2000, 'x')));
    planAt("/_content/*", {{"kind", "trickle"}, {"bytesPerSecond", 5000}});
    const auto start = Clock::now();
    EXPECT_EQ(send("GET", url).body, std::string(2000, 'x'));
    EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(350));
}

TEST_F(ControlTest, ATruncatedAnswerAnnouncesTheWholeLength) {
    const auto bytes = someBytes(500'000);
    const auto url = client_.contentUrl(client_.upload("file", bytes, 100'000));
    planAt("/_content/*", {{"kind", "truncate"}, {"bytes", 250'000}});
    const auto answer = send("GET", url);
    EXPECT_EQ(answer.status, 0);
    EXPECT_THAT(answer.error, HasSubstr("partial file"));
    EXPECT_EQ(answer.header("content-length"), "500000");
    EXPECT_EQ(answer.body, bytes.substr(0, 250'000));
}

TEST_F(ControlTest, ATruncatedCallHasDoneItsWork) {
    planAt("/quillbox/ose/v1/directory", {{"kind", "truncate"}, {"bytes", 3}});
    EXPECT_EQ(client_.post("/directory", R"({"fileName":"x"})").body, "{\"c");
    EXPECT_THAT(client_.names(), ElementsAre("x"));
}

TEST_F(ControlTest, GarbageIsNoHttp) {
    planAt(list_, {{"kind", "garbage"}});
    const auto answer = client_.post("/files/list", "{}");
    EXPECT_EQ(answer.status, 0);
    EXPECT_NE(answer.error, "");
}

TEST_F(ControlTest, APageAndAnEmptyAnswerLookLikeSuccess) {
    planAt(list_, {{"kind", "html"}});
    planAt(list_, {{"kind", "empty"}});
    const auto page = client_.post("/files/list", "{}");
    EXPECT_EQ(page.status, 200);
    EXPECT_THAT(page.body, HasSubstr("<html>"));
    client_.post("/files/list", "{}");
    const auto second = journal();
    EXPECT_EQ(second.back().at("status").as_int64(), 204);
}

TEST_F(ControlTest, AnExpiredAddressIsRefused) {
    const auto url = client_.contentUrl(client_.upload("file", "bytes"));
    planAt("/_content/*", {{"kind", "expire"}});
    expectRefused(send("GET", url), 403, "expired");
    EXPECT_EQ(send("GET", url).status, 200);

    planAt("/_part/*", {{"kind", "expire"}});
    const auto created = client_.create(client_.createBody("b", "other", 64)).object();
    expectRefused(client_.putParts(created, "other").at(0), 403, "expired");
    expectRefused(client_.complete(textOf(created, "fileId"), "other"), 409, "missing");
}

TEST_F(ControlTest, APlanThatCannotBeIsRefused) {
    expectRefused(plan({{"kind", "html"}}), 400, "path");
    expectRefused(planAt(list_, json::object()), 400, "kind");
    expectRefused(planAt(list_, {{"kind", "earthquake"}}), 400, "earthquake");
    expectRefused(planAt(list_, {{"kind", "status"}}), 400, "status");
    expectRefused(planAt(list_, {{"kind", "status"}, {"status", 99}}), 400, "status");
    expectRefused(planAt(list_, {{"kind", "stall"}}), 400, "seconds");
    expectRefused(planAt(list_, {{"kind", "trickle"}}), 400, "bytesPerSecond");
    expectRefused(planAt(list_, {{"kind", "truncate"}, {"bytes", -1}}), 400, "bytes");
    expectRefused(planAt(list_, {{"kind", "expire"}}), 400, "/_part/");
    expectRefused(planAt(list_, {{"kind", "html"}, {"times", 0}}), 400, "times");
    expectRefused(planAt(list_, {{"kind", "html"}, {"after", -1}}), 400, "after");
    expectRefused(dev("POST", "faults", "not json"), 400, "not JSON");
}

}  // namespace
}  // namespace quillboxd_test
