#include "hostkit/vcf_address_book.h"

#include <sys/stat.h>

#include <fstream>
#include <iterator>

#include "tests/support/address_book_contract.h"
#include "tests/support/file_content.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/without_root_rights.h"

namespace test_support {

struct FolderBooks {
    baseapi::AddressBook& book() { return book_; }
    baseapi::AddressBook& again() { return again_; }
    baseapi::AddressBook& refused() { return refused_; }

    TemporaryFolder folder_;
    hostkit::VcfAddressBook book_{folder_.path()};
    hostkit::VcfAddressBook again_{folder_.path()};
    hostkit::VcfAddressBook refused_{folder_ / "missing"};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Folder, AddressBookContract, FolderBooks);

}  // namespace test_support

namespace {

using baseapi::AddressBookContact;
using baseapi::SharedContact;
using hostkit::VcfAddressBook;
using test_support::contentOf;
using testing::ElementsAre;
namespace fs = std::filesystem;

std::string cardNamed(const std::string& name) {
    return "BEGIN:VCARD\r\nVERSION:3.0\r\nN:;" + name + ";;;\r\nFN:" + name + "\r\nEND:VCARD\r\n";
}

class VcfAddressBookTest : public testing::Test {
  protected:
    fs::path write(const std::string& name, std::string_view content) const {
        std::ofstream(folder_ / name, std::ios::binary) << content;
        return folder_ / name;
    }
    std::vector<SharedContact> contacts() {
        std::vector<SharedContact> all;
        const auto error =
            book_.enumerateContacts({}, [&](SharedContact it) { all.push_back(std::move(it)); });
        EXPECT_FALSE(error) << error->message;
        return all;
    }
    std::vector<std::string> names() {
        std::vector<std::string> all;
        for (const auto& contact : contacts()) all.emplace_back(contact->givenName());
        return all;
    }
    std::size_t files() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder_.path()), {}));
    }

    test_support::TemporaryFolder folder_;
    std::vector<std::string> warnings_;
    VcfAddressBook book_{folder_.path(), [this](const fs::path& file, const std::string& why) {
                             warnings_.push_back(file.filename().string() + ": " + why);
                         }};
};

TEST_F(VcfAddressBookTest, ContactsComeByTheNamesOfTheirFilesWhichIdentifyThem) {
    write("b.vcf", cardNamed("first"));
    write("a.vcf", cardNamed("second"));
    write("\xff 中.vcf", cardNamed("third"));
    EXPECT_THAT(names(), ElementsAre("second", "first", "third"));
    EXPECT_EQ(contacts()[0]->identifier(), "a.vcf");
}

TEST_F(VcfAddressBookTest, HiddenFilesAndOtherSuffixesDoNotCount) {
    for (const auto* name : {".a.vcf", "a.vcf.tmp", "a.txt", "vcf", ".vcf", "a.VCF"})
        write(name, cardNamed("x"));
    EXPECT_THAT(names(), ElementsAre());
    EXPECT_THAT(warnings_, ElementsAre());
}

TEST_F(VcfAddressBookTest, ABrokenCardIsPassedOverWithAWarningAndTheOthersAreThere) {
    write("a.vcf", cardNamed("a"));
    write("b.vcf", "BEGIN:VCARD\n");
    write("c.vcf", cardNamed("c"));
    write("d.vcf", "");
    EXPECT_THAT(names(), ElementsAre("a", "c"));
    EXPECT_THAT(warnings_, ElementsAre("b.vcf: no END:VCARD", "d.vcf: no BEGIN:VCARD"));
}

TEST_F(VcfAddressBookTest, WhatIsNoRegularFileIsPassedOverAndNotWaitedFor) {
    ASSERT_EQ(::mkfifo((folder_ / "fifo.vcf").c_str(), 0600), 0);
    fs::create_directory(folder_ / "folder.vcf");
    fs::create_symlink("nowhere", folder_ / "dangling.vcf");
    write("a.vcf", cardNamed("a"));
    EXPECT_THAT(names(), ElementsAre("a"));
    EXPECT_EQ(warnings_.size(), 3u);
}

