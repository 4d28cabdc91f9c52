#include <cctype>
#include <functional>
#include <optional>

#include "tests/quillboxd/service_fixture.h"

namespace quillboxd_test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::UnorderedElementsAre;

class UploadTest : public ServiceTest {
  protected:
    /// The answer to a create whose body was changed.
    HttpAnswer createWith(const std::function<void(json::object&)>& change) const {
        auto body = client_.createBody("a.bin", bytes_, 64 * 1024);
        change(body);
        return client_.create(body);
    }

    json::object& part(json::object& body, std::size_t index) const {
        return body.at("multiParts").as_array().at(index).as_object();
    }

    const std::string bytes_ = someBytes(200'000);
};

TEST_F(UploadTest, AFileInSeveralPartsComesBackByteForByte) {
    const auto bytes = someBytes(3'000'001);
    const auto id = client_.upload("three parts.bin", bytes, 1 << 20);
    EXPECT_EQ(client_.download(id), bytes);
    EXPECT_THAT(client_.names(), ElementsAre("three parts.bin"));
}

TEST_F(UploadTest, ACreateAnswersEveryPartWithAnAddress) {
    const auto body = client_.createBody("a.bin", bytes_, 64 * 1024);
    const auto answer = client_.create(body).object();
    EXPECT_FALSE(answer.at("rapidUpload").as_bool());
    EXPECT_FALSE(answer.at("exist").as_bool());
    EXPECT_EQ(textOf(answer, "fileName"), "a.bin");
    EXPECT_EQ(textOf(answer, "containerId"), client_.container());
    const auto& sent = body.at("multiParts").as_array();
    const auto& parts = answer.at("multiParts").as_array();
    ASSERT_EQ(parts.size(), sent.size());
    for (std::size_t i = 0; i < parts.size(); ++i) {
        for (const char* key : {"partNumber", "partSize", "partOffset", "hashCtx"}) {
            EXPECT_EQ(json::serialize(parts[i].at(key)), json::serialize(sent[i].at(key)));
        }
        EXPECT_THAT(
            textOf(parts[i].as_object(), "uploadUrl"),
            MatchesRegex(process_.url() + "/_part/[0-9]+/[0-9]+\\?expires=[0-9]+&signature=[0-9a-f]+"));
    }
}

TEST_F(UploadTest, AnAddressNamesTheHostThatTheClientUsed) {
    const auto body = json::serialize(client_.createBody("a.bin", bytes_, bytes_.size()));
    const auto create = [&](const std::string& host) {
        const auto answer = send("POST", process_.url() + "/quillbox/ose/v1/files/create",
                                 {"Authorization: " + client_.token(), "Host: " + host}, body);
        return textOf(answer.object().at("multiParts").at(0).as_object(), "uploadUrl");
    };
    EXPECT_THAT(create("localhost:1234"), testing::StartsWith("http://localhost:1234/_part/"));
    EXPECT_THAT(create("evil.example/path?"), testing::StartsWith(process_.url() + "/_part/"));
}

TEST_F(UploadTest, AFileShowsItselfOnlyOnceItIsComplete) {
    const auto created = client_.create(client_.createBody("a.bin", bytes_, 64 * 1024)).object();
    const auto id = textOf(created, "fileId");
    client_.putParts(created, bytes_);
    EXPECT_THAT(client_.names(), IsEmpty());
    expectRefused(client_.post("/files/" + id + "/detail", "{}"), 404, id);
    EXPECT_EQ(client_.complete(id, bytes_).status, 200);
    EXPECT_THAT(client_.names(), ElementsAre("a.bin"));
}

TEST_F(UploadTest, AnEmptyFileGoesUpWithoutPartsAndWithoutProof) {
    for (const std::string name : {"first.txt", "second.txt"}) {
        const auto created = client_.create(client_.createBody(name, "", 1)).object();
        EXPECT_THAT(created.at("multiParts").as_array(), IsEmpty());
        if (!created.at("rapidUpload").as_bool()) {
            EXPECT_EQ(client_.complete(textOf(created, "fileId"), "").status, 200);
        }
        EXPECT_EQ(client_.download(textOf(created, "fileId")), "");
    }
    EXPECT_THAT(client_.names(), ElementsAre("first.txt", "second.txt"));
}

TEST_F(UploadTest, APartWithoutHashCtxIsCheckedByItsBytes) {
    auto body = client_.createBody("a.bin", bytes_, 1000);
    for (auto& element : body.at("multiParts").as_array()) element.as_object().erase("hashCtx");
    const auto created = client_.create(body).object();
    client_.putParts(created, bytes_);
    EXPECT_EQ(client_.complete(textOf(created, "fileId"), bytes_).status, 200);
    EXPECT_EQ(client_.download(textOf(created, "fileId")), bytes_);
}

TEST_F(UploadTest, PartsOfAnySizeAreHashedAcrossTheirEdges) {
    const auto created = client_.create(client_.createBody("a.bin", bytes_, 777)).object();
    client_.putParts(created, bytes_);
    EXPECT_EQ(client_.complete(textOf(created, "fileId"), bytes_).status, 200);
    EXPECT_EQ(client_.download(textOf(created, "fileId")), bytes_);
}

TEST_F(UploadTest, AWrongHashCtxIsRefusedWhenTheFileIsCompleted) {
    for (const std::size_t partSize : {64 * 1024, 1000}) {
        auto body = client_.createBody("a.bin", bytes_, partSize);
        part(body, 1).at("hashCtx").as_array()[3] = 4711;
        const auto created = client_.create(body).object();
        client_.putParts(created, bytes_);
        expectRefused(client_.complete(textOf(created, "fileId"), bytes_), 409, "hashCtx of part 2");
    }
    EXPECT_THAT(client_.names(), IsEmpty());
}

TEST_F(UploadTest, BytesThatDoNotFitTheHashAreRefusedAndCanBeMended) {
    for (const bool withStates : {true, false}) {
        auto body = client_.createBody("a.bin", bytes_, 64 * 1024);
        for (auto& element : body.at("multiParts").as_array()) {
            if (!withStates) element.as_object().erase("hashCtx");
        }
        const auto created = client_.create(body).object();
        const auto id = textOf(created, "fileId");
        auto wrong = bytes_;
        wrong.back() ^= 1;
        client_.putParts(created, wrong);
        expectRefused(client_.complete(id, bytes_), 409, "SHA-256");
        client_.putParts(created, bytes_);
        EXPECT_EQ(client_.complete(id, bytes_).status, 200);
        EXPECT_EQ(client_.download(id), bytes_);
        send("POST", process_.url() + "/_dev/reset");
        client_ = Client(process_.url());
    }
}

TEST_F(UploadTest, AMissingPartIsNamed) {
    const auto created = client_.create(client_.createBody("a.bin", bytes_, 64 * 1024)).object();
    auto some = created;
    auto& parts = some.at("multiParts").as_array();
    parts.erase(parts.begin() + 2);
    client_.putParts(some, bytes_);
    expectRefused(client_.complete(textOf(created, "fileId"), bytes_), 409, "part 3 is missing");
}

TEST_F(UploadTest, APartThatBreaksOffIsMissing) {
    const auto created = client_.create(client_.createBody("a.bin", bytes_, bytes_.size())).object();
    const auto url = textOf(created.at("multiParts").at(0).as_object(), "uploadUrl");
    const auto target = url.substr(process_.url().size());
    exchangeRaw(process_.port(),
                "PUT " + target + " HTTP/1.1\r\nHost: x\r\nContent-Length: 200000\r\n\r\nonly this");
    expectRefused(client_.complete(textOf(created, "fileId"), bytes_), 409, "part 1 is missing");
}

TEST_F(UploadTest, APartThatBreaksOffLeavesTheEarlierOneWhole) {
    const auto created = client_.create(client_.createBody("a.bin", bytes_, bytes_.size())).object();
    client_.putParts(created, bytes_);
    const auto url = textOf(created.at("multiParts").at(0).as_object(), "uploadUrl");
    const auto target = url.substr(process_.url().size());
    exchangeRaw(process_.port(),
                "PUT " + target + " HTTP/1.1\r\nHost: x\r\nContent-Length: 200000\r\n\r\nonly this");
    EXPECT_EQ(client_.complete(textOf(created, "fileId"), bytes_).status, 200);
}

TEST_F(UploadTest, APartOfAnotherLengthIsRefused) {
    const auto created = client_.create(client_.createBody("a.bin", bytes_, bytes_.size())).object();
    const auto url = textOf(created.at("multiParts").at(0).as_object(), "uploadUrl");
    expectRefused(send("PUT", url, {}, bytes_ + "more"), 400, "200000 bytes, not 200004");
    expectRefused(send("PUT", url, {}, "less"), 400, "200000 bytes, not 4");
    expectRefused(send("PUT", url, {}, ""), 400, "200000 bytes, not 0");
    expectRefused(send("PUT", url, {"Transfer-Encoding: chunked"}, bytes_), 411, "Content-Length");
    expectRefused(client_.complete(textOf(created, "fileId"), bytes_), 409, "part 1 is missing");
}

TEST_F(UploadTest, AnAlteredPartAddressIsRefused) {
    const auto created = client_.create(client_.createBody("a.bin", bytes_, 100'000)).object();
    const auto url = textOf(created.at("multiParts").at(0).as_object(), "uploadUrl");
    auto otherPart = url;
    otherPart.replace(url.find("/1?"), 3, "/2?");
    expectRefused(send("PUT", otherPart, {}, bytes_.substr(0, 100'000)), 403, "altered");
    expectRefused(send("PUT", url + "0", {}, "x"), 403, "no address");
    expectRefused(send("PUT", url.substr(0, url.find('?')), {}, "x"), 403, "no address");
}

TEST_F(UploadTest, ACompletedFileTakesNoFurtherParts) {
    const auto created = client_.create(client_.createBody("a.bin", bytes_, bytes_.size())).object();
    client_.putParts(created, bytes_);
    client_.complete(textOf(created, "fileId"), bytes_);
    const auto late = client_.putParts(created, bytes_);
    expectRefused(late.at(0), 404, "no such part");
}

TEST_F(UploadTest, CompletingTwiceSucceedsWithTheSameHashAlone) {
    const auto id = client_.upload("a.bin", bytes_);
    EXPECT_EQ(client_.complete(id, bytes_).status, 200);
    expectRefused(client_.complete(id, "other bytes"), 409, "another sha256");
    expectRefused(client_.complete("12345", bytes_), 404, "12345");
}

TEST_F(UploadTest, TheHashOfCompleteIsTheOneOfCreate) {
    const auto created = client_.create(client_.createBody("a.bin", bytes_, bytes_.size())).object();
    client_.putParts(created, bytes_);
    expectRefused(client_.complete(textOf(created, "fileId"), "other bytes"), 409, "another sha256");
}

TEST_F(UploadTest, KnownContentNeedsNoPartsWhenTheProofIsRight) {
    client_.upload("a.bin", bytes_);
    auto body = client_.createBody("b.bin", bytes_, 64 * 1024);
    body["proofCode"] = client_.proofCode(bytes_);
    const auto answer = client_.create(body).object();
    EXPECT_TRUE(answer.at("rapidUpload").as_bool());
    EXPECT_FALSE(answer.at("exist").as_bool());
    EXPECT_THAT(answer.at("multiParts").as_array(), IsEmpty());
    EXPECT_EQ(client_.download(textOf(answer, "fileId")), bytes_);
    EXPECT_THAT(client_.names(), ElementsAre("a.bin", "b.bin"));
}

TEST_F(UploadTest, KnownContentIsRefusedWithoutTheRightProof) {
    client_.upload("a.bin", bytes_);
    const auto createB = [&](const std::optional<std::string>& proof) {
        auto body = client_.createBody("b.bin", bytes_, 64 * 1024);
        if (proof) body["proofCode"] = *proof;
        return client_.create(body);
    };
    expectRefused(createB(std::nullopt), 403, "proofCode");
    expectRefused(createB(""), 403, "proofCode");
    expectRefused(createB(sha256Hex("guess")), 403, "proofCode");
    EXPECT_THAT(client_.names(), ElementsAre("a.bin"));
}

TEST_F(UploadTest, TheProofOfAnotherTokenIsWrong) {
    client_.upload("a.bin", bytes_);
    const Client other(process_.url(), "other");
    auto body = other.createBody("a.bin", bytes_, 64 * 1024);
    body["proofCode"] = client_.proofCode(bytes_);
    expectRefused(other.create(body), 403, "proofCode");
    body["proofCode"] = other.proofCode(bytes_);
    EXPECT_TRUE(other.create(body).object().at("rapidUpload").as_bool());
}

TEST_F(UploadTest, TheProofOfATinyFileCoversWhatThereIs) {
    for (const std::string tiny : {"a", "abc", "12345678", "123456789"}) {
        client_.upload("first " + tiny, tiny);
        auto body = client_.createBody("second " + tiny, tiny, 100);
        body["proofCode"] = client_.proofCode(tiny);
        EXPECT_TRUE(client_.create(body).object().at("rapidUpload").as_bool()) << tiny;
    }
}

TEST_F(UploadTest, TheSameNameAndContentInTheFolderExistsAlready) {
    const auto id = client_.upload("a.bin", bytes_);
    const auto answer = client_.create(client_.createBody("a.bin", bytes_, 64 * 1024)).object();
    EXPECT_TRUE(answer.at("exist").as_bool());
    EXPECT_FALSE(answer.at("rapidUpload").as_bool());
    EXPECT_EQ(textOf(answer, "fileId"), id);
    EXPECT_THAT(answer.at("multiParts").as_array(), IsEmpty());
    EXPECT_THAT(client_.names(), ElementsAre("a.bin"));
}

TEST_F(UploadTest, TheSameNameWithOtherContentGetsAFreeName) {
    client_.upload("a.tar.gz", "one");
    client_.upload("a.tar.gz", "two");
    client_.upload("a.tar.gz", "three");
    client_.upload(".hidden", "one more");
    client_.upload(".hidden", "and another");
    EXPECT_THAT(client_.names(),
                UnorderedElementsAre("a.tar.gz", "a.tar (1).gz", "a.tar (2).gz", ".hidden", ".hidden (1)"));
}

TEST_F(UploadTest, ANameTakenMeanwhileIsChangedOnComplete) {
    const auto first = client_.create(client_.createBody("a.bin", "first", 64)).object();
    const auto second = client_.create(client_.createBody("a.bin", "second", 64)).object();
    client_.putParts(first, "first");
    client_.putParts(second, "second");
    EXPECT_EQ(client_.complete(textOf(second, "fileId"), "second").status, 200);
    EXPECT_EQ(client_.complete(textOf(first, "fileId"), "first").status, 200);
    EXPECT_THAT(client_.names(), UnorderedElementsAre("a.bin", "a (1).bin"));
    EXPECT_EQ(client_.download(textOf(first, "fileId")), "first");
}

TEST_F(UploadTest, ARefusingRuleAnswersATakenNameWithAConflict) {
    client_.upload("a.bin", "one");
    for (const int rule : {1, 3}) {
        expectRefused(createWith([&](auto& body) { body["autoRename"] = rule; }), 409, "is taken");
    }
    expectRefused(createWith([](auto& body) { body["autoRename"] = 0; }), 400, "autoRename");
    expectRefused(createWith([](auto& body) { body["autoRename"] = 6; }), 400, "autoRename");
}

TEST_F(UploadTest, TwoUploadsOfOneContentShareItsBytes) {
    const auto first = client_.create(client_.createBody("a.bin", bytes_, 64 * 1024)).object();
    const auto second = client_.create(client_.createBody("b.bin", bytes_, 100'000)).object();
    client_.putParts(first, bytes_);
    client_.putParts(second, bytes_);
    EXPECT_EQ(client_.complete(textOf(first, "fileId"), bytes_).status, 200);
    EXPECT_EQ(client_.complete(textOf(second, "fileId"), bytes_).status, 200);
    EXPECT_EQ(client_.download(textOf(first, "fileId")), bytes_);
    EXPECT_EQ(client_.download(textOf(second, "fileId")), bytes_);
}

TEST_F(UploadTest, PartsThatDoNotCoverTheFileAreRefused) {
    expectRefused(createWith([&](auto& body) { part(body, 1)["partOffset"] = 64 * 1024 + 1; }), 400,
                  "part 2 starts");
    expectRefused(createWith([&](auto& body) { part(body, 0)["partSize"] = 64 * 1024 + 1; }), 400,
                  "part 2 starts");
    expectRefused(createWith([&](auto& body) { body["length"] = 199'999; }), 400, "behind the file's end");
    expectRefused(createWith([&](auto& body) { body["length"] = 200'001; }), 400,
                  "200000 of the file's 200001");
    expectRefused(createWith([&](auto& body) { body.erase("multiParts"); }), 400, "0 of the file's 200000");
    expectRefused(createWith([&](auto& body) { part(body, 1)["partNumber"] = 1; }), 400, "twice");
    expectRefused(createWith([&](auto& body) { part(body, 1)["partNumber"] = 0; }), 400, "partNumber");
    expectRefused(createWith([&](auto& body) { part(body, 1)["partSize"] = 0; }), 400, "no bytes");
    expectRefused(createWith([&](auto& body) { part(body, 1)["partSize"] = -5; }), 400, "no bytes");
    expectRefused(createWith([&](auto& body) { part(body, 3)["partSize"] = 9223372036854775807; }), 400,
                  "file's end");
    expectRefused(createWith([&](auto& body) { part(body, 1).erase("partSize"); }), 400, "partSize");
}

TEST_F(UploadTest, EveryFieldOfACreateHasItsType) {
    for (const char* key : {"createdTime", "description", "mimeType", "fileName", "fileType", "sha256",
                            "uploadMode", "containerId", "preHash", "proofCode", "scene"}) {
        expectRefused(createWith([&](auto& body) { body[key] = 5; }), 400,
                      std::string("\"") + key + "\" must be a text");
    }
    for (const char* key : {"length", "uploadType", "autoRename"}) {
        expectRefused(createWith([&](auto& body) { body[key] = "5"; }), 400,
                      std::string("\"") + key + "\" must be");
        expectRefused(createWith([&](auto& body) { body[key] = 1.5; }), 400,
                      std::string("\"") + key + "\" must be");
        expectRefused(createWith([&](auto& body) { body[key] = true; }), 400,
                      std::string("\"") + key + "\" must be");
    }
    expectRefused(createWith([](auto& body) { body["hidden"] = 1; }), 400,
                  "\"hidden\" must be true or false");
    expectRefused(createWith([](auto& body) { body["parentFolder"] = "root"; }), 400, "list of texts");
    expectRefused(createWith([](auto& body) { body["parentFolder"] = json::array{1}; }), 400,
                  "list of texts");
    expectRefused(createWith([](auto& body) { body["multiParts"] = json::array{1}; }), 400,
                  "list of objects");
    expectRefused(createWith([&](auto& body) { part(body, 1)["partSize"] = "1"; }), 400,
                  "multiParts[1].partSize");
    expectRefused(createWith([&](auto& body) { part(body, 1)["hashCtx"].as_array()[0] = -1; }), 400,
                  "32-bit");
    expectRefused(createWith([&](auto& body) { part(body, 1)["hashCtx"].as_array()[0] = 4294967296; }), 400,
                  "32-bit");
    expectRefused(createWith([&](auto& body) { part(body, 1)["hashCtx"].as_array().pop_back(); }), 400,
                  "eight words");
}

TEST_F(UploadTest, WhatAFileNeedsMustBeThere) {
    for (const char* key : {"fileName", "sha256", "length", "uploadMode"}) {
        expectRefused(createWith([&](auto& body) { body.erase(key); }), 400, key);
    }
    expectRefused(createWith([](auto& body) { body["uploadMode"] = "single"; }), 400, "multipart");
    expectRefused(createWith([](auto& body) { body["sha256"] = "abc"; }), 400, "64 hexadecimal");
    expectRefused(createWith([](auto& body) { body["sha256"] = std::string(64, 'g'); }), 400,
                  "64 hexadecimal");
    expectRefused(createWith([](auto& body) { body["length"] = -1; }), 400, "length");
    for (const char* name : {"a/b", ".", "..", "zero\\u0000"}) {
        expectRefused(
            client_.post("/files/create", R"({"fileName":")" + std::string(name) +
                                              R"(","length":0,"uploadMode":"multipart","sha256":")" +
                                              sha256Hex("") + "\"}"),
            400, "the name");
    }
    expectRefused(createWith([](auto& body) { body["fileName"] = std::string(1001, 'x'); }), 400,
                  "longer than 1000");
    expectRefused(createWith([](auto& body) { body["parentFolder"] = json::array{"77"}; }), 404, "77");
    expectRefused(createWith([](auto& body) {
                      body["parentFolder"] = json::array{"root", "root"};
                  }),
                  400, "one folder");
    const auto file = client_.upload("file", "bytes");
    expectRefused(createWith([&](auto& body) { body["parentFolder"] = json::array{file}; }), 400,
                  "not a folder");
}

TEST_F(UploadTest, AHashInCapitalsIsTheSameHash) {
    auto body = client_.createBody("a.bin", "bytes", 64);
    auto digest = sha256Hex("bytes");
    for (char& c : digest) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    body["sha256"] = digest;
    const auto created = client_.create(body).object();
    client_.putParts(created, "bytes");
    EXPECT_EQ(client_.complete(textOf(created, "fileId"), "bytes").status, 200);
}

TEST_F(UploadTest, FurtherAddressesLeadToTheSameParts) {
    const auto created = client_.create(client_.createBody("a.bin", bytes_, 64 * 1024)).object();
    const auto id = textOf(created, "fileId");
    const auto ask = [&](const json::object& body) {
        return client_.post("/files/multipart/uploadUrl", json::serialize(body));
    };
    const auto fresh = ask({{"fileId", id}, {"multiParts", created.at("multiParts")}});
    ASSERT_EQ(fresh.status, 200) << fresh.body;
    for (const auto& answer : client_.putParts(fresh.object(), bytes_))
        EXPECT_EQ(answer.status, 200) << answer.body;
    EXPECT_EQ(client_.complete(id, bytes_).status, 200);

    expectRefused(ask({{"fileId", id}}), 404, "no upload");
    expectRefused(ask({{"multiParts", json::array{}}}), 400, "fileId");
}

TEST_F(UploadTest, AnAddressForAPartThatIsNotThereIsRefused) {
    const auto created = client_.create(client_.createBody("a.bin", bytes_, 64 * 1024)).object();
    const json::object wanted{{"fileId", created.at("fileId")},
                              {"multiParts", {{{"partNumber", 9}, {"partSize", 1}, {"partOffset", 0}}}}};
    expectRefused(client_.post("/files/multipart/uploadUrl", json::serialize(wanted)), 404, "no part 9");
}

}  // namespace
}  // namespace quillboxd_test
