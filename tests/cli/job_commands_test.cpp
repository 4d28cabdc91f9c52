#include <chrono>

#include "tests/cli/cloud_test.h"
#include "tests/quillboxd/zip_maker.h"

namespace quillbox_test {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class JobCommandsTest : public CloudTest {
  protected:
    JobCommandsTest() {
        make("tree/a.txt", "hello");
        make("tree/b.txt", "world");
        EXPECT_EQ(json({"upload", "tree"}).status, 0);
        EXPECT_EQ(json({"mkdir", "target"}).status, 0);
        tree_ = idOf("tree");
        target_ = idOf("target");
    }
    /// Lets the service's jobs make so many more steps.
    void allow(int steps) const {
        const auto body = "{\"steps\":" + std::to_string(steps) + "}";
        EXPECT_EQ(quillboxd_test::send("POST", service_.url() + "/_dev/jobs", {}, body).status, 200);
    }

    std::string tree_;
    std::string target_;
};

TEST_F(JobCommandsTest, AFolderIsCopied) {
    const auto result = text({"copy", tree_, "--to", target_});
    EXPECT_EQ(result.status, 0) << result.error;
    EXPECT_EQ(result.output, "ok    /tree  /target/tree\n");
    EXPECT_FALSE(idOf("b.txt", idOf("tree", target_)).empty());
}

TEST_F(JobCommandsTest, TheEventsTellHowFarItHasCome) {
    const auto result = json({"copy", tree_, "--to", target_});
    ASSERT_FALSE(result.lines.empty());
    EXPECT_THAT(result.lines, Contains(R"({"event":"progress","job":"1","status":2,"percent":100})"));
    EXPECT_THAT(result.lines.back(),
                AllOf(StartsWith(R"({"event":"success","id":")" + tree_ + R"(","path":"/tree","newId":")"),
                      HasSubstr(R"("newPath":"/target/tree","code":"0","message":null})")));
}

TEST_F(JobCommandsTest, ItemsAreMovedAndRemoved) {
    const auto file = idOf("a.txt", tree_);
    EXPECT_EQ(text({"move", file, "--to", "root"}).output, "ok    /tree/a.txt  /a.txt\n");
    EXPECT_EQ(idOf("a.txt"), file);
    EXPECT_EQ(text({"remove", file, tree_}).output, "ok    /a.txt\nok    /tree\n");
    EXPECT_THAT(json({"ls"}).lines, ElementsAre(HasSubstr("target")));
}

TEST_F(JobCommandsTest, WhatFailsIsToldAndTheRestIsDone) {
    const auto result = text({"move", tree_, idOf("a.txt", tree_), "--to", tree_});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output,
              "failed  /tree  a folder cannot go into itself; 0 of 1 done\nok    /tree/a.txt  /tree/a.txt\n");
}

