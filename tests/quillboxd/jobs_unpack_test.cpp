#include "tests/quillboxd/jobs_client.h"
#include "tests/quillboxd/zip_maker.h"

namespace quillboxd_test::jobs_unpack {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr int unpack = 4;
constexpr std::int64_t done = 2;
constexpr std::int64_t failed = 3;

class UnpackTest : public testing::Test {
  protected:
    json::object run(const std::string& archive, const json::object& more = {}) const {
        return client_.run(body(client_.upload("photos.zip", archive, 1000), more));
    }
    static json::object body(const std::string& id, const json::object& more) {
        auto body = JobsClient::body(unpack, {id});
        for (const auto& [key, value] : more) {
            auto& place = key == "password" || key == "actionType" ? body : body.at("taskInfo").as_object();
            place[key] = value;
        }
        return body;
    }
    static std::int64_t statusOf(const json::object& detail) {
        return JobsClient::number(JobsClient::info(detail), "status");
    }
    static std::string reasonOf(const json::object& detail) {
        return JobsClient::column(detail, "taskInfos", "resultDesc").at(0);
    }
    static std::string folderOf(const json::object& detail) {
        return JobsClient::column(detail, "taskInfos", "newFileId").at(0);
    }
    static std::vector<std::string> reasons(const json::object& detail) {
        return JobsClient::column(detail, "uncompressedFileList", "reason");
    }

