#include "tests/quillboxd/service_fixture.h"

namespace quillboxd_test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class PackagesClient : public Client {
  public:
    using Client::Client;

    HttpAnswer batch(const std::string& operations) const {
        return post("/carrier/operation/reverseOrder",
                    R"({"batchSN":"batch","operationList":)" + operations + "}");
    }
    /// What becomes of one operation with these changes.
    json::object operate(const std::string& number, const std::string& changes,
                         const std::string& carrierUser = "") const {
        const auto answer = batch(R"([{"operationSN":")" + number + R"(","carrierUserId":")" + carrierUser +
                                  R"(","packageChangeList":)" + changes + "}]");
        EXPECT_EQ(answer.status, 200) << answer.body;
        const auto data = answer.object().at("data").as_array();
        EXPECT_EQ(textOf(data.at(0).as_object(), "batchSN"), "batch");
        return data.at(0).at("operationList").as_array().at(0).as_object();
    }
    void expectDone(const std::string& number, const std::string& changes) const {
        const auto outcome = operate(number, changes);
        EXPECT_EQ(textOf(outcome, "errorCode"), "0") << textOf(outcome, "errorMsg");
        EXPECT_EQ(outcome.at("status").as_int64(), 0);
    }
    void expectRefusal(const std::string& changes, const std::string& code, const std::string& words) const {
        const auto outcome = operate("refused", changes);
        EXPECT_EQ(textOf(outcome, "errorCode"), code);
        EXPECT_THAT(textOf(outcome, "errorMsg"), HasSubstr(words));
        EXPECT_EQ(outcome.at("status").as_int64(), 1);
    }
    json::array orders() const {
        return get("/carrier/standard/packages/orders").object().at("data").as_array();
    }
    /// "package status" of each order.
    std::vector<std::string> states() const {
        std::vector<std::string> states;
        for (const auto& order : orders())
            states.push_back(textOf(order.as_object(), "packageId") + " " +
                             std::to_string(order.at("status").as_int64()));
        return states;
    }
    std::int64_t capacity() const {
        return get("/space/?type=").object().at("data").at("capacity").as_int64();
    }
    HttpAnswer notify(const std::string& body) const {
        return post("/carrier/users/notifyPackageExpire", body);
    }
};

class PackagesTest : public testing::Test {
  protected:
    QuillboxdProcess process_{QuillboxdProcess::Storage::folder, {"--quota", "10"}};
    PackagesClient client_{process_.url()};
};

TEST_F(PackagesTest, TheCatalogueIsListed) {
    const auto list = client_.get("/carrier/standard/packages").object().at("data").as_array();
    ASSERT_EQ(list.size(), 4u);
    EXPECT_EQ(json::serialize(list[0]),
              R"({"packageId":"1001","name":"Notebook","type":1,"capacity":53687091200,"price":"0.99",)"
              R"("countryCode":"GB","currencyCode":"GBP","status":1,"promotionPrice":"0.49"})");
    EXPECT_EQ(list[3].at("status").as_int64(), 0);
    EXPECT_EQ(list[3].as_object().if_contains("promotionPrice"), nullptr);
}

