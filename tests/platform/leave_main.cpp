// Returns from main in the middle of transfers. Its arguments: an address that never answers, one that never
// comes to an end, the certificate of both, a folder to work in, and how many microseconds to wait before.

#include <chrono>
#include <string>
#include <thread>

#include "baseapi/platform/platform.h"
#include "baseapi/platform/sha256.h"

int main(int count, char** arguments) {
    if (count != 6) return 2;
    const std::string silent = arguments[1];
    const std::string endless = arguments[2];
    const std::filesystem::path folder = arguments[4];
    baseapi::usePlatform({.stateFolder = folder, .caBundle = arguments[3]});

    auto& parts = baseapi::platform();
    for (int i = 0; i < 4; ++i) {
        parts.http->dataTask({.url = silent, .verb = "GET"}, nullptr)->resume();
        parts.http->dataTask({.url = endless, .verb = "GET"}, nullptr)->resume();
        parts.http
            ->uploadTask(
                {.url = silent, .data = {std::make_unique<char[]>(4 << 20), 4 << 20}},
                [](std::int64_t, std::int64_t) { baseapi::platform().store->put("key", true); }, nullptr)
            ->resume();
        parts.http
            ->downloadTask(
                {.url = endless, .partialFile = folder / std::to_string(i)},
                [](std::int64_t, std::int64_t) { baseapi::platform().log->line({}); }, nullptr)
            ->resume();
        parts.mainQueue->post([] { baseapi::sha256Hex(std::string(100'000, 'x')); });
    }
    std::this_thread::sleep_for(std::chrono::microseconds(std::stol(arguments[5])));
    return 0;
}
