#include "baseapi/contacts/vcf_import_manager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "tests/contacts/address_book_fixture.h"
#include "tests/support/temporary_folder.h"

namespace {

using baseapi::AddressBookContact;
using baseapi::ContactSaveRequest;
using baseapi::URL;
using baseapi::VCFImportManager;
using testing::ElementsAre;

constexpr std::string_view jane =
    "BEGIN:VCARD\r\nVERSION:3.0\r\nN:Doe;Jane;;;\r\nFN:DoeJane\r\nTEL;TYPE=CELL:138\r\nEND:VCARD\r\n";
constexpr std::string_view lei =
    "BEGIN:VCARD\r\nVERSION:3.0\r\nN:李;雷;;;\r\nFN:李雷\r\nTEL;TYPE=HOME:139\r\nEND:VCARD\r\n";
constexpr std::string_view acme =
    "BEGIN:VCARD\r\nVERSION:3.0\r\nN:;;;;\r\nFN:Acme\r\nORG:Acme\r\nEND:VCARD\r\n";

class VCFImportManagerTest : public AddressBookTest {
  protected:
    std::int64_t import(std::string_view content) {
        std::ofstream(file_, std::ios::binary) << content;
        return VCFImportManager::importContactsFromVCF(URL::file(file_));
    }
    std::vector<std::string> givenNames() const {
        std::vector<std::string> names;
        for (const auto& contact : book_.contacts()) names.push_back(contact.givenName);
        return names;
    }
    static std::string both() { return std::string(jane).append(lei); }

