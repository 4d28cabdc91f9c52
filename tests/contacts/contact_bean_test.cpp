#include "baseapi/contacts/contact_bean.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/test_platform.h"

namespace {

using baseapi::AddressBookContact;
using baseapi::ContactBean;
using baseapi::EmailType;
using baseapi::PhoneNumberType;
using testing::ElementsAre;

TEST(ContactBeanTest, AFreshOneHasNothingButTheNameOfTheUnknown) {
    const ContactBean contact;
    EXPECT_EQ(contact.id, std::nullopt);
    EXPECT_EQ(contact._displayName, std::nullopt);
    EXPECT_EQ(contact.organization, std::nullopt);
    EXPECT_TRUE(contact.phoneNumbers.empty());
    EXPECT_TRUE(contact.emails.empty());
    EXPECT_EQ(contact.op, 0);
    EXPECT_EQ(contact.fullName(), "未知联系人");
    EXPECT_EQ(contact.displayName(), "未知联系人");
    EXPECT_EQ(contact.vcfNameField(), ";;;;");
}

TEST(ContactBeanTest, TheLongConstructorTakesEveryFieldButTheLists) {
    const ContactBean contact("1", "李", "雷", "M", "Dr", "Jr", "Lei", "note",
                              ContactBean::OrganizationInfo{.company = "Acme"}, 7);
    EXPECT_EQ(contact.id, "1");
    EXPECT_EQ(contact.vcfNameField(), "李;雷;M;Dr;Jr");
    EXPECT_EQ(contact.displayName(), "Lei");
    EXPECT_EQ(contact.notes, "note");
    EXPECT_EQ(contact.organization->company, "Acme");
    EXPECT_EQ(contact.op, 7);
    EXPECT_TRUE(contact.phoneNumbers.empty() && contact.emails.empty());
}

TEST(ContactBeanTest, TheShortConstructorTakesTheNameAndTheLists) {
    const ContactBean contact("Lei", {{"1", PhoneNumberType::home}}, {{"a@b", EmailType::work}});
    EXPECT_EQ(contact.displayName(), "Lei");
    EXPECT_EQ(contact.phoneNumbers.at(0).number, "1");
    EXPECT_EQ(contact.emails.at(0).address, "a@b");
    EXPECT_EQ(contact.familyName, std::nullopt);
}

TEST(ContactBeanTest, TheFullNameIsFamilyThenGivenNameWithoutABlank) {
    ContactBean contact;
    contact.familyName = "李";
    EXPECT_EQ(contact.fullName(), "李");
    contact.givenName = "雷";
    EXPECT_EQ(contact.fullName(), "李雷");
    contact.familyName = "";
    EXPECT_EQ(contact.fullName(), "雷");
}

TEST(ContactBeanTest, WithoutNamesTheCompanyIsTheFullNameAlsoAnEmptyOne) {
    ContactBean contact;
    contact.givenName = "";
    contact.organization = ContactBean::OrganizationInfo{.title = "Chief"};
    EXPECT_EQ(contact.fullName(), "未知联系人");
    contact.organization->company = "";
    EXPECT_EQ(contact.fullName(), "");
    contact.organization->company = "Acme";
    EXPECT_EQ(contact.fullName(), "Acme");
}

TEST(ContactBeanTest, AnEmptyDisplayNameIsLikeAnAbsentOne) {
    ContactBean contact;
    contact.givenName = "雷";
    contact.setDisplayName("");
    EXPECT_EQ(contact.displayName(), "雷");
    contact.setDisplayName("Lei");
    EXPECT_EQ(contact.displayName(), "Lei");
    EXPECT_EQ(contact._displayName, "Lei");
    contact.setDisplayName(std::nullopt);
    EXPECT_EQ(contact.displayName(), "雷");
}

TEST(ContactBeanTest, TheNameFieldEscapesNothing) {
    const ContactBean contact({}, "a;b", "c,d", {}, {}, "e\\", {}, {}, {}, 0);
    EXPECT_EQ(contact.vcfNameField(), "a;b;c,d;;;e\\");
}

TEST(ContactBeanTest, PhonesAndEmailsAreAddedAtTheEnd) {
    ContactBean contact("x", {{"1", PhoneNumberType::home}}, {{"a", EmailType::home}});
    contact.addPhoneNumber({"2", PhoneNumberType::pager});
    contact.addEmail({"b", EmailType::mobile});
    EXPECT_EQ(contact.phoneNumbers.back().number, "2");
    EXPECT_EQ(contact.phoneNumbers.back().typeString(), "PAGER");
    EXPECT_EQ(contact.emails.back().address, "b");
    EXPECT_EQ(contact.emails.back().typeString(), "MOBILE");
}

TEST(ContactBeanTest, EntriesBecomeEntriesOfTheAddressBookWithTheLabelOfTheirKind) {
    const ContactBean::PhoneNumber pager{"1", PhoneNumberType::pager};
    EXPECT_EQ(pager.cnPhoneNumber().stringValue, "1");
    EXPECT_EQ(pager.cnLabeledValue().label, baseapi::CNLabelOther);
    EXPECT_EQ(pager.cnLabeledValue().value.stringValue, "1");
    const ContactBean::Email email{"a@b", EmailType::work};
    EXPECT_EQ(email.cnLabeledValue().label, baseapi::CNLabelWork);
    EXPECT_EQ(email.cnLabeledValue().value, "a@b");
    EXPECT_EQ(ContactBean::PhoneNumber::parseType("pager"), PhoneNumberType::pager);
    EXPECT_EQ(ContactBean::Email::parseType(std::nullopt), EmailType::other);
}

AddressBookContact richContact() {
    AddressBookContact contact;
    contact.identifier = "id";
    contact.givenName = "Jane";
    contact.familyName = "Doe";
    contact.middleName = "Q";
    contact.organizationName = "Acme";
    contact.jobTitle = "Chief";
    contact.departmentName = "R&D";
    contact.note = "note";
    return contact;
}

TEST(ContactBeanOfContactTest, TakesNoteAndOrganisationAndTheGivenNameAsDisplayName) {
    const ContactBean contact(richContact());
    EXPECT_EQ(contact.id, "id");
    EXPECT_EQ(contact._displayName, "Jane");
    EXPECT_EQ(contact.familyName, std::nullopt);
    EXPECT_EQ(contact.givenName, std::nullopt);
    EXPECT_EQ(contact.middleName, std::nullopt);
    EXPECT_EQ(contact.notes, "note");
    EXPECT_EQ(contact.organization, (ContactBean::OrganizationInfo{"Acme", "Chief", "R&D"}));
}

TEST(ContactBeanOfContactTest, WithoutAGivenNameTheOrganisationOrNothingIsDisplayed) {
    auto from = richContact();
    from.givenName = "";
    EXPECT_EQ(ContactBean(from)._displayName, "Acme");
    from.organizationName = "";
    EXPECT_EQ(ContactBean(from)._displayName, std::nullopt);
    EXPECT_EQ(ContactBean(from).organization, std::nullopt);
}

TEST(ContactBeanOfContactTest, LabelsAreComparedWithTheAddressBooksConstants) {
    AddressBookContact from;
    for (const auto label : {baseapi::CNLabelHome, baseapi::CNLabelPhoneNumberMobile, baseapi::CNLabelWork,
                             baseapi::CNLabelPhoneNumberHomeFax, baseapi::CNLabelPhoneNumberWorkFax,
                             baseapi::CNLabelPhoneNumberMain, std::string_view("HOME")})
        from.phoneNumbers.push_back({std::string(label), {"1"}});
    from.phoneNumbers.push_back({std::nullopt, {"1"}});
    for (const auto label :
         {baseapi::CNLabelHome, baseapi::CNLabelWork, baseapi::CNLabelOther, std::string_view("WORK")})
        from.emailAddresses.push_back({std::string(label), "a"});
    from.emailAddresses.push_back({std::nullopt, "a"});

    const ContactBean contact(from);
    std::vector<PhoneNumberType::Case> phones;
    for (const auto& phone : contact.phoneNumbers) phones.push_back(phone.type);
    using enum PhoneNumberType::Case;
    EXPECT_THAT(phones, ElementsAre(home, mobile, work, faxHome, faxWork, other, other, other));
    std::vector<EmailType::Case> emails;
    for (const auto& email : contact.emails) emails.push_back(email.type);
    EXPECT_THAT(emails, ElementsAre(EmailType::home, EmailType::work, EmailType::other, EmailType::other,
                                    EmailType::other));
}

TEST(ContactOfContactBeanTest, TheWholeDisplayNameIsTheGivenName) {
    ContactBean contact;
    contact.familyName = "李";
    contact.givenName = "雷";
    contact.middleName = "M";
    const auto made = contact.cnContact();
    EXPECT_EQ(made.givenName, "李雷");
    EXPECT_EQ(made.familyName, "");
    EXPECT_EQ(made.middleName, "");
    EXPECT_EQ(made.organizationName, "");
    EXPECT_EQ(made.note, "");
}

TEST(ContactOfContactBeanTest, OrganisationNoteAndListsAreTaken) {
    ContactBean contact("x", {{"1", PhoneNumberType::faxWork}, {"2", PhoneNumberType::mobile}},
                        {{"a", EmailType::mobile}});
    contact.organization = ContactBean::OrganizationInfo{"Acme", std::nullopt, "R&D"};
    contact.notes = "note";
    const auto made = contact.cnContact();
    EXPECT_EQ(made.organizationName, "Acme");
    EXPECT_EQ(made.jobTitle, "");
    EXPECT_EQ(made.departmentName, "R&D");
    EXPECT_EQ(made.note, "note");
    EXPECT_THAT(made.phoneNumbers, ElementsAre(
                                       baseapi::LabeledValue<baseapi::PhoneNumber>{
                                           std::string(baseapi::CNLabelPhoneNumberWorkFax), {"1"}},
                                       baseapi::LabeledValue<baseapi::PhoneNumber>{
                                           std::string(baseapi::CNLabelPhoneNumberMobile), {"2"}}));
    EXPECT_THAT(made.emailAddresses,
                ElementsAre(baseapi::LabeledValue<std::string>{std::string(baseapi::CNLabelOther), "a"}));
}

TEST(ContactBeanTest, LookingAtTheLabelsHasNoEffect) {
    test_support::recordingLog().clear();
    testing::internal::CaptureStdout();
    ContactBean::printAvailableCNLabels();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_THAT(test_support::recordingLog().lines(), testing::IsEmpty());
}

}  // namespace
