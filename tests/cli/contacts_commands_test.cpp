// Backup and restore of contacts.

#include <algorithm>
#include <set>
#include <sstream>

#include "tests/cli/backup_test.h"

namespace quillbox_test::contacts_commands {
namespace {

namespace fs = std::filesystem;
using testing::AnyOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

const std::string success = R"({"event":"success","code":0,"message":"success"})";
const std::string hundred = R"({"event":"onProgress","hash":"","percent":100})";

class ContactsCommandsTest : public BackupTest {
  protected:
    std::string failure(int code, const std::string& message) const {
        return R"({"event":"failure","errorCode":)" + std::to_string(code) + R"(,"errorMessage":")" +
               message + "\"}";
    }
    static std::vector<std::string> line(std::vector<std::string> more = {}) {
        more.insert(more.begin(), {"backup", "contacts", "--device-id", "7", "--address-book", "book"});
        return more;
    }
    Outcome backup(std::vector<std::string> more = {}) const { return json(line(std::move(more))); }
    Outcome restore(const std::string& record, const std::string& folder,
                    std::vector<std::string> more = {}) const {
        fs::create_directories(home_ / folder);
        more.insert(more.begin(), {"restore", "contacts", "--record", record, "--address-book", folder});
        return json(std::move(more));
    }
    /// A book of so many contacts, each with a name and a phone.
    void makeBook(int contacts) const {
        fs::remove_all(home_ / "book");
        fs::create_directories(home_ / "book");
        for (int number = 0; number < contacts; ++number) {
            const auto text = std::to_string(number);
            make("book/" + text + ".vcf", "BEGIN:VCARD\r\nVERSION:3.0\r\nN:Doe;Jane " + text +
                                              ";;;\r\nTEL;TYPE=CELL:5550" + text + "\r\nEND:VCARD\r\n");
        }
    }
    static void addLines(std::set<std::string>& lines, const std::string& text) {
        std::istringstream all(text);
        for (std::string line; std::getline(all, line);) lines.insert(line);
    }
    std::string record() const {
        return valueOf(json({"records", "--module", "102"}).lines.at(0), "recordId");
    }
    std::vector<std::string> cardsOf(const std::string& folder) const {
        std::vector<std::string> cards;
        for (const auto& entry : fs::directory_iterator(home_ / folder)) cards.push_back(contentOf(entry));
        return cards;
    }
};

TEST_F(ContactsCommandsTest, ABookGoesUpAndTheEventsTellOfIt) {
    makeBook(2);
    const auto result = backup();
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.lines, ElementsAre(hundred, success));
    EXPECT_THAT(result.error, IsEmpty());
    EXPECT_EQ(propertiesOfRecord("102"), counts(2, 0));
    expectNoLock("102");
}

TEST_F(ContactsCommandsTest, TenThousandCardsComeBackAndStandOnceAfterTwoRestores) {
    // What the lines say of phones and emails comes back as it was, and a name without separators too.
    std::set<std::string> lines;
    fs::create_directories(home_ / "book");
    for (int number = 0; number < 10'000; ++number) {
        const auto text = std::to_string(number);
        std::string card = "TEL;TYPE=CELL:1380" + text + "\r\nTEL;TYPE=HOME:021" + text +
                           "\r\nEMAIL;TYPE=HOME:h" + text + "@example.org\r\nEMAIL;TYPE=WORK:w" + text +
                           "@example.org\r\n";
        const auto odd = number % 2 == 1;
        if (!odd) card += "N:王;小明" + text + ";;;\r\n";
        addLines(lines, card);
        if (odd) card += "N:O\\, Neil;Ann\\; " + text + ";;;\r\n";
        make("book/" + text + ".vcf", "BEGIN:VCARD\r\nVERSION:3.0\r\n" + card + "END:VCARD\r\n");
    }
    ASSERT_EQ(backup().status, 0);
    EXPECT_EQ(propertiesOfRecord("102"), counts(10'000, 0));
    for (int time = 0; time < 2; ++time) {
        ASSERT_EQ(restore(record(), "fresh").status, 0);
        const auto cards = cardsOf("fresh");
        EXPECT_EQ(cards.size(), 10'000U);
        std::set<std::string> found;
        for (const auto& card : cards) addLines(found, card);
        EXPECT_TRUE(std::ranges::includes(found, lines));
    }
}

TEST_F(ContactsCommandsTest, ForPeopleThereIsALine) {
    makeBook(1);
    const auto result = text(line());
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "ok    the backup of the contacts is complete\n");
}

TEST_F(ContactsCommandsTest, ABookThatCannotBeReadIsARefusedPermission) {
    const auto before = journal().size();
    const auto result = backup();
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.lines, ElementsAre(failure(100003, "No permission")));
    EXPECT_EQ(result.error, "quillbox: the backup of the contacts failed: No permission (100003)\n");
    EXPECT_EQ(journal().size(), before);
}

TEST_F(ContactsCommandsTest, AnEmptyBookIsBackedUpWithAWarning) {
    makeBook(0);
    const auto first = backup();
    EXPECT_EQ(first.status, 0);
    EXPECT_EQ(first.lines.back(), success);
    EXPECT_EQ(first.error, "quillbox: warning: the address book is empty\n");
    makeBook(3);
    EXPECT_THAT(backup().error, IsEmpty());
    makeBook(0);
    EXPECT_EQ(backup().error,
              "quillbox: warning: the address book is empty; the last backup holds 3 contacts\n");
}

TEST_F(ContactsCommandsTest, ABookThatIsMuchSmallerThanTheLastBackupIsWarnedOf) {
    makeBook(9);
    EXPECT_THAT(backup().error, IsEmpty());
    makeBook(5);
    EXPECT_THAT(backup().error, IsEmpty());
    makeBook(2);
    EXPECT_EQ(
        backup().error,
        "quillbox: warning: the address book holds 2 contacts, far fewer than the 5 of the last backup\n");
}

TEST_F(ContactsCommandsTest, ABrokenCardIsPassedOverWithAWarning) {
    makeBook(2);
    make("book/broken.vcf", "junk");
    const auto result = backup();
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error, HasSubstr("quillbox: warning: book/broken.vcf is passed over: "));
    EXPECT_EQ(propertiesOfRecord("102"), counts(2, 0));
}