    test_support::TemporaryFolder folder_;
    const std::filesystem::path file_ = folder_ / "contacts.vcf";
};

TEST_F(VCFImportManagerTest, SavesAllContactsInOneRequestAndLogsEachStep) {
    EXPECT_EQ(import(both()), 2);
    EXPECT_THAT(givenNames(), ElementsAre("Jane", "雷"));
    ASSERT_EQ(book_.requests().size(), 2u);
    EXPECT_TRUE(book_.requests()[0].added.empty() && book_.requests()[0].deleted.empty())
        << "the delete of nothing is asked for too";
    EXPECT_EQ(book_.requests()[1].added.size(), 2u);
    EXPECT_THAT(log_.lines(), ElementsAre("importContactsFromVCF get count = 2", "成功删除 0 个重复联系人",
                                          "saveContactsToAddressBook success count = 2"));
}

TEST_F(VCFImportManagerTest, AMissingFileGivesMinusOne) {
    const auto missing = folder_ / "missing.vcf";
    EXPECT_EQ(VCFImportManager::importContactsFromVCF(URL::file(missing)), -1);
    EXPECT_THAT(log_.lines(), ElementsAre("importContactsFromVCF file not exist: " + missing.string()));
    EXPECT_TRUE(book_.requests().empty());
}

TEST_F(VCFImportManagerTest, AFileThatIsNoUTF8GivesMinusOne) {
    EXPECT_EQ(import(std::string(jane) + "\xff"), -1);
    EXPECT_THAT(log_.lines(), ElementsAre("parseVCFFile error: " + file_.string() + ": no UTF-8 text",
                                          "importContactsFromVCF parseVCFFile error"));
    EXPECT_TRUE(book_.requests().empty());
}

TEST_F(VCFImportManagerTest, AFolderGivesMinusOne) {
    EXPECT_EQ(VCFImportManager::importContactsFromVCF(URL::file(folder_.path())), -1);
    EXPECT_TRUE(log_.containsBeginning("parseVCFFile error: "));
    EXPECT_TRUE(log_.contains("importContactsFromVCF parseVCFFile error"));
}

TEST_F(VCFImportManagerTest, AFileWithoutAUsableContactGivesZeroAndDeletesNothing) {
    for (const std::string_view content :
         {"", "begin:vcard\nFN:a\nend:vcard\n", "BEGIN:VCARD\nTEL;TYPE=CELL:1\nEND:VCARD\n"}) {
        log_.clear();
        EXPECT_EQ(import(content), 0);
        EXPECT_THAT(log_.lines(), ElementsAre("importContactsFromVCF no contacts"));
    }
    EXPECT_TRUE(book_.requests().empty());
}

TEST_F(VCFImportManagerTest, TheFileReplacesTheLocalContact) {
    auto old = person("jane", "doe ", {"1-3-8"});
    old.note = "old";
    book_.put(old);
    book_.put(person("John", "Doe", {"138"}));
    EXPECT_EQ(import(jane), 1);
    EXPECT_THAT(givenNames(), ElementsAre("John", "Jane"));
    EXPECT_THAT(log_.lines(), ElementsAre("importContactsFromVCF get count = 1", "成功删除 1 个重复联系人",
                                          "saveContactsToAddressBook success count = 1"));
}

TEST_F(VCFImportManagerTest, TheSameFileTwiceLeavesOneCopyOfWhoHasNameAndPhoneAndTwoOfTheOthers) {
    const auto content = both().append(acme);
    EXPECT_EQ(import(content), 3);
    EXPECT_EQ(import(content), 3);
    EXPECT_THAT(givenNames(), testing::UnorderedElementsAre("Jane", "雷", "Acme", "Acme"));
}

TEST_F(VCFImportManagerTest, AContactTwiceInTheFileIsSavedTwice) {
    EXPECT_EQ(import(std::string(jane).append(jane)), 2);
    EXPECT_THAT(givenNames(), ElementsAre("Jane", "Jane"));
}

TEST_F(VCFImportManagerTest, AFailedDeleteLeavesOldAndNewSideBySide) {
    book_.put(person("Jane", "Doe", {"138"}));
    book_.plan.refusal = [](const ContactSaveRequest& it) -> std::optional<std::string> {
        if (it.deleted.empty()) return std::nullopt;
        return "read only";
    };
    EXPECT_EQ(import(jane), 1);
    EXPECT_THAT(givenNames(), ElementsAre("Jane", "Jane"));
    EXPECT_THAT(log_.lines(), ElementsAre("importContactsFromVCF get count = 1", "删除联系人失败: read only",
                                          "saveContactsToAddressBook success count = 1"));
}

TEST_F(VCFImportManagerTest, AFailedSaveOfAllSavesOneByOneAndTheDeletesStay) {
    book_.put(person("Jane", "Doe", {"138"}));
    book_.plan.refusal = [](const ContactSaveRequest& it) -> std::optional<std::string> {
        if (it.added.size() > 1) return "too many";
        if (!it.added.empty() && it.added[0]->givenName() == "雷") return "not him";
        return std::nullopt;
    };
    EXPECT_EQ(import(both().append(acme)), 2);
    EXPECT_THAT(givenNames(), ElementsAre("Jane", "Acme"));
    EXPECT_THAT(log_.lines(), ElementsAre("importContactsFromVCF get count = 3", "成功删除 1 个重复联系人",
                                          "saveContactsToAddressBook error: too many",
                                          "saveContactsOneByOne failed: 雷 - not him",
                                          "saveContactsOneByOne success/total = 2/3 "));
}

TEST_F(VCFImportManagerTest, WhereNoContactCanBeSavedTheResultIsZero) {
    book_.plan.refusal = [](const ContactSaveRequest& it) -> std::optional<std::string> {
        if (it.added.empty()) return std::nullopt;
        return "full";
    };
    EXPECT_EQ(import(both()), 0);
    EXPECT_TRUE(log_.contains("saveContactsOneByOne success/total = 0/2 "));
}

TEST_F(VCFImportManagerTest, AFailedFetchGoesOnWithThePartFetched) {
    book_.put(person("Jane", "Doe", {"138"}));
    book_.put(person("雷", "李", {"139"}));
    book_.plan.enumerationError = "the store is locked";
    book_.plan.visitedBeforeError = 1;
    EXPECT_EQ(import(both()), 2);
    EXPECT_THAT(givenNames(), ElementsAre("雷", "Jane", "雷"));
    EXPECT_THAT(log_.lines(),
                ElementsAre("importContactsFromVCF get count = 2", "获取本地通讯录失败: the store is locked",
                            "成功删除 1 个重复联系人", "saveContactsToAddressBook success count = 2"));
}

TEST_F(VCFImportManagerTest, ComparisonAsksForTheSevenKeysAndTheFullName) {
    book_.put(person("a", ""));
    EXPECT_EQ(VCFImportManager::getLocalMutableContactsForComparison().size(), 1u);
    using enum baseapi::ContactKey;
    EXPECT_THAT(book_.keys(), ElementsAre(identifier, givenName, familyName, middleName, organizationName,
                                          phoneNumbers, emailAddresses, fullName));
}

TEST_F(VCFImportManagerTest, ThePermissionIsTheCallersToAskFor) {
    book_.plan.status = baseapi::AddressBook::AuthorizationStatus::denied;
    EXPECT_EQ(import(jane), 0);
    EXPECT_TRUE(log_.contains("获取本地通讯录失败: not authorised"));
    EXPECT_TRUE(log_.contains("saveContactsOneByOne success/total = 0/1 "));
}

}  // namespace
