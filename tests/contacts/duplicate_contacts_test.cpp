#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include "baseapi/contacts/vcf_import_manager.h"
#include "tests/contacts/address_book_fixture.h"

namespace {

using baseapi::AddressBookContact;
using baseapi::PackedContact;
using baseapi::SharedContact;
using baseapi::VCFImportManager;

/// In MiB.
long peakOfMemory() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}

class DuplicateContactsTest : public AddressBookTest {
  protected:
    using Contacts = std::vector<SharedContact>;

    static Contacts duplicates(const Contacts& local, const Contacts& cloud) {
        return VCFImportManager::findDuplicateContactsToDeleteEfficient(local, cloud);
    }
    static bool areDuplicates(const AddressBookContact& local, const AddressBookContact& cloud) {
        return !duplicates({shared(local)}, {shared(cloud)}).empty();
    }
};

TEST_F(DuplicateContactsTest, AnEqualNameAndOneEqualNumberMakeADuplicate) {
    EXPECT_TRUE(areDuplicates(person("Jane", "Doe", {"1", "138-0000-0000"}),
                              person("Jane", "Doe", {"2", "13800000000"})));
    EXPECT_FALSE(areDuplicates(person("Jane", "Doe", {"1"}), person("Jane", "Doe", {"2"})));
    EXPECT_FALSE(areDuplicates(person("Jane", "Doe", {"1"}), person("Jane", "Roe", {"1"})));
}

TEST_F(DuplicateContactsTest, CaseAndWhitespaceAroundANameDoNotCount) {
    EXPECT_TRUE(areDuplicates(person("Jane", "Doe", {"1"}), person("jane", "doe ", {"1"})));
    EXPECT_TRUE(areDuplicates(person("ÉVA", "ЖУК", {"1"}), person("éva", "жук\u3000\n", {"1"})));
    EXPECT_FALSE(areDuplicates(person("Jane", "Doe", {"1"}), person("Jane ", "Doe", {"1"})))
        << "those inside do";
}

TEST_F(DuplicateContactsTest, OnlyDigitsOfANumberCountAndAllOfThem) {
    EXPECT_TRUE(areDuplicates(person("a", "", {"(138) 0000 0000"}), person("a", "", {"1-3-800000000x"})));
    EXPECT_FALSE(areDuplicates(person("a", "", {"+86 138 0000 0000"}), person("a", "", {"13800000000"})));
    EXPECT_FALSE(areDuplicates(person("a", "", {"0138"}), person("a", "", {"138"})));
    EXPECT_TRUE(areDuplicates(person("a", "", {"١٢"}), person("a", "", {"١-٢"})));
    EXPECT_FALSE(areDuplicates(person("a", "", {"١٢"}), person("a", "", {"12"})));
}

TEST_F(DuplicateContactsTest, WithoutADigitOrANameThereIsNoDuplicate) {
    EXPECT_FALSE(areDuplicates(person("a", "", {"none"}), person("a", "", {"none"})));
    EXPECT_FALSE(areDuplicates(person("a", ""), person("a", "")));
    EXPECT_FALSE(areDuplicates(person(" ", "", {"1"}), person(" ", "", {"1"})));
}

TEST_F(DuplicateContactsTest, ANameAndANumberThatOnlyTogetherLookAlikeAreNone) {
    EXPECT_FALSE(areDuplicates(person("a1", "", {"2"}), person("a", "", {"12"})));
    EXPECT_FALSE(areDuplicates(person("a\n1", "", {"2"}), person("a", "", {"1", "12"})));
}

TEST_F(DuplicateContactsTest, TheNumbersOfEqualNamesInTheFileCountTogether) {
    const Contacts cloud{shared(person("a", "", {"1"})), shared(person("A", "", {"2"}))};
    EXPECT_EQ(duplicates({shared(person("a", "", {"2"}))}, cloud).size(), 1u);
}