TEST_F(ContactsCommandsTest, AnUploadThatIsRefusedIsToldWithItsCause) {
    makeBook(1);
    refuse("backup/record/*", 507, "quota exceeded");
    const auto result = backup();
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.lines, ElementsAre(failure(100001, "file invaild")));
    EXPECT_EQ(
        result.error,
        "quillbox: the backup of the contacts failed: file invaild (100001): the service refused to create "
        "it: 507 quota exceeded\n");
    expectNoLock("102");
}

TEST_F(ContactsCommandsTest, AFolderThatIsRefusedIsToldWithItsCause) {
    makeBook(1);
    refuse("directory", 507, "quota exceeded", 0, 9);
    const auto result = backup();
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.lines, ElementsAre(failure(100024, "folders create error")));
    EXPECT_EQ(
        result.error,
        "quillbox: the backup of the contacts failed: folders create error (100024): the service refused "
        "to make it: 507 quota exceeded\n");
    expectNoLock("102");
}

TEST_F(ContactsCommandsTest, ACancelAtOnceEndsTheRunAndLeavesNoLock) {
    makeBook(2);
    for (int attempt = 0; attempt < 5; ++attempt) {
        const auto result = backup({"--cancel-after", "0"});
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.lines.back(), failure(100009, "User cancel"));
        EXPECT_EQ(result.error, "quillbox: the backup of the contacts was cancelled\n");
        expectNoLock("102");
    }
}

TEST_F(ContactsCommandsTest, ACancelInMidRunClosesTheRecord) {
    makeBook(2);
    stall("POST", "/quillbox/ose/v1/directory");
    const auto cancelled = std::chrono::steady_clock::now() + std::chrono::milliseconds(1500);
    QuillboxProcess process(line({"--json", "--cancel-after", "1.5"}), signedIn());
    ASSERT_TRUE(waitForRequest("POST /quillbox/ose/v1/backup/record"));
    if (std::chrono::steady_clock::now() > cancelled) GTEST_SKIP() << "the record came too late";
    // Nothing tells of the cancel before the answer has come.
    std::this_thread::sleep_until(cancelled + std::chrono::seconds(1));
    release();
    EXPECT_EQ(process.wait(), 1);
    EXPECT_THAT(process.lines(), ElementsAre(failure(100009, "User cancel")));
    EXPECT_EQ(propertiesOfRecord("102"), counts(0, 0, 100009));
    expectNoLock("102");
}

TEST_F(ContactsCommandsTest, AtCtrlCTheRunIsCancelledAndItsEndIsWaitedFor) {
    makeBook(2);
    stall("PUT", "/_part/*");
    QuillboxProcess process(line({"--json"}), signedIn());
    ASSERT_TRUE(waitForRequest("POST /quillbox/ose/v1/backup/record/"));
    process.interrupt();
    ASSERT_TRUE(process.waitForError("waiting for the backup of the contacts to close"));
    release();
    EXPECT_EQ(process.wait(), 130);
    EXPECT_EQ(process.lines().back(), failure(100009, "User cancel"));
    expectNoLock("102");
}

