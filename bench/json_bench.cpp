#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>

#include "baseapi/json/codec.h"
#include "bench/file_page.h"
#include "bench/hand_written_reader.h"
#include "bench/hand_written_writer.h"

namespace bench {
namespace {

constexpr int files = 1000;
constexpr int parts = 1000;

void count(benchmark::State& state, std::size_t bytes) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes));
}

void decodeFilePage(benchmark::State& state) {
    std::string page = filePage(files);
    for (auto _ : state) {
        baseapi::FilesListResponse response;
        if (baseapi::decode(page, response)) std::abort();
        benchmark::DoNotOptimize(response);
    }
    count(state, page.size());
}

void decodeFilePageByHand(benchmark::State& state) {
    std::string page = filePage(files);
    baseapi::FilesListResponse ours;
    baseapi::FilesListResponse theirs;
    if (baseapi::decode(page, ours) || !readByHand(page, theirs) || ours != theirs) std::abort();
    for (auto _ : state) {
        baseapi::FilesListResponse response;
        if (!readByHand(page, response)) std::abort();
        benchmark::DoNotOptimize(response);
    }
    count(state, page.size());
}

void encodeCreateRequest(benchmark::State& state) {
    const auto request = createRequest(parts);
    std::size_t size = 0;
    for (auto _ : state) {
        const auto text = baseapi::encode(request);
        benchmark::DoNotOptimize(text);
        size = text->size();
    }
    count(state, size);
}

void encodeCreateRequestByHand(benchmark::State& state) {
    const auto request = createRequest(parts);
    if (writeByHand(request) != baseapi::encode(request)) std::abort();
    std::size_t size = 0;
    for (auto _ : state) {
        const auto text = writeByHand(request);
        benchmark::DoNotOptimize(text);
        size = text.size();
    }
    count(state, size);
}

BENCHMARK(decodeFilePage);
BENCHMARK(decodeFilePageByHand);
BENCHMARK(encodeCreateRequest);
BENCHMARK(encodeCreateRequestByHand);

}  // namespace
}  // namespace bench