TEST_F(PackagesTest, AnOrderGivesRoomUntilItIsTakenBack) {
    EXPECT_THAT(client_.orders(), IsEmpty());
    const auto body = client_.createBody("file", std::string(20, 'x'), 100);
    expectRefused(client_.create(body), 507, "20 bytes do not fit: 10 of 10");
    client_.expectDone("1", R"([{"changeType":1,"packageId":"1001"}])");
    EXPECT_EQ(client_.capacity(), 53'687'091'210);
    client_.upload("file", std::string(20, 'x'));
    client_.expectDone("2", R"([{"changeType":2,"packageId":"1001"}])");
    EXPECT_EQ(client_.capacity(), 10);
    EXPECT_THAT(client_.states(), ElementsAre("1001 2"));
    EXPECT_THAT(client_.names(), ElementsAre("file")) << "the files stay";
}

TEST_F(PackagesTest, AnOrderTellsItsPackageAndItsTimes) {
    client_.expectDone("1", R"([{"changeType":1,"packageId":"1002","activateTime":"2026-01-02T03:04:05Z",)"
                            R"("endTime":"2199-01-02T03:04:05.678Z"}])");
    EXPECT_EQ(
        json::serialize(client_.orders()),
        R"([{"packageId":"1002","name":"Ledger","type":1,"capacity":214748364800,"price":"2.99",)"
        R"("countryCode":"GB","currencyCode":"GBP","status":1,"activateTime":"2026-01-02T03:04:05.000Z",)"
        R"("endTime":"2199-01-02T03:04:05.678Z"}])");
}

TEST_F(PackagesTest, AnOrderHasItsTime) {
    client_.expectDone("1", R"([{"changeType":1,"packageId":"1001","activateTime":"2199-01-01T00:00:00Z"},)"
                            R"({"changeType":1,"packageId":"1002","activateTime":"2000-01-01T00:00:00Z",)"
                            R"("endTime":"2001-01-01T00:00:00Z"}])");
    EXPECT_THAT(client_.states(), ElementsAre("1002 2", "1001 0"));
    EXPECT_EQ(client_.capacity(), 10);
}

TEST_F(PackagesTest, SeveralOfAPackageAreOrderedAndTakenBack) {
    client_.expectDone("1", R"([{"changeType":1,"packageId":"1001","count":3}])");
    client_.expectDone("2", R"([{"changeType":2,"packageId":"1001","count":2}])");
    EXPECT_THAT(client_.states(), ElementsAre("1001 2", "1001 2", "1001 1"));
    client_.expectRefusal(R"([{"changeType":2,"packageId":"1001","count":2}])", "13000409", "only 1 orders");
}

TEST_F(PackagesTest, AnOperationIsDoneOnce) {
    const auto ordering = R"([{"changeType":1,"packageId":"1001"}])";
    client_.expectDone("same", ordering);
    client_.expectDone("same", ordering);
    process_.kill();
    process_.start();
    client_.expectDone("same", ordering);
    EXPECT_THAT(client_.states(), ElementsAre("1001 1"));
}

TEST_F(PackagesTest, AnOperationIsDoneWholeOrNotAtAll) {
    client_.expectRefusal(R"([{"changeType":1,"packageId":"1001"},{"changeType":1,"packageId":"9"}])",
                          "13000404", "no package \"9\"");
    EXPECT_THAT(client_.orders(), IsEmpty());
    client_.expectDone("refused", R"([{"changeType":1,"packageId":"1001"}])");
}

TEST_F(PackagesTest, OneOperationDoesNotHinderTheNext) {
    const auto answer = client_.batch(R"([{"operationSN":"1"},{"operationSN":"2","packageChangeList":)"
                                      R"([{"changeType":1,"packageId":"1001"}]}])");
    const auto outcomes = answer.object().at("data").as_array().at(0).at("operationList").as_array();
    EXPECT_EQ(textOf(outcomes.at(0).as_object(), "errorCode"), "13000400");
    EXPECT_EQ(textOf(outcomes.at(1).as_object(), "errorCode"), "0");
    EXPECT_THAT(client_.states(), ElementsAre("1001 1"));
}

TEST_F(PackagesTest, AChangeThatMakesNoSenseIsRefused) {
    client_.expectRefusal("[]", "13000400", "packageChangeList");
    client_.expectRefusal("[{}]", "13000400", "packageId");
    client_.expectRefusal(R"([{"packageId":"1001"}])", "13000400", "changeType");
    client_.expectRefusal(R"([{"changeType":3,"packageId":"1001"}])", "13000400", "changeType");
    client_.expectRefusal(R"([{"changeType":1,"packageId":"1001","count":0}])", "13000400", "count");
    client_.expectRefusal(R"([{"changeType":1,"packageId":"1001","endTime":"soon"}])", "13000400", "endTime");
    client_.expectRefusal(R"([{"changeType":1,"packageId":"1001","endTime":"2000-01-01T00:00:00Z"}])",
                          "13000400", "not after");
    client_.expectRefusal(R"([{"changeType":1,"packageId":"1004"}])", "13000409", "not on sale");
    EXPECT_EQ(textOf(client_.operate("x", R"([{"changeType":1,"packageId":"1001"}])", "5"), "errorCode"),
              "13000403");
    EXPECT_THAT(client_.orders(), IsEmpty());
}

/// A list of the same record so many times.
std::string repeated(const std::string& record, int times) {
    auto list = "[" + record;
    for (int i = 1; i < times; ++i) list += "," + record;
    return list + "]";
}

TEST_F(PackagesTest, AListHasAHundredEntriesAtMost) {
    const std::string change = R"({"changeType":1,"packageId":"1001"})";
    client_.expectRefusal(repeated(change, 101), "13000400", "\"packageChangeList\" has more than 100");
    expectRefused(client_.batch(repeated("{}", 101)), 400, "\"operationList\" has more than 100");
    client_.expectDone("1", repeated(change, 100));
    EXPECT_EQ(client_.batch(repeated("{}", 100)).status, 200);
}

TEST_F(PackagesTest, AnAccountHasTenThousandOrdersAtMost) {
    client_.expectDone("1", repeated(R"({"changeType":1,"packageId":"1003","count":100})", 100));
    EXPECT_EQ(client_.capacity(), 10 + 10'000 * (std::int64_t{2048} << 30));
    client_.expectDone("2", R"([{"changeType":2,"packageId":"1003"}])");
    client_.expectRefusal(R"([{"changeType":1,"packageId":"1001"}])", "13000409", "10000 orders at most");
    EXPECT_EQ(client_.capacity(), 10 + 9'999 * (std::int64_t{2048} << 30));
}

TEST_F(PackagesTest, ABatchNeedsItsNumberAndItsOperations) {
    const auto send = [&](const std::string& body) {
        return client_.post("/carrier/operation/reverseOrder", body);
    };
    expectRefused(send("{}"), 400, "batchSN");
    expectRefused(send(R"({"batchSN":"b"})"), 400, "operationList");
    expectRefused(send(R"({"batchSN":"b","operationList":[{}],"assetClaerPolicy":1})"), 400,
                  "assetClaerPolicy");
    expectRefused(client_.batch(R"([{"packageChangeList":[{"packageId":1001}]}])"), 400,
                  "packageChangeList[0].packageId");
}

TEST_F(PackagesTest, APackageRunsOut) {
    client_.expectDone("1", R"([{"changeType":1,"packageId":"1001"}])");
    EXPECT_EQ(client_.notify(R"({"type":1,"packageId":1001})").status, 200);
    EXPECT_THAT(client_.states(), ElementsAre("1001 3"));
    EXPECT_GT(client_.capacity(), 10) << "it still gives its room";
    EXPECT_EQ(client_.notify(R"({"type":2,"packageId":1001,"carrierUserId":")" + client_.container() + "\"}")
                  .status,
              200);
    EXPECT_THAT(client_.states(), ElementsAre("1001 2"));
    expectRefused(client_.notify(R"({"type":1,"packageId":1001})"), 404, "no order of the package 1001");
}

TEST_F(PackagesTest, ANoticeNamesAPackageByANumber) {
    expectRefused(client_.notify("{}"), 400, "packageId");
    expectRefused(client_.notify(R"({"packageId":"1001"})"), 400, "must be an integer");
    expectRefused(client_.notify(R"({"packageId":1001})"), 400, "type");
    expectRefused(client_.notify(R"({"type":3,"packageId":1001})"), 400, "type");
    expectRefused(client_.notify(R"({"type":1,"packageId":9})"), 404, "no package");
    expectRefused(client_.notify(R"({"type":1,"packageId":1001,"carrierUserId":"5"})"), 403, "container");
}

TEST_F(PackagesTest, AnotherAccountHasItsOwnOrders) {
    client_.expectDone("1", R"([{"changeType":1,"packageId":"1001"}])");
    const PackagesClient other(process_.url(), "other");
    EXPECT_THAT(other.orders(), IsEmpty());
    EXPECT_EQ(other.capacity(), 10);
}

}  // namespace
}  // namespace quillboxd_test
