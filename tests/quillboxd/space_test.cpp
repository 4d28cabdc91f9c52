#include <atomic>
#include <thread>

#include "quillboxd/store/database.h"
#include "tests/quillboxd/service_fixture.h"

namespace quillboxd_test {
namespace {

using testing::HasSubstr;

constexpr std::int64_t quota = 1000;

class SpaceTest : public testing::Test {
  protected:
    json::object spaceOf(const Client& client, const std::string& target = "/space/?type=") const {
        const auto answer = client.get(target);
        EXPECT_EQ(answer.status, 200) << answer.body;
        return answer.object().at("data").as_object();
    }
    std::int64_t used(const Client& client) const { return spaceOf(client).at("spaceUsed").as_int64(); }
    json::array batch(const Client& client, const std::string& list) const {
        const auto answer = client.post("/space/batchGetSpace", R"({"batchGetSpaceReq":)" + list + "}");
        EXPECT_EQ(answer.status, 200) << answer.body;
        return answer.object().at("batchGetSpaceResponse").as_array();
    }
    HttpAnswer create(const Client& client, const std::string& name, const std::string& bytes) const {
        return client.create(client.createBody(name, bytes, 1 << 20));
    }

    QuillboxdProcess process_{QuillboxdProcess::Storage::memory, {"--quota", std::to_string(quota)}};
    Client anna_{process_.url(), "anna"};
    Client ben_{process_.url(), "ben"};
};

// ---- what is told

TEST_F(SpaceTest, ASpaceIsToldWhole) {
    auto space = spaceOf(ben_);
    EXPECT_THAT(textOf(space, "createTime"), HasSubstr("T"));
    space.erase("createTime");
    EXPECT_EQ(space, json::parse(R"({"tenantId":"quillbox","creator":"102","ownerId":"102","type":1,)"
                                 R"("status":0,"capacity":1000,"spaceUsed":0,"containerId":"202",)"
                                 R"("rootFileId":"root"})"));
    EXPECT_EQ(spaceOf(ben_, "/space/102?type=1&containerId=202"), spaceOf(ben_));
    EXPECT_EQ(spaceOf(ben_, "/space/?type=&containerId="), spaceOf(ben_));
    EXPECT_EQ(spaceOf(ben_, "/space/?type=&containerId=102"), spaceOf(ben_)) << "the user's id stands for it";
}

TEST_F(SpaceTest, ASpaceThatIsNoneOfTheCallersIsRefused) {
    expectRefused(ben_.get("/space/101?type=1"), 403, "administrator");
    expectRefused(ben_.get("/space/999?type=1"), 404, "no user 999");
    expectRefused(ben_.get("/space/x?type=1"), 400, "ownerId");
    expectRefused(ben_.get("/space/102?type=2"), 404, "type 2");
    expectRefused(ben_.get("/space/102?type=x"), 400, "type");
    for (const auto* others : {"201", "101"})
        expectRefused(ben_.get("/space/102?type=1&containerId=" + std::string(others)), 403,
                      "not this owner's");
    EXPECT_EQ(textOf(spaceOf(anna_, "/space/102?type=1&containerId=202"), "ownerId"), "102");
}

TEST_F(SpaceTest, ABatchAnswersEachEntryForItself) {
    const auto answers = batch(ben_, R"([{"ownerId":"102","type":1},{"ownerId":"101","type":1},{},)"
                                     R"({"ownerId":"102","type":7},{"ownerId":"x"}])");
    ASSERT_EQ(answers.size(), 5U);
    const auto& own = answers[0].as_object();
    EXPECT_EQ(own.at("code").as_int64(), 0);
    EXPECT_EQ(own.at("date").at("ownerId").as_int64(), 102);
    EXPECT_EQ(own.at("date").at("capacityKb").as_int64(), 0);
    EXPECT_EQ(own.at("date").at("capacity").as_int64(), quota);
    EXPECT_EQ(answers[1].at("code").as_int64(), 13000403);
    EXPECT_FALSE(answers[1].as_object().contains("date"));
    EXPECT_EQ(answers[2], answers[0]);
    EXPECT_EQ(answers[3].at("code").as_int64(), 13000404);
    EXPECT_EQ(answers[4].at("code").as_int64(), 13000400);
    EXPECT_EQ(batch(anna_, R"([{"ownerId":"106"}])")[0].at("date").at("ownerId").as_int64(), 106);
}

TEST_F(SpaceTest, ABatchWithoutItsListIsRefused) {
    expectRefused(ben_.post("/space/batchGetSpace", "{}"), 400, "batchGetSpaceReq");
    expectRefused(ben_.post("/space/batchGetSpace", R"({"batchGetSpaceReq":[{"ownerId":102}]})"), 400,
                  "batchGetSpaceReq[0].ownerId");
    expectRefused(send("POST", process_.url(), {"Authorization: " + ben_.token()}), 404, "no endpoint");
}

// ---- what is counted

TEST_F(SpaceTest, EveryFileCountsWithItsLength) {
    ben_.upload("first", someBytes(300));
    EXPECT_EQ(used(ben_), 300);
    ben_.upload("second", someBytes(200, 2));
    ben_.upload("empty", "");
    ben_.makeFolder("folder");
    EXPECT_EQ(used(ben_), 500);
    EXPECT_EQ(used(anna_), 0);
}

TEST_F(SpaceTest, AContentThatIsKnownCountsForEachFile) {
    const auto bytes = someBytes(300);
    ben_.upload("first", bytes);
    auto body = ben_.createBody("second", bytes, 1 << 20);
    body["proofCode"] = ben_.proofCode(bytes);
    EXPECT_TRUE(ben_.create(body).object().at("rapidUpload").as_bool());
    EXPECT_EQ(used(ben_), 600);
}

TEST_F(SpaceTest, AnUploadCountsOnceItIsComplete) {
    const auto bytes = someBytes(300);
    const auto created = create(ben_, "file", bytes).object();
    ben_.putParts(created, bytes);
    EXPECT_EQ(used(ben_), 0);
    EXPECT_EQ(ben_.complete(textOf(created, "fileId"), bytes).status, 200);
    EXPECT_EQ(used(ben_), 300);
}

// ---- what does not fit

TEST_F(SpaceTest, WhatFitsExactlyIsTakenAndAByteMoreIsRefused) {
    ben_.upload("first", someBytes(400));
    const auto refused = create(ben_, "second", someBytes(601, 2));
    expectRefused(refused, 507, "601 bytes do not fit: 600 of 1000 bytes are free");
    EXPECT_EQ(refused.object().at("code").as_int64(), 13000507);
    ben_.upload("second", someBytes(600, 2));
    EXPECT_EQ(used(ben_), quota);
    ben_.upload("empty", "");
    EXPECT_THAT(ben_.names(), testing::ElementsAre("empty", "first", "second"));
}

TEST_F(SpaceTest, AContentThatIsKnownMustFitToo) {
    const auto bytes = someBytes(600);
    ben_.upload("first", bytes);
    auto body = ben_.createBody("second", bytes, 1 << 20);
    body["proofCode"] = ben_.proofCode(bytes);
    expectRefused(ben_.create(body), 507, "400 of 1000 bytes are free");
    body["fileName"] = "first";
    EXPECT_TRUE(ben_.create(body).object().at("exist").as_bool()) << "nothing is stored anew";
}

TEST_F(SpaceTest, UploadsUnderWayKeepTheirRoom) {
    const auto first = someBytes(600);
    const auto created = create(ben_, "first", first).object();
    expectRefused(create(ben_, "second", someBytes(401, 2)), 507, "uploads under way keep 600");
    const auto second = someBytes(400, 3);
    const auto fitting = create(ben_, "third", second).object();
    ben_.putParts(fitting, second);
    ben_.putParts(created, first);
    EXPECT_EQ(ben_.complete(textOf(fitting, "fileId"), second).status, 200);
    EXPECT_EQ(ben_.complete(textOf(created, "fileId"), first).status, 200);
    EXPECT_EQ(create(anna_, "hers", someBytes(1000, 4)).status, 200) << "her space is another";
}

TEST_F(SpaceTest, OfUploadsThatBeginAtOnceThoseThatFitAreTaken) {
    std::atomic<int> taken{0};
    std::vector<std::thread> people;
    for (unsigned number = 0; number < 8; ++number) {
        people.emplace_back([&, number] {
            const auto answer = create(ben_, std::to_string(number), someBytes(300, number));
            EXPECT_THAT(answer.status, testing::AnyOf(200, 507)) << answer.body;
            if (answer.status == 200) ++taken;
        });
    }
    for (auto& person : people) person.join();
    EXPECT_EQ(taken, 3);
}

TEST(SpacePersistenceTest, WhatIsUsedOutlivesAKillAndAnIdleUploadKeepsNoRoom) {
    QuillboxdProcess process(QuillboxdProcess::Storage::folder, {"--quota", "1000"});
    const Client client(process.url());
    client.upload("first", someBytes(300));
    const auto idle = someBytes(500, 2);
    const auto created = client.create(client.createBody("idle", idle, 1000)).object();
    client.putParts(created, idle);
    const auto another = client.createBody("another", someBytes(300, 3), 1000);
    process.kill();
    process.start();
    expectRefused(client.create(another), 507, "200 of 1000 bytes are free, uploads under way keep 500");

    process.kill();
    // A day passes.
    quillboxd::Database(process.dataFolder() / "quillboxd.sqlite")
        .run("UPDATE uploads SET reserved_until = reserved_until - 86400");
    process.start();
    client.upload("another", someBytes(300, 3));
    expectRefused(client.complete(textOf(created, "fileId"), idle), 507, "500 bytes do not fit: 400 of 1000");
    EXPECT_EQ(client.names(), (std::vector<std::string>{"another", "first"}));
}

}  // namespace
}  // namespace quillboxd_test
