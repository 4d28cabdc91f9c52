// Runs that are killed at each of their requests, and the runs after them.

#include <chrono>
#include <functional>

#include "tests/cli/backup_test.h"

namespace quillbox_test {
namespace {

namespace fs = std::filesystem;

/// A kind of run, as the test starts it.
struct Kind {
    std::string name;
    std::vector<std::string> line;
};

void PrintTo(const Kind& kind, std::ostream* stream) {
    *stream << kind.name;
}

class KilledBackupTest : public BackupTest, public testing::WithParamInterface<Kind> {
  protected:
    KilledBackupTest() {
        make("notes/deep/a", "a note");
        make("photos/a.jpg", "a picture");
        make("photos/b.mp4", "a video");
        make("book/a.vcf",
             "BEGIN:VCARD\r\nVERSION:3.0\r\nN:Doe;Jane;;;\r\nTEL;TYPE=CELL:555\r\nEND:VCARD\r\n");
        fs::create_directories(home_ / "new");
    }

    /// A service that knows nothing but the account, its scope and a backup of the contacts, and a program
    /// that remembers nothing.
    void startAnew() {
        quillboxd_test::send("POST", service_.url() + "/_dev/reset");
        fs::remove_all(home_ / "state");
        ASSERT_EQ(run({"sign-in", "--code", "someone", "--save", tokenFile()}, settings()).status, 0);
        ASSERT_EQ(json({"scope-add", "notes", "/backup", "--device-id", "7"}).status, 0);
        ASSERT_EQ(json({"backup", "contacts", "--device-id", "8", "--address-book", "book"}).status, 0);
        const auto records = json({"records", "--module", "102"});
        ASSERT_EQ(records.lines.size(), 1U);
        record_ = valueOf(records.lines[0], "recordId");
    }
    std::vector<std::string> line() const {
        auto line = GetParam().line;
        if (line[0] == "restore") line.insert(line.end(), {"--record", record_});
        line.push_back("--json");
        return line;
    }

    /// Kills a run when so many of its requests have been answered and another one has come; false where
    /// there is no other one. Then lets the service end what it is at.
    bool killAfter(int requests) {
        plan(R"({"path":"/*","after":)" + std::to_string(requests) +
             R"(,"times":1000,"kind":"stall","seconds":600})");
        QuillboxProcess process(line(), signedIn());
        const bool another =
            waitUntil([&] { return hits() > 0; },
                      [&] { return process.output().find(R"("code":0)") != std::string::npos; });
        process.kill();
        release();
        return another;
    }
    /// True as soon as `reached`, false where it does not come to that before `ended`.
    static bool waitUntil(const std::function<bool()>& reached, const std::function<bool()>& ended) {
        const auto limit = std::chrono::steady_clock::now() + test_support::kPatience;
        while (!reached()) {
            if (ended() && !reached()) return false;
            if (std::chrono::steady_clock::now() > limit) {
                ADD_FAILURE() << "neither a further request nor the end";
                return false;
            }
        }
        return true;
    }

    std::string record_;
};

TEST_P(KilledBackupTest, TheNextRunEndsWellAndNoLockStays) {
    int requests = 0;
    for (bool another = true; another; ++requests) {
        SCOPED_TRACE("after " + std::to_string(requests) + " requests");
        startAnew();
        if (HasFatalFailure()) return;
        another = killAfter(requests);
        const auto next = json(line());
        EXPECT_EQ(next.status, 0) << next.output << next.error;
        EXPECT_THAT(next.lines.back(), testing::HasSubstr(R"("code":0,)"));
        for (const char* module : {"100", "101", "102"}) expectNoLock(module);
        if (HasFailure()) return;
    }
    // The shortest run, a restore, has three.
    EXPECT_GE(requests, 3);
}

INSTANTIATE_TEST_SUITE_P(
    EachKind, KilledBackupTest,
    testing::Values(Kind{"Dirs", {"backup", "dirs", "--device-id", "7"}},
                    Kind{"Album", {"backup", "album", "--device-id", "7", "--photos", "photos"}},
                    Kind{"Contacts", {"backup", "contacts", "--device-id", "7", "--address-book", "book"}},
                    Kind{"Restore", {"restore", "contacts", "--address-book", "new"}}),
    [](const auto& each) { return each.param.name; });

}  // namespace
}  // namespace quillbox_test