TEST_F(JobCommandsTest, WhatIsNotThereIsRefused) {
    const auto result = text({"remove", "none"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.output, IsEmpty());
    EXPECT_THAT(result.error, HasSubstr("13000404 there is no file or folder \"none\""));
    EXPECT_EQ(text({"copy", tree_, "--to", "none"}).status, 1);
    EXPECT_EQ(text({"copy", tree_}).status, 2);
    EXPECT_THAT(json({"jobs"}).lines, IsEmpty());
}

TEST_F(JobCommandsTest, AnArchiveIsUnzipped) {
    const auto archive = quillboxd_test::makeZip({{"a", "1"}, {"../up", "2"}}, "key");
    make("photos.zip", archive);
    json({"upload", "photos.zip"});
    const auto id = idOf("photos.zip");
    const auto result = text({"unzip", id, "--to", target_, "--password", "key"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.output,
                StartsWith("failed  ../up  the path leads out of the folder\nfailed  /photos.zip"));
    EXPECT_FALSE(idOf("a", idOf("photos", target_)).empty());
    EXPECT_EQ(text({"unzip", id}).status, 1);
}

TEST_F(JobCommandsTest, CtrlCCancelsTheJobAndTellsWhatItHasDone) {
    allow(1);
    QuillboxProcess process({"copy", tree_, "--to", target_, "--json"}, signedIn());
    ASSERT_TRUE(process.waitForOutput("\"percent\":33"));
    process.interrupt();
    EXPECT_EQ(process.wait(), 130);
    EXPECT_THAT(process.lines().back(), AllOf(StartsWith(R"({"event":"failure")"), HasSubstr("1 of 3 done")));
    EXPECT_THAT(process.error(), HasSubstr("the end of job 1"));
    EXPECT_THAT(json({"jobs"}).lines, ElementsAre(HasSubstr(R"("status":"cancelled")")));
}

TEST_F(JobCommandsTest, JobsAreListedWithTheLatestFirst) {
    json({"copy", tree_, "--to", target_});
    json({"remove", tree_});
    EXPECT_THAT(text({"jobs"}).lines,
                ElementsAre(StartsWith("2  remove  done  20"), StartsWith("1  copy  done  20")));
    EXPECT_THAT(
        json({"jobs"}).lines,
        ElementsAre(StartsWith(R"({"event":"job","id":"2","type":"remove","status":"done","items":3,)"),
                    HasSubstr(R"("type":"copy")")));
}

// ---- watching

class WatchCommandTest : public JobCommandsTest {
  protected:
    /// Whether the request comes to the service.
    bool awaitRequest(const std::string& request) const {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(1);
        while (std::chrono::steady_clock::now() < deadline)
            if (testing::Value(journal(), Contains(request))) return true;
        return false;
    }
    std::vector<std::string> news() const { return json({"watch", "root", "--once"}).lines; }
};

TEST_F(WatchCommandTest, EachWatchGoesOnWhereTheLastOneEnded) {
    EXPECT_THAT(news(), IsEmpty()) << "it begins with the first watch";
    text({"rename", target_, "goal"});
    make("new.txt", "new");
    json({"upload", "new.txt"});
    EXPECT_THAT(news(), ElementsAre(R"({"event":"change","kind":"rename","id":")" + target_ +
                                        R"(","name":"goal","folder":true,"size":0,"from":null})",
                                    AllOf(HasSubstr(R"("kind":"create")"), HasSubstr(R"("size":3)"))));
    EXPECT_THAT(news(), IsEmpty());
    text({"move", tree_, "--to", target_});
    EXPECT_EQ(text({"watch", "root", "--once"}).output, "move  " + tree_ + "  tree\n");
}

TEST_F(WatchCommandTest, ChangesAreToldAsTheyComeUntilCtrlC) {
    QuillboxProcess process({"watch", tree_, "--json"}, signedIn());
    ASSERT_TRUE(awaitRequest("POST /quillbox/ose/v1/syncDir/listChange"));
    text({"rename", idOf("a.txt", tree_), "z.txt"});
    ASSERT_TRUE(process.waitForOutput("z.txt"));
    process.interrupt();
    EXPECT_EQ(process.wait(), 130);
    EXPECT_THAT(process.lines(), ElementsAre(HasSubstr(R"("kind":"rename")")));
    EXPECT_THAT(json({"watch", tree_, "--once"}).lines, IsEmpty());
}

TEST_F(WatchCommandTest, APlaceThatIsNoMoreKnownIsTold) {
    news();
    json({"call", "closeSyncFolder", R"({"syncDirId":"root"})"});
    json({"mkdir", "unseen"});
    const auto result = json({"watch", "root", "--once"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error, HasSubstr("changes may have been missed"));
    json({"mkdir", "seen"});
    EXPECT_THAT(news(), SizeIs(1));
}

TEST_F(WatchCommandTest, AFileIsNotWatched) {
    const auto result = text({"watch", idOf("a.txt", tree_), "--once"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.error, HasSubstr("is a file, not a folder"));
}

}  // namespace
}  // namespace quillbox_test