TEST_F(VcfAddressBookTest, ACardThatMayNotBeReadIsPassedOver) {
    ASSERT_EQ(::chmod(write("a.vcf", cardNamed("a")).c_str(), 0), 0);
    write("b.vcf", cardNamed("b"));
    test_support::withoutRootRights([&] { EXPECT_THAT(names(), ElementsAre("b")); });
    EXPECT_EQ(warnings_.size(), 1u);
}

TEST_F(VcfAddressBookTest, AFolderThatMayNotBeReadIsARefusedPermission) {
    write("a.vcf", cardNamed("a"));
    ASSERT_EQ(::chmod(folder_.path().c_str(), 0), 0);
    test_support::withoutRootRights([&] {
        EXPECT_EQ(book_.authorizationStatus(), baseapi::AddressBook::AuthorizationStatus::denied);
        EXPECT_TRUE(book_.enumerateContacts({}, [](const auto&) { ADD_FAILURE(); }));
    });
    ::chmod(folder_.path().c_str(), 0700);
    EXPECT_EQ(book_.authorizationStatus(), baseapi::AddressBook::AuthorizationStatus::authorized);
}

TEST_F(VcfAddressBookTest, WhatARequestDoesNotDeleteStaysByteForByte) {
    const std::string odd = "BEGIN:VCARD\nVERSION:4.0\nFN:odd\nX-UNKNOWN;A=b:c\n d\nEND:VCARD";
    write("odd.vcf", odd);
    write("gone.vcf", cardNamed("gone"));
    write("broken.vcf", "broken");
    auto gone = contacts();
    std::erase_if(gone, [](const auto& it) { return it->givenName() != "gone"; });
    const std::vector<SharedContact> added{shareContact(AddressBookContact{})};
    EXPECT_FALSE(book_.execute({.added = added, .deleted = gone}));
    EXPECT_EQ(contentOf(folder_ / "odd.vcf"), odd);
    EXPECT_EQ(contentOf(folder_ / "broken.vcf"), "broken");
    EXPECT_FALSE(fs::exists(folder_ / "gone.vcf"));
    EXPECT_EQ(files(), 3u);
}

TEST_F(VcfAddressBookTest, AnIdentifierOfElsewhereDeletesNothing) {
    fs::create_directory(folder_ / "inner");
    const auto outside = write("a.vcf", cardNamed("a"));
    VcfAddressBook inner(folder_ / "inner");
    for (const std::string& identifier :
         std::vector<std::string>{"../a.vcf", outside.string(), "", ".", "a.txt"}) {
        const std::vector<SharedContact> deleted{shareContact(AddressBookContact{.identifier = identifier})};
        EXPECT_TRUE(inner.execute({.deleted = deleted})) << identifier;
    }
    EXPECT_TRUE(fs::exists(outside));
}

TEST_F(VcfAddressBookTest, ARequestThatCannotBeWrittenLeavesNothingBehind) {
    const std::vector<SharedContact> added{shareContact(AddressBookContact{}),
                                           shareContact(AddressBookContact{})};
    ASSERT_EQ(::chmod(folder_.path().c_str(), 0555), 0);
    test_support::withoutRootRights([&] { EXPECT_TRUE(book_.execute({.added = added})); });
    ASSERT_EQ(::chmod(folder_.path().c_str(), 0700), 0);
    EXPECT_EQ(files(), 0u);
}

TEST_F(VcfAddressBookTest, AnAddedContactIsAFileOfItsOwnWithNothingBesideIt) {
    const std::vector<SharedContact> added{shareContact(AddressBookContact{.givenName = "a"}),
                                           shareContact(AddressBookContact{.givenName = "b"})};
    EXPECT_FALSE(book_.execute({.added = added}));
    EXPECT_EQ(files(), 2u);
    for (const auto& entry : fs::directory_iterator(folder_.path()))
        EXPECT_EQ(entry.path().extension(), ".vcf");
}

}  // namespace