    QuillboxdProcess process_{QuillboxdProcess::Storage::memory};
    JobsClient client_{process_.url()};
};

TEST_F(UnpackTest, AnArchiveBecomesAFolderBesideIt) {
    const auto large = someBytes(3'000'000);
    const auto detail =
        run(makeZip({{"a.txt", "content a"}, {"sub/"}, {"sub/deep/large", large}, {"empty", ""}}));
    EXPECT_EQ(statusOf(detail), done) << json::serialize(detail);
    EXPECT_THAT(client_.names(), ElementsAre("photos", "photos.zip"));
    EXPECT_THAT(client_.names(folderOf(detail)), ElementsAre("sub", "a.txt", "empty"));
    const auto& list = detail.at("uncompressedFileList").as_array();
    ASSERT_EQ(list.size(), 4u);
    EXPECT_THAT(JobsClient::column(detail, "uncompressedFileList", "name"),
                ElementsAre("a.txt", "sub/", "sub/deep/large", "empty"));
    EXPECT_EQ(list[2].at("fileSize").as_int64(), 3'000'000);
    EXPECT_EQ(list[1].at("type").as_int64(), 0);
    EXPECT_EQ(list[2].at("type").as_int64(), 1);
    EXPECT_GT(list[2].at("updatedAt").as_int64(), 1'600'000'000'000);
    EXPECT_EQ(client_.download(textOf(list[0].as_object(), "fileId")), "content a");
    EXPECT_EQ(client_.download(textOf(list[2].as_object(), "fileId")), large);
    EXPECT_EQ(client_.download(textOf(list[3].as_object(), "fileId")), "");
}

TEST_F(UnpackTest, ItGoesWhereItIsAskedToGo) {
    client_.makeFolder("there");
    const auto archive = makeZip({{"a", "content"}});
    const auto detail = run(archive, {{"newFilePath", "/there"}});
    EXPECT_THAT(JobsClient::column(detail, "taskInfos", "newFilePath"), ElementsAre("/there/photos"));
    const auto again = run(archive, {{"newFilePath", "/there"}});
    EXPECT_THAT(JobsClient::column(again, "taskInfos", "newFilePath"), ElementsAre("/there/photos (1)"));
}

TEST_F(UnpackTest, OnlyThePathsAskedForAreUnpacked) {
    const auto archive = makeZip({{"a", "1"}, {"sub/b", "2"}, {"sub/c", "3"}, {"subway", "4"}});
    const auto detail = run(archive, {{"uncompressFilePaths", json::array{"sub", "a"}}});
    EXPECT_EQ(statusOf(detail), done);
    EXPECT_THAT(JobsClient::column(detail, "uncompressedFileList", "name"),
                ElementsAre("a", "sub/b", "sub/c"));
    const auto none = run(archive, {{"uncompressFilePaths", json::array{"x"}}});
    EXPECT_EQ(statusOf(none), failed);
    EXPECT_THAT(reasonOf(none), HasSubstr("none of the paths"));
}

TEST_F(UnpackTest, ThePathsAskedForMayBeginAndEndWithASlash) {
    const auto archive = makeZip({{"a", "1"}, {"sub/b", "2"}, {"sub/c", "3"}});
    const auto unpacked = [&](const char* path) {
        const auto detail = run(archive, {{"uncompressFilePaths", json::array{path}}});
        return JobsClient::column(detail, "uncompressedFileList", "name");
    };
    EXPECT_THAT(unpacked("/sub/b"), ElementsAre("sub/b"));
    EXPECT_THAT(unpacked("/sub/"), ElementsAre("sub/b", "sub/c"));
    EXPECT_THAT(unpacked("/"), ElementsAre("a", "sub/b", "sub/c"));
}

TEST_F(UnpackTest, APasswordOpensAnEncryptedArchive) {
    const auto archive = makeZip({{"a", "secret"}}, "pass word");
    const auto open = run(archive, {{"password", "pass word"}});
    EXPECT_EQ(statusOf(open), done);
    EXPECT_EQ(client_.download(JobsClient::column(open, "uncompressedFileList", "fileId").at(0)), "secret");
    for (const auto& more : {json::object{}, json::object{{"password", "wrong"}}}) {
        const auto detail = run(archive, more);
        EXPECT_EQ(statusOf(detail), failed);
        EXPECT_EQ(JobsClient::number(JobsClient::info(detail), "resultCode"), 13000403);
        EXPECT_THAT(reasons(detail), ElementsAre(HasSubstr("password is missing or wrong")));
    }
}

TEST_F(UnpackTest, EntriesThatWouldLeaveTheFolderAreRefusedOneByOne) {
    const auto detail = run(makeZip({{"../up", "1"},
                                     {"good", "2"},
                                     {"sub/../../up", "3"},
                                     {"/etc/passwd", "4"},
                                     {"a//b", "5"},
                                     {"./c", "6"},
                                     {"link", "/etc/passwd", true}}));
    EXPECT_EQ(statusOf(detail), failed);
    EXPECT_EQ(JobsClient::number(JobsClient::info(detail), "taskResultCode"), 1);
    EXPECT_THAT(reasons(detail),
                ElementsAre("the path leads out of the folder", "", "the path leads out of the folder",
                            "the path is absolute", "the name is empty",
                            "the name \".\" stands for a folder itself", "it is a link"));
    EXPECT_THAT(JobsClient::column(detail, "uncompressedFileList", "code"),
                ElementsAre("13000400", "0", "13000400", "13000400", "13000400", "13000400", "13000400"));
    EXPECT_EQ(reasonOf(detail), "\"../up\": the path leads out of the folder");
    EXPECT_THAT(client_.names(), ElementsAre("photos", "photos.zip"));
    EXPECT_THAT(client_.names(folderOf(detail)), ElementsAre("good"));
}

TEST_F(UnpackTest, AFileAndAFolderOfOneNameDoNotMix) {
    const auto detail = run(makeZip({{"a", "1"}, {"a/b", "2"}, {"a/", ""}}));
    EXPECT_THAT(reasons(detail), ElementsAre("", HasSubstr("has the name of its folder"),
                                             HasSubstr("has the name of its folder")));
}

TEST_F(UnpackTest, TheSecondFileOfANameIsRefused) {
    auto archive = makeZip({{"same", "first"}, {"sams", "second"}});
    for (auto at = archive.find("sams"); at != archive.npos; at = archive.find("sams")) archive[at + 3] = 'e';
    const auto detail = run(archive);
    EXPECT_EQ(statusOf(detail), failed);
    EXPECT_THAT(reasons(detail), ElementsAre("", HasSubstr("\"same\" is taken")));
    EXPECT_EQ(client_.download(JobsClient::column(detail, "uncompressedFileList", "fileId").at(0)), "first");
}

TEST_F(UnpackTest, ANameThatIsNoUtf8IsRefused) {
    const std::vector<std::string> names{"\xC0\xAF", "\xED\xA0\x80", "\xF7\xBF\xBF\xBF"};
    auto archive = makeZip({{"12", "1"}, {"123", "2"}, {"1234", "3"}, {"good", "4"}});
    for (const auto& name : names) {
        const std::string plain = std::string("1234").substr(0, name.size());
        for (const std::size_t head : {archive.find("PK\x03\x04"), archive.find("PK\x01\x02")})
            archive.replace(archive.find(plain, head), plain.size(), name);
    }
    const auto detail = run(archive);
    EXPECT_THAT(JobsClient::column(detail, "uncompressedFileList", "name"),
                ElementsAre("??", "???", "????", "good"));
    constexpr auto reason = "the name is no UTF-8";
    EXPECT_THAT(reasons(detail), ElementsAre(reason, reason, reason, ""));
    EXPECT_EQ(reasonOf(detail), "\"??\": the name is no UTF-8");
    EXPECT_THAT(client_.names(folderOf(detail)), ElementsAre("good"));
}

TEST_F(UnpackTest, AReasonIsReadableWhereItCutsALetter) {
    std::string name = "x";
    while (name.size() < 1001) name += "\u00e9";
    EXPECT_THAT(reasons(run(makeZip({{name, "1"}}))), ElementsAre(HasSubstr("longer than 1000 bytes")));
}

TEST_F(UnpackTest, APathOfAHundredNamesIsTheDeepest) {
    std::string path;
    for (int depth = 0; depth < 99; ++depth) path += "a/";
    const auto detail = run(makeZip({{path + "file", "1"}, {path + "b/file", "2"}}));
    EXPECT_THAT(reasons(detail), ElementsAre("", "the path has more than 100 names"));
}

TEST_F(UnpackTest, TheNameOfItsFolderIsChangedOrRefused) {
    client_.makeFolder("photos");
    const auto detail = run(makeZip({{"a", "1"}}), {{"actionType", 1}});
    EXPECT_EQ(statusOf(detail), failed);
    EXPECT_EQ(JobsClient::number(JobsClient::info(detail), "resultCode"), 13000405);
    EXPECT_THAT(reasonOf(detail), HasSubstr("\"photos\" is taken"));
    EXPECT_THAT(detail.at("uncompressedFileList").as_array(), IsEmpty());
    EXPECT_THAT(client_.names(), ElementsAre("photos", "photos.zip"));
}

TEST(UnpackingAndSpace, AnEntryThatNoLongerFitsLeavesNoFolders) {
    const QuillboxdProcess process(QuillboxdProcess::Storage::memory, {"--quota", "10000"});
    const JobsClient client(process.url());
    const auto archive = client.upload("photos.zip", makeZip({{"a", "1"}, {"sub/deep/b", someBytes(3000)}}));
    client.allow(1);
    const auto id = client.start(JobsClient::body(unpack, {archive}));
    client.awaitProgress(id, 50);
    client.upload("large", someBytes(5000));
    client.release();
    const auto detail = client.awaitEnd(id);
    EXPECT_EQ(JobsClient::number(JobsClient::info(detail), "resultCode"), 13000507);
    EXPECT_THAT(JobsClient::column(detail, "uncompressedFileList", "reason"),
                ElementsAre("", HasSubstr("3000 bytes do not fit")));
    EXPECT_THAT(client.names(JobsClient::column(detail, "taskInfos", "newFileId").at(0)), ElementsAre("a"));
}

TEST(UnpackingAndSpace, AnArchiveThatDoesNotFitIsRefusedWhole) {
    const QuillboxdProcess process(QuillboxdProcess::Storage::memory, {"--quota", "5000"});
    const JobsClient client(process.url());
    const auto archive = client.upload("photos.zip", makeZip({{"b", someBytes(3000)}}));
    const auto detail = client.run(JobsClient::body(unpack, {archive}));
    EXPECT_EQ(JobsClient::number(JobsClient::info(detail), "resultCode"), 13000507);
    EXPECT_THAT(client.names(), ElementsAre("photos.zip"));
}

TEST_F(UnpackTest, AnArchiveOfTooManyEntriesIsRefusedWhateverIsAskedFor) {
    std::vector<Zipped> entries;
    for (int number = 0; number <= 100'000; ++number) entries.push_back({std::to_string(number)});
    const auto archive = client_.upload("photos.zip", makeZip(entries), 20'000'000);
    const auto detail = client_.run(body(archive, {{"uncompressFilePaths", json::array{"0"}}}));
    EXPECT_EQ(statusOf(detail), failed);
    EXPECT_THAT(reasonOf(detail), HasSubstr("more than 100,000 entries"));
}

TEST_F(UnpackTest, TooManyPathsAreRefused) {
    const auto archive = client_.upload("photos.zip", makeZip({{"a", "1"}}));
    const json::array paths(1001, "a");
    expectRefused(client_.create(body(archive, {{"uncompressFilePaths", paths}})), 400,
                  "uncompressFilePaths\" has more than 1,000 paths");
}

TEST_F(UnpackTest, AnArchiveThatGrowsBeyondMeasureIsRefusedWhole) {
    const auto detail = run(makeZip({{"zeros", std::string(100'000'000, '\0')}}));
    EXPECT_EQ(statusOf(detail), failed);
    EXPECT_THAT(reasonOf(detail), HasSubstr("200 times its own size"));
    EXPECT_THAT(client_.names(), ElementsAre("photos.zip"));
}

TEST_F(UnpackTest, AnArchiveThatSaysAWrongSizeIsRefused) {
    // The size of the entry before packing: at 22 of the entry's own head, at 24 of its head in the
    // directory.
    for (const int claimed : {9, 11}) {
        auto archive = makeZip({{"file", std::string(10, 'x')}});
        archive.at(22) = static_cast<char>(claimed);
        archive.at(archive.find("PK\x01\x02") + 24) = static_cast<char>(claimed);
        const auto detail = run(archive);
        EXPECT_EQ(statusOf(detail), failed) << claimed;
        EXPECT_THAT(client_.names(folderOf(detail)), IsEmpty());
    }
}

TEST_F(UnpackTest, DamagedBytesAreRefused) {
    const auto bytes = someBytes(1000);
    auto archive = makeZip({{"file", bytes}, {"good", "2"}});
    archive.at(archive.find(bytes.substr(0, 20)) + 500) ^= 1;
    const auto detail = run(archive);
    EXPECT_EQ(statusOf(detail), failed);
    EXPECT_THAT(reasons(detail), ElementsAre(HasSubstr("CRC"), ""));
}

TEST_F(UnpackTest, WhatIsNoArchiveIsRefused) {
    const auto detail = run("no archive at all");
    EXPECT_EQ(statusOf(detail), failed);
    EXPECT_THAT(reasonOf(detail), HasSubstr("this is no zip archive"));
    EXPECT_THAT(client_.names(), ElementsAre("photos.zip"));
}

TEST_F(UnpackTest, AnEmptyFileIsNoArchive) {
    const auto created = client_.Client::create(client_.createBody("empty.zip", "", 1)).object();
    const auto id = textOf(created, "fileId");
    client_.complete(id, "");
    EXPECT_THAT(reasonOf(client_.run(body(id, {}))), HasSubstr("this is no zip archive"));
}

}  // namespace
}  // namespace quillboxd_test::jobs_unpack
