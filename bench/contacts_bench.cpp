#include <benchmark/benchmark.h>

#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "baseapi/contacts/vcard_text.h"
#include "baseapi/contacts/vcf_import_manager.h"
#include "bench/hand_written_vcards.h"
#include "tests/support/test_platform.h"

namespace bench {
namespace {

using baseapi::ContactBean;

constexpr int many = 100'000;

std::string numberOf(int index) {
    return "+86 138 " + std::to_string(10'000'000 + index);
}

/// As a phone's address book has them: short Chinese names, two numbers, an address, for each third a
/// company.
std::vector<ContactBean> contacts(int count) {
    std::vector<ContactBean> all;
    all.reserve(static_cast<std::size_t>(count));
    for (int index = 0; index < count; ++index) {
        auto& contact = all.emplace_back();
        contact.id = "contact-" + std::to_string(index);
        contact.familyName = index % 2 ? "李" : "欧阳";
        contact.givenName = "雷" + std::to_string(index);
        contact.middleName = "";
        contact._displayName = *contact.familyName + *contact.givenName;
        contact.addPhoneNumber({numberOf(index), baseapi::PhoneNumberType::mobile});
        contact.addPhoneNumber({"010-" + std::to_string(80'000'000 + index), baseapi::PhoneNumberType::work});
        contact.addEmail({"user" + std::to_string(index) + "@example.org", baseapi::EmailType::home});
        if (index % 3 == 0) contact.organization = ContactBean::OrganizationInfo{.company = "四海科技"};
    }
    return all;
}

/// As many local contacts as the file has; it replaces each second one.
void fillAddressBook(int count) {
    auto& book = test_support::addressBook();
    book.reset();
    book.forgetRequests();
    for (int index = 0; index < count; ++index) {
        baseapi::AddressBookContact contact;
        contact.familyName = index % 2 ? "李" : "欧阳";
        contact.givenName = "雷" + std::to_string(index);
        const auto number = index % 2 ? numberOf(index) : numberOf(many * 10 + index);
        contact.phoneNumbers.push_back({std::string(baseapi::CNLabelPhoneNumberMobile), {number}});
        contact.emailAddresses.push_back({std::nullopt, "old" + std::to_string(index) + "@example.org"});
        book.put(contact);
    }
}

void writeVCardText(benchmark::State& state) {
    const auto all = contacts(many);
    for (auto _ : state) benchmark::DoNotOptimize(baseapi::vCardText(all));
}

void writeVCardTextByHand(benchmark::State& state) {
    const auto all = contacts(many);
    if (appendByHand(all) != baseapi::vCardText(all)) std::abort();
    for (auto _ : state) benchmark::DoNotOptimize(appendByHand(all));
}

void importVCards(benchmark::State& state) {
    const auto count = static_cast<int>(state.range(0));
    const auto file = test_support::temporaryFolder() / "bench.vcf";
    std::ofstream(file, std::ios::binary) << baseapi::vCardText(contacts(count));
    for (auto _ : state) {
        state.PauseTiming();
        fillAddressBook(count);
        state.ResumeTiming();
        if (baseapi::VCFImportManager::importContactsFromVCF(baseapi::URL::file(file)) != count) std::abort();
    }
    if (test_support::addressBook().size() != static_cast<std::size_t>(2 * count - count / 2)) std::abort();
    state.SetItemsProcessed(state.iterations() * count);
}

void parseVCardsByHand(benchmark::State& state) {
    const auto count = static_cast<int>(state.range(0));
    const auto text = baseapi::vCardText(contacts(count));
    if (parseByHand(text).size() != static_cast<std::size_t>(count)) std::abort();
    for (auto _ : state) benchmark::DoNotOptimize(parseByHand(text));
    state.SetItemsProcessed(state.iterations() * count);
}

BENCHMARK(writeVCardText)->Unit(benchmark::kMillisecond);
BENCHMARK(writeVCardTextByHand)->Unit(benchmark::kMillisecond);
BENCHMARK(importVCards)->Arg(1'000)->Arg(10'000)->Arg(many)->Arg(2 * many)->Unit(benchmark::kMillisecond);
BENCHMARK(parseVCardsByHand)->Arg(many)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace bench
