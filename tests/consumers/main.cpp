#include <iostream>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "baseapi/baseapi.h"
#include "hostkit/slice_file.h"
#include "hostkit/vcf_address_book.h"

// A small host that needs no network: consumer FILE. It says what went wrong, and "all is well" otherwise.

namespace {

int failures = 0;

void expect(bool held, const char* what) {
    if (held) return;
    std::cerr << "not so: " << what << '\n';
    ++failures;
}

/// A part of the host's own behind an interface of the library.
struct Lines : baseapi::LogSink {
    void line(std::span<const std::string_view>) noexcept override { ++count; }
    int count = 0;
};

void keepsTheSession() {
    auto& cloud = baseapi::CloudInstance::shared();
    cloud.host = "http://127.0.0.1:9";
    cloud.updateUserAgent("consumer");
    expect(cloud.host.get() == "http://127.0.0.1:9", "the session keeps the host");
    expect(cloud.userAgent() == "consumer", "the session keeps the user agent");
}

void encodesRecords() {
    baseapi::PageInfo page;
    page.pageSize = 100;
    auto text = baseapi::encode(page);
    baseapi::PageInfo read;
    expect(text && *text == R"({"pageSize":100})", "a record is encoded");
    expect(text && !baseapi::decode(*text, read) && read == page, "a record is decoded");
    std::string broken = R"({"pageSize":"many"})";
    const auto error = baseapi::decode(broken, read);
    expect(error && error->kind == baseapi::DecodingError::Kind::typeMismatch, "a broken record is refused");
}

void answersRefusedCalls() {
    std::optional<std::string> message;
    baseapi::CloudInstance::shared().getFileImpl().filesList(
        std::nullopt, [&](const baseapi::NetworkResult<baseapi::FilesListResponse>& result) {
            result.visit([](const auto&) {},
                         [&](const baseapi::NetworkFailure& failure) { message = failure.message; });
        });
    expect(message == "params build faild", "a call without its record is refused before it returns");
}

void slices(const char* file) {
    const auto sliced = hostkit::SliceFile().slice(file);
    const auto* result = std::get_if<baseapi::Sha256Result>(&sliced);
    expect(result != nullptr && result->hash.size() == 64, "a file is hashed");
    std::shared_ptr<baseapi::ISliceFile> slicer = std::make_shared<hostkit::SliceFile>();
    expect(slicer->calcSha256(baseapi::URL::file(file)).has_value(),
           "a slicer answers as the library asks it");
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    const auto lines = std::make_shared<Lines>();
    baseapi::Platform parts;
    parts.log = lines;
    parts.addressBook = std::make_shared<hostkit::VcfAddressBook>("no such folder");
    baseapi::usePlatform(std::move(parts));

    keepsTheSession();
    encodesRecords();
    answersRefusedCalls();
    slices(argv[1]);
    expect(baseapi::VCFImportManager::importContactsFromVCF(baseapi::URL::file("no such file")) == -1,
           "a file that is not there is not imported");
    expect(lines->count > 0, "the host's own log gets the lines");
    expect(!baseapi::AlbumHelper::hasContactsPermission(),
           "an address book without its folder gives no permission");
    if (failures == 0) std::cout << "all is well\n";
    return failures == 0 ? 0 : 1;
}
