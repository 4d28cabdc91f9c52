#include "tests/cli/cloud_test.h"

namespace quillbox_test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;

class RevisionsCommandTest : public CloudTest {};

TEST_F(RevisionsCommandTest, WhatAFileHasHeldIsListedTheNewestFirst) {
    make("file", "hello");
    make("other", "world!");
    json({"upload", "file", "other"});
    const auto file = idOf("file");
    const auto changed =
        json({"call", "filesCreate",
              R"({"fileName":"file","uploadMode":"multipart","autoRename":5,"length":5,)"
              R"("sha256":"486ea46224d1bb4fb680f34f7c9ad96a8f24ec88be73ea8e5a6c65260e9cb8a7",)"
              R"("multiParts":[{"partNumber":1,"partSize":5,"partOffset":0}]})"});
    quillboxd_test::send("PUT", valueOf(changed.output, "uploadUrl"), {}, "world");
    json({"call", "fileComplete",
          R"({"sha256":"486ea46224d1bb4fb680f34f7c9ad96a8f24ec88be73ea8e5a6c65260e9cb8a7","fileId":")" +
              file + "\"}"});
    json({"call", "updateRevision", R"({"keepForever":true,"fileId":")" + file + "\"}"});

    const auto listed = json({"revisions", file});
    EXPECT_THAT(
        listed.lines,
        ElementsAre(AllOf(HasSubstr(R"({"event":"revision","revisionId":")"),
                          HasSubstr(R"("number":2,"size":5,)"), HasSubstr(R"("keptForEver":true})")),
                    AllOf(HasSubstr(R"("number":1,"size":5,)"), HasSubstr(R"("keptForEver":false})"))));
    EXPECT_THAT(text({"revisions", file}).lines,
                ElementsAre(MatchesRegex("2  [0-9]+  5 B  [^ ]+Z  kept for ever"),
                            MatchesRegex("1  [0-9]+  5 B  [^ ]+Z")));
    EXPECT_THAT(text({"revisions", idOf("other")}).lines,
                ElementsAre(MatchesRegex("1  [0-9]+  6 B  [^ ]+Z")));
}

TEST_F(RevisionsCommandTest, AFolderHasNoneAndWhatIsNotThereIsRefused) {
    const auto folder = text({"revisions", valueOf(json({"mkdir", "folder"}).output, "id")});
    EXPECT_EQ(folder.status, 0);
    EXPECT_THAT(folder.output, IsEmpty());
    const auto missing = text({"revisions", "none"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_THAT(missing.error, HasSubstr("refused the revisions: 13000404"));
}

}  // namespace
}  // namespace quillbox_test
