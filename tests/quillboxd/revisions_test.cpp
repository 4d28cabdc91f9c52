#include "tests/quillboxd/jobs_client.h"

namespace quillboxd_test::revisions {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

/// A create by the rule that replaces.
HttpAnswer beginReplacing(const Client& client, const std::string& name, const std::string& bytes) {
    auto body = client.createBody(name, bytes, 4);
    body["autoRename"] = 5;
    return client.create(body);
}

/// All steps; returns the file's id.
std::string replace(const Client& client, const std::string& name, const std::string& bytes) {
    const auto created = beginReplacing(client, name, bytes).object();
    client.putParts(created, bytes);
    const auto id = textOf(created, "fileId");
    EXPECT_EQ(client.complete(id, bytes).status, 200);
    return id;
}

json::object detail(const Client& client, const std::string& id) {
    return client.post("/files/" + id + "/detail", "{}").object();
}

/// The newest first.
json::array revisions(const Client& client, const std::string& id) {
    return detail(client, id).at("attachments").as_array();
}

std::string download(const json::value& revision) {
    const auto& address = revision.at("asset").at("resource").at("object").at("downloadUrl");
    return send("GET", textOf(address.as_object(), "url")).body;
}

std::vector<std::string> contents(const Client& client, const std::string& id) {
    std::vector<std::string> contents;
    for (const auto& revision : revisions(client, id)) contents.push_back(download(revision));
    return contents;
}

HttpAnswer keep(const Client& client, const json::object& record) {
    return client.post("/revision/updateRevision", json::serialize(record));
}

class RevisionsTest : public ServiceTest {
  protected:
    std::string idOf(std::size_t place) const {
        return textOf(revisions(client_, file_).at(place).at("asset").as_object(), "versionId");
    }
    std::int64_t used() const {
        return client_.get("/space/?type=").object().at("data").at("spaceUsed").as_int64();
    }

    std::string file_ = client_.upload("file", "first content");
};

// ---- how they come to be

TEST_F(RevisionsTest, AFileHasOneFromTheStart) {
    const auto only = revisions(client_, file_);
    ASSERT_THAT(only, SizeIs(1));
    EXPECT_EQ(textOf(only[0].as_object(), "usage"), "revision");
    EXPECT_EQ(textOf(only[0].as_object(), "sha256"), sha256Hex("first content"));
    const auto& asset = only[0].at("asset").as_object();
    EXPECT_EQ(asset.at("version").as_int64(), 1);
    EXPECT_EQ(asset.at("state").as_int64(), 0);
    EXPECT_THAT(textOf(asset, "createdTime"), HasSubstr("T"));
    EXPECT_EQ(asset.at("resource").at("length").as_int64(), 13);
    EXPECT_EQ(download(only[0]), "first content");
    const auto folder = client_.makeFolder("folder");
    EXPECT_FALSE(detail(client_, folder).contains("attachments"));
}

TEST_F(RevisionsTest, AnUploadThatReplacesMakesOneOfTheSameFile) {
    client_.post("/star/batch", R"({"starred":true,"subRequestList":[{"fileId":")" + file_ + "\"}]}");
    EXPECT_EQ(replace(client_, "file", "second content!"), file_);
    EXPECT_THAT(client_.names(), ElementsAre("file"));
    EXPECT_EQ(client_.download(file_), "second content!");
    EXPECT_THAT(contents(client_, file_), ElementsAre("second content!", "first content"));
    const auto now = detail(client_, file_);
    EXPECT_EQ(now.at("size").as_int64(), 15);
    EXPECT_EQ(now.at("downloadLinks").at(0).at("version").as_int64(), 2);
    EXPECT_GT(textOf(now, "editedTime"), textOf(now, "createdTime"));
    EXPECT_THAT(client_.get("/star/files").object().at("starFileList").as_array(), SizeIs(1));
    EXPECT_EQ(used(), 28);
}

TEST_F(RevisionsTest, WhereNothingIsReplacedTheFileIsNew) {
    EXPECT_NE(replace(client_, "another", "second"), file_);
    client_.makeFolder("folder");
    replace(client_, "folder", "third");
    EXPECT_THAT(client_.names(), ElementsAre("folder", "another", "file", "folder (1)"));
    auto other = client_.createBody("file", "fourth", 10);
    EXPECT_EQ(textOf(client_.create(other).object(), "fileName"), "file (1)");
    EXPECT_THAT(revisions(client_, file_), SizeIs(1));
}

