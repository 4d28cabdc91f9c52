// Whatever a host's slicer gives as its text ends in a record or in an error; a record is written and read
// back equal, and its parts become parts of an upload in their order, numbered by their place.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "baseapi/json/codec.h"
#include "baseapi/transfer/sha256_result.h"

namespace {

using namespace baseapi;

void require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

void requireSameBack(const Sha256Result& result) {
    auto text = encode(result);
    require(text.has_value(), "what was read can be written");
    Sha256Result again;
    require(!decode(*text, again), "what was written can be read");
    require(again == result, "what was written is read back equal");
}

void requirePartsInOrder(const Sha256Result& result) {
    const auto infos = multiPartInfos(result.parts);
    require(infos.size() == result.parts.size(), "no part is lost");
    for (std::size_t place = 0; place < infos.size(); ++place) {
        const auto& info = infos[place];
        const auto& part = result.parts[place];
        require(info.partNumber == static_cast<std::int64_t>(place) + 1, "parts are numbered by their place");
        require(info.partOffset == part.partOffset && info.partSize == part.partSize,
                "a part keeps its place");
        require(info.hashCtx == part.hashCtx, "a part keeps its state");
        require(!info.uploadUrl && !info.partId, "a part has no address yet");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    Sha256Result result;
    if (decode(text, result)) return 0;
    requireSameBack(result);
    requirePartsInOrder(result);
    return 0;
}