TEST_F(ContactsCommandsTest, ARestoreBringsTheContactsAndASecondOneLeavesOneCopyOfEach) {
    makeBook(3);
    make("book/org.vcf",
         "BEGIN:VCARD\r\nVERSION:3.0\r\nN:李;雷;;;\r\nORG:Acme\r\nTEL;TYPE=WORK:+86 138\r\nEND:VCARD\r\n");
    EXPECT_EQ(backup().status, 0);
    const auto first = restore(record(), "new", {"--hash", "h"});
    EXPECT_EQ(first.status, 0) << first.error;
    EXPECT_EQ(first.lines.back(), R"({"event":"onSuccess","hash":"h","code":0,"message":"success"})");
    for (const auto& event : first.lines)
        EXPECT_THAT(event, AnyOf(HasSubstr(R"("hash":"h","percent":0})"),
                                 HasSubstr(R"("hash":"h","percent":1})"), HasSubstr("onSuccess")));
    EXPECT_THAT(cardsOf("new"), SizeIs(4));
    EXPECT_THAT(cardsOf("new"), Contains(HasSubstr("N:李;雷;")));
    EXPECT_EQ(restore(record(), "new").status, 0);
    EXPECT_THAT(cardsOf("new"), SizeIs(4));
}

TEST_F(ContactsCommandsTest, ARestoreThatCannotBeToldFails) {
    const auto without = restore("", "new");
    EXPECT_EQ(without.status, 1);
    EXPECT_THAT(without.lines,
                ElementsAre(R"({"event":"onFailure","hash":"","code":100001,"message":"No record id"})"));
    EXPECT_EQ(without.error, "quillbox: the restore of the contacts failed: No record id (100001)\n");
    const auto unknown = restore("999", "new");
    EXPECT_EQ(unknown.status, 1);
    EXPECT_THAT(unknown.lines, ElementsAre(HasSubstr(R"({"event":"onFailure","hash":"","code":)")));
}

TEST_F(ContactsCommandsTest, ARestoreIntoABookThatCannotBeReadIsARefusedPermission) {
    const auto result = json({"restore", "contacts", "--record", "1", "--address-book", "nowhere"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(
        result.lines,
        ElementsAre(R"({"event":"onFailure","hash":"","code":100003,"message":"No contact permission"})"));
}

TEST_F(ContactsCommandsTest, ADownloadThatBreaksFailsTheRestore) {
    makeBook(2);
    EXPECT_EQ(backup().status, 0);
    plan(R"({"verb":"GET","path":"/_content/*","kind":"reset"})");
    const auto result = restore(record(), "new");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.lines.back(),
              R"({"event":"onFailure","hash":"","code":100022,"message":"Contact download file failed"})");
    EXPECT_THAT(result.error,
                StartsWith("quillbox: the restore of the contacts failed: Contact download file "
                           "failed (100022): the download broke: "));
    EXPECT_THAT(cardsOf("new"), IsEmpty());
}

TEST_F(ContactsCommandsTest, ARestoreOfWhatHoldsNoContactIsWarnedOf) {
    makeBook(2);
    EXPECT_EQ(backup().status, 0);
    plan(R"({"verb":"GET","path":"/_content/*","kind":"html"})");
    const auto result = restore(record(), "new");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "quillbox: warning: no contact was restored, as the backup's file holds none\n");
}

TEST_F(ContactsCommandsTest, ContactsThatCannotBeSavedFailTheRestore) {
    makeBook(2);
    EXPECT_EQ(backup().status, 0);
    const auto id = record();
    fs::create_directories(home_ / "new");
    stall("GET", "/_content/*");
    QuillboxProcess process({"restore", "contacts", "--record", id, "--address-book", "new", "--json"},
                            signedIn());
    ASSERT_TRUE(waitForStall());
    fs::remove(home_ / "new");
    release();
    EXPECT_EQ(process.wait(), 1);
    EXPECT_THAT(process.lines().back(), HasSubstr("onSuccess"));
    EXPECT_THAT(process.error(), HasSubstr("quillbox: 2 of 2 contacts could not be saved: "));
}

TEST_F(ContactsCommandsTest, ABookThatIsLostBeforeItIsReadIsWarnedOf) {
    makeBook(2);
    stall("POST", "/quillbox/ose/v1/backup/record");
    QuillboxProcess process(line({"--json"}), signedIn());
    ASSERT_TRUE(waitForStall());
    fs::remove_all(home_ / "book");
    release();
    EXPECT_EQ(process.wait(), 0);
    EXPECT_EQ(process.error(),
              "quillbox: warning: the address book could not be read, so the backup holds no contact\n");
}

TEST_F(ContactsCommandsTest, AtCtrlCARestoreIsWaitedForToItsEnd) {
    makeBook(2);
    EXPECT_EQ(backup().status, 0);
    const auto id = record();
    fs::create_directories(home_ / "new");
    stall("GET", "/_content/*");
    QuillboxProcess process({"restore", "contacts", "--record", id, "--address-book", "new", "--json"},
                            signedIn());
    ASSERT_TRUE(waitForRequest("GET /quillbox/ose/v1/backup/record/"));
    process.interrupt();
    ASSERT_TRUE(process.waitForError("waiting for the restore of the contacts, which cannot be cancelled"));
    release();
    EXPECT_EQ(process.wait(), 130);
    EXPECT_THAT(process.lines().back(), HasSubstr("onSuccess"));
    EXPECT_THAT(cardsOf("new"), SizeIs(2));
}

}  // namespace
}  // namespace quillbox_test::contacts_commands