TEST_F(RevisionsTest, TheSameContentIsNoRevision) {
    const auto answer = beginReplacing(client_, "file", "first content").object();
    EXPECT_TRUE(answer.at("exist").as_bool());
    EXPECT_THAT(revisions(client_, file_), SizeIs(1));
}

TEST_F(RevisionsTest, AnEarlierContentComesBackWithoutAnUploadOrAProof) {
    replace(client_, "file", "second");
    const auto answer = beginReplacing(client_, "file", "first content").object();
    EXPECT_TRUE(answer.at("rapidUpload").as_bool());
    EXPECT_EQ(textOf(answer, "fileId"), file_);
    EXPECT_THAT(contents(client_, file_), ElementsAre("first content", "second", "first content"));
    client_.upload("other", "another content");
    expectRefused(beginReplacing(client_, "file", "another content"), 403, "proofCode");
}

TEST_F(RevisionsTest, TheRuleThatReplacesIsOneForFilesAlone) {
    expectRefused(client_.post("/directory", R"({"fileName":"x","renameMode":5})"), 400, "renameMode");
    expectRefused(client_.post("/files/rename/" + file_, R"({"name":"x","renameMode":5})"), 400, "1 to 4");
    auto body = client_.createBody("file", "x", 10);
    body["autoRename"] = 6;
    expectRefused(client_.create(body), 400, "1 to 5");
}

// ---- while an upload is under way

TEST_F(RevisionsTest, UntilItIsCompleteTheFileStaysAsItIs) {
    const auto created = beginReplacing(client_, "file", "second").object();
    client_.putParts(created, "second");
    EXPECT_EQ(client_.download(file_), "first content");
    expectRefused(client_.complete(file_, "other"), 409, "another sha256");
    EXPECT_EQ(client_.complete(file_, "second").status, 200);
    EXPECT_EQ(client_.complete(file_, "second").status, 200) << "an answer may get lost";
    EXPECT_THAT(contents(client_, file_), ElementsAre("second", "first content"));
}

TEST_F(RevisionsTest, TheLaterOfTwoUploadsToAFileCounts) {
    const auto earlier = beginReplacing(client_, "file", "earlier").object();
    client_.putParts(earlier, "earlier");
    const auto later = beginReplacing(client_, "file", "later").object();
    expectRefused(client_.complete(file_, "earlier"), 409, "another sha256");
    client_.putParts(later, "later");
    EXPECT_EQ(client_.complete(file_, "later").status, 200);
    EXPECT_THAT(contents(client_, file_), ElementsAre("later", "first content"));
}

TEST_F(RevisionsTest, ARenamedFileIsReplacedUnderItsNewName) {
    const auto created = beginReplacing(client_, "file", "second").object();
    client_.putParts(created, "second");
    client_.post("/files/rename/" + file_, R"({"name":"renamed"})");
    EXPECT_EQ(client_.complete(file_, "second").status, 200);
    EXPECT_THAT(client_.names(), ElementsAre("renamed"));
    EXPECT_EQ(client_.download(file_), "second");
}

// ---- how long they stay

TEST_F(RevisionsTest, TheTenNewestStayAndThoseThatAreKept) {
    replace(client_, "file", "2");
    EXPECT_EQ(keep(client_, {{"fileId", file_}, {"revisionId", idOf(1)}, {"keepForever", true}}).status, 200);
    for (int number = 3; number <= 12; ++number) replace(client_, "file", std::to_string(number));
    EXPECT_THAT(contents(client_, file_),
                ElementsAre("12", "11", "10", "9", "8", "7", "6", "5", "4", "3", "first content"));
    EXPECT_EQ(used(), 3 * 2 + 7 + 13);
    EXPECT_EQ(revisions(client_, file_).at(10).at("asset").at("state").as_int64(), 1);

    EXPECT_EQ(keep(client_, {{"fileId", file_}, {"revisionId", idOf(10)}, {"keepForever", false}}).status,
              200);
    EXPECT_THAT(revisions(client_, file_), SizeIs(11)) << "nothing goes before the file changes";
    replace(client_, "file", "13");
    EXPECT_THAT(revisions(client_, file_), SizeIs(10));
}

TEST_F(RevisionsTest, WithoutAnIdTheNewestIsKept) {
    EXPECT_EQ(keep(client_, {{"fileId", file_}, {"keepForever", true}}).status, 200);
    replace(client_, "file", "second");
    const auto both = revisions(client_, file_);
    EXPECT_EQ(both[0].at("asset").at("state").as_int64(), 0);
    EXPECT_EQ(both[1].at("asset").at("state").as_int64(), 1);
}