TEST_F(DuplicateContactsTest, ALongNameTakesNoMemoryForEachOfItsNumbers) {
    std::vector<std::string> numbers;
    for (int number = 0; number < 5'000; ++number) numbers.push_back(std::to_string(number));
    const auto contact = shared(person(std::string(100'000, 'x'), "", numbers));
    const auto before = peakOfMemory();
    EXPECT_EQ(duplicates({contact}, {contact}).size(), 1u);
    EXPECT_LT(peakOfMemory() - before, 100) << "a name for each number takes 500 MB";
}

TEST_F(DuplicateContactsTest, LongNamesCountWhole) {
    for (const std::size_t length : {255, 256, 257, 5'000}) {
        const std::string name(length - 1, 'x');
        EXPECT_TRUE(areDuplicates(person(name + 'Y', "", {"1"}), person(name + 'y', "", {"1"}))) << length;
        EXPECT_FALSE(areDuplicates(person(name + 'y', "", {"1"}), person(name + 'z', "", {"1"}))) << length;
        EXPECT_FALSE(areDuplicates(person(name, "", {"1"}), person(name, "", {"2"}))) << length;
    }
}

TEST_F(DuplicateContactsTest, TheResultHasTheLocalContactsThemselvesInTheirOrder) {
    const Contacts local{shared(person("c", "", {"3"})), shared(person("b", "", {"2"})),
                         shared(person("a", "", {"1"}))};
    const Contacts cloud{shared(person("a", "", {"1"})), shared(person("c", "", {"3"})),
                         shared(person("d", "", {"2"}))};
    EXPECT_EQ(duplicates(local, cloud), (Contacts{local[0], local[2]}));
}

TEST_F(DuplicateContactsTest, NothingToCompareWithGivesNothing) {
    EXPECT_TRUE(duplicates({shared(person("a", "", {"1"}))}, {}).empty());
    EXPECT_TRUE(duplicates({}, {shared(person("a", "", {"1"}))}).empty());
}

TEST_F(DuplicateContactsTest, TheNameIsTheAddressBooksFullName) {
    book_.plan.formatter = [](const PackedContact& it) {
        return std::string(it.familyName()).append(",").append(it.givenName());
    };
    EXPECT_TRUE(areDuplicates(person("b", "a", {"1"}), person("b", "a", {"1"})));
    EXPECT_TRUE(areDuplicates(person("b", "a,", {"1"}), person(",b", "a", {"1"})));
}

TEST_F(DuplicateContactsTest, WithoutAFullNameTheNamesAreJoinedWithABlank) {
    book_.plan.formatter = [](const PackedContact&) { return std::nullopt; };
    AddressBookContact parted{.givenName = "Jane", .familyName = "Doe", .middleName = "Q"};
    parted.phoneNumbers = {{std::nullopt, {"1"}}};
    EXPECT_TRUE(areDuplicates(parted, person("Jane Q Doe", "", {"1"})));
    EXPECT_TRUE(areDuplicates(person("Jane", "Doe", {"1"}), person("", "jane doe", {"1"})));
}

TEST_F(DuplicateContactsTest, WithoutNamesTheOrganisationCountsAndTheBookIsNotAsked) {
    book_.plan.formatter = [](const PackedContact&) -> std::optional<std::string> {
        ADD_FAILURE();
        return "x";
    };
    AddressBookContact acme{.organizationName = "ACME"};
    acme.phoneNumbers = {{std::nullopt, {"1"}}};
    AddressBookContact small = acme;
    small.organizationName = "acme";
    EXPECT_TRUE(areDuplicates(acme, small));
}

TEST_F(DuplicateContactsTest, ContactsWithoutAnyNameAreAllTheUnknown) {
    const auto nobody = person("", "", {"1"});
    EXPECT_TRUE(areDuplicates(nobody, nobody));
    EXPECT_TRUE(areDuplicates(nobody, person("未知联系人", "", {"1"})));
    EXPECT_FALSE(areDuplicates(nobody, person("", "", {"2"})));
}

}  // namespace
