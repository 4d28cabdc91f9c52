// One measurement of one side, or of both in turn; the result is one JSON object on standard output. What can
// be measured stands in the table at the end; scripts/bench runs it all and compares.

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "baseapi/api/files/records.h"
#include "baseapi/core/named_operation_queue.h"
#include "baseapi/json/codec.h"
#include "bench/contacts.h"
#include "bench/curl_calls.h"
#include "bench/file_page.h"
#include "bench/library.h"
#include "bench/measure.h"
#include "bench/phone_backup.h"
#include "bench/require.h"
#include "bench/transfer_baselines.h"
#include "hostkit/slice_file.h"

namespace bench {

namespace {

using Arguments = std::vector<std::string>;

constexpr double mebibyte = 1024 * 1024;

std::string address(const std::string& port) {
    return "http://127.0.0.1:" + port;
}

/// As wide as the library's queue of parts.
int partsInFlight() {
    const int width = baseapi::activeProcessorCount() / 2;
    require(width > 0, "with one processor the library sends no parts");
    return width;
}

/// The parts that the host's slicer cuts a file into.
std::vector<Part> partsOf(const std::filesystem::path& file) {
    const auto size = static_cast<std::int64_t>(std::filesystem::file_size(file));
    const auto partSize = hostkit::SliceFile::partSize(size);
    std::vector<Part> parts;
    for (std::int64_t offset = 0; offset < size; offset += partSize)
        parts.push_back({offset, std::min(partSize, size - offset)});
    return parts;
}

double secondsOfCalls(Caller& caller, int count, int width) {
    return secondsOf([&] { width == 1 ? callInTurn(caller, count) : callAtOnce(caller, count, width); });
}

/// calls PORT SIDES WIDTH COUNT ROUNDS: SIDES is "library", "curl" or "library,curl"
void calls(const Arguments& arguments) {
    const auto& sides = arguments.at(1);
    const int width = std::stoi(arguments.at(2));
    const int count = std::stoi(arguments.at(3));
    const int rounds = std::stoi(arguments.at(4));

    openSession(address(arguments.at(0)));
    std::vector<std::pair<std::string, std::unique_ptr<Caller>>> callers;
    if (sides.find("library") != std::string::npos) callers.emplace_back("library", libraryCaller());
    if (sides.find("curl") != std::string::npos)
        callers.emplace_back("curl", curlCaller(address(arguments.at(0))));

    std::map<std::string, std::string> seconds;
    for (int round = 0; round < rounds; ++round)
        for (const auto& [side, caller] : callers) {
            auto& list = seconds[side];
            list += (list.empty() ? "" : ",") + std::to_string(secondsOfCalls(*caller, count, width));
        }
    std::string text;
    for (const auto& [side, list] : seconds)
        text += (text.empty() ? "" : ",") + ("\"" + side + "\":[" + list + "]");
    std::printf("{%s}\n", text.c_str());
}

/// upload PORT FILE
void upload(const Arguments& arguments) {
    openSession(address(arguments.at(0)));
    printMeasured([&] { uploadWithLibrary(arguments.at(1)); });
}

/// upload-all PORT FOLDER WIDTH: every file of the folder, so many of them at once
void uploadAll(const Arguments& arguments) {
    openSession(address(arguments.at(0)));
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(arguments.at(1)))
        files.push_back(entry.path());
    printMeasured([&] {
        std::atomic<std::size_t> next = 0;
        std::vector<std::jthread> threads;
        for (int i = 0; i < std::stoi(arguments.at(2)); ++i)
            threads.emplace_back([&] {
                for (std::size_t file; (file = next.fetch_add(1)) < files.size();)
                    uploadWithLibrary(files[file]);
            });
    });
}

/// decode COUNT: a page of 1,000 files, so many times
void decode(const Arguments& arguments) {
    std::string page = filePage(1000);
    for (int i = 0; i < std::stoi(arguments.at(0)); ++i) {
        baseapi::FilesListResponse response;
        require(!baseapi::decode(page, response), "the page does not decode");
    }
    std::printf("{\"bytes\":%zu}\n", page.size());
}

/// hash FILE
void hash(const Arguments& arguments) {
    printMeasured([&] { hashFile(arguments.at(0)); });
}

/// put-parts PORT FILE
void putPartsOfFile(const Arguments& arguments) {
    const int port = std::stoi(arguments.at(0));
    const auto& file = arguments.at(1);
    printMeasured([&] { putParts(port, file, partsOf(file), partsInFlight()); });
}

/// parts FILE
void showParts(const Arguments& arguments) {
    const auto size = static_cast<double>(partsOf(arguments.at(0)).front().size) / mebibyte;
    std::printf("{\"partMiB\":%.2f,\"inFlight\":%d}\n", size, partsInFlight());
}

/// download PORT BYTES TARGET
void download(const Arguments& arguments) {
    openSession(address(arguments.at(0)));
    const auto url = address(arguments.at(0)) + "/content/" + arguments.at(1);
    printMeasured([&] { downloadWithLibrary(url, arguments.at(2)); });
}

/// curl-download PORT BYTES TARGET
void curlDownload(const Arguments& arguments) {
    const auto url = address(arguments.at(0)) + "/content/" + arguments.at(1);
    printMeasured([&] { downloadWithCurl(url, arguments.at(2)); });
}

/// write-contacts COUNT FILE
void contactsFile(const Arguments& arguments) {
    writeContacts(std::stoi(arguments.at(0)), arguments.at(1));
}

/// vcard-text COUNT
void vCardText(const Arguments& arguments) {
    measureVCardText(std::stoi(arguments.at(0)));
}

/// vcard-text-by-hand COUNT
void vCardTextByHand(const Arguments& arguments) {
    measureVCardTextByHand(std::stoi(arguments.at(0)));
}

/// import COUNT FILE
void importContacts(const Arguments& arguments) {
    measureImport(std::stoi(arguments.at(0)), arguments.at(1));
}

/// parse-by-hand COUNT FILE
void parseContactsByHand(const Arguments& arguments) {
    measureParsingByHand(std::stoi(arguments.at(0)), arguments.at(1));
}

/// walk FOLDER
void walk(const Arguments& arguments) {
    measureWalk(arguments.at(0));
}

/// backup PORT FOLDER
void backup(const Arguments& arguments) {
    measureBackup(address(arguments.at(0)), arguments.at(1));
}

/// backup-by-curl PORT FOLDER
void backupByCurl(const Arguments& arguments) {
    measureBackupByCurl(address(arguments.at(0)), arguments.at(1));
}

const std::map<std::string, void (*)(const Arguments&)> works = {
    {"calls", calls},
    {"upload", upload},
    {"upload-all", uploadAll},
    {"decode", decode},
    {"hash", hash},
    {"put-parts", putPartsOfFile},
    {"parts", showParts},
    {"download", download},
    {"curl-download", curlDownload},
    {"write-contacts", contactsFile},
    {"vcard-text", vCardText},
    {"vcard-text-by-hand", vCardTextByHand},
    {"import", importContacts},
    {"parse-by-hand", parseContactsByHand},
    {"walk", walk},
    {"backup", backup},
    {"backup-by-curl", backupByCurl},
};

}  // namespace

}  // namespace bench

int main(int count, char** arguments) {
    const auto work = bench::works.find(count > 1 ? arguments[1] : "");
    bench::require(work != bench::works.end(), "no such measurement");
    work->second({arguments + 2, arguments + count});
}