TEST_F(RevisionsTest, WhatCannotBeKeptIsRefused) {
    const auto other = client_.upload("other", "x");
    const auto othersRevision = textOf(revisions(client_, other).at(0).at("asset").as_object(), "versionId");
    const Client stranger(process_.url(), "stranger");
    const json::object whole{{"fileId", file_}, {"revisionId", idOf(0)}, {"keepForever", true}};
    const auto with = [&](const char* key, const auto& value) {
        auto record = whole;
        record[key] = value;
        return keep(client_, record);
    };
    expectRefused(with("revisionId", othersRevision), 404, "no revision");
    expectRefused(with("revisionId", "none"), 404, "no revision \"none\"");
    expectRefused(with("fileId", "none"), 404, "no file");
    expectRefused(with("fileId", client_.makeFolder("folder")), 400, "is a folder");
    expectRefused(with("fileId", nullptr), 400, "fileId");
    expectRefused(with("keepForever", nullptr), 400, "keepForever");
    expectRefused(with("keepForever", 1), 400, "keepForever");
    expectRefused(with("revisionId", 1), 400, "revisionId");
    expectRefused(with("containerId", stranger.container()), 403, "container");
    expectRefused(keep(stranger, whole), 404, "no file");
}

TEST_F(RevisionsTest, ADeletedFileTakesThemAndItsStarAndItsSpaceWithIt) {
    client_.post("/star/batch", R"({"starred":true,"subRequestList":[{"fileId":")" + file_ + "\"}]}");
    replace(client_, "file", "second");
    const auto earlier = revisions(client_, file_).at(1);
    beginReplacing(client_, "file", "third");
    const JobsClient jobs(process_.url());
    EXPECT_EQ(JobsClient::number(JobsClient::info(jobs.run(JobsClient::body(3, {file_}))), "status"), 2);
    EXPECT_EQ(used(), 0);
    EXPECT_THAT(client_.get("/star/files").object().at("starFileList").as_array(), SizeIs(0));
    EXPECT_THAT(download(earlier), HasSubstr("gone"));
    expectRefused(client_.complete(file_, "third"), 404, "no upload");
}

TEST_F(RevisionsTest, ACopyBeginsAnew) {
    replace(client_, "file", "second");
    client_.makeFolder("copies");
    const JobsClient jobs(process_.url());
    jobs.run(JobsClient::body(1, {file_}, "/copies"));
    const auto found =
        client_.post("/files/search", R"({"filter":{"keyWord":"file"},"recursived":true})").object();
    for (const auto& each : found.at("files").as_array()) {
        const auto id = textOf(each.as_object(), "id");
        EXPECT_THAT(revisions(client_, id), SizeIs(id == file_ ? 2 : 1));
        EXPECT_EQ(client_.download(id), "second");
    }
    EXPECT_EQ(found.at("total").as_int64(), 2);
    EXPECT_EQ(used(), 13 + 6 + 6);
}

TEST(RevisionsPersistenceTest, NothingIsLostByAKill) {
    QuillboxdProcess process;
    const Client client(process.url());
    const auto file = client.upload("file", "first");
    EXPECT_EQ(keep(client, {{"fileId", file}, {"keepForever", true}}).status, 200);
    replace(client, "file", "second");
    const auto created = beginReplacing(client, "file", "third").object();
    process.kill();
    process.start();
    client.putParts(created, "third");
    EXPECT_EQ(client.complete(file, "third").status, 200);
    EXPECT_THAT(contents(client, file), ElementsAre("third", "second", "first"));
    EXPECT_EQ(revisions(client, file).at(2).at("asset").at("state").as_int64(), 1);
}

TEST(RevisionsSpaceTest, ARevisionForWhichThereIsNoRoomIsRefused) {
    const QuillboxdProcess process(QuillboxdProcess::Storage::memory, {"--quota", "10"});
    const Client client(process.url());
    const auto file = client.upload("file", "1234567");
    expectRefused(beginReplacing(client, "file", "abcd"), 507, "3 of 10 bytes are free");
    EXPECT_EQ(beginReplacing(client, "file", "abc").status, 200);
    EXPECT_EQ(beginReplacing(client, "file", "xyz").status, 200) << "in the place of the one before";
    EXPECT_EQ(client.download(file), "1234567");
}

}  // namespace
}  // namespace quillboxd_test::revisions
