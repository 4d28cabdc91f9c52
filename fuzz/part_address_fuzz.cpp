// Any text is an address that this service could have written, character for character, or none; and no text
// opens anything without the key.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "quillboxd/crypto/signed_address.h"

namespace {

void require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

std::string end(std::int64_t expires, const std::string& signature) {
    return "?expires=" + std::to_string(expires) + "&signature=" + signature;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const quillboxd::AddressSigner signer("a key that the fuzzer does not know");
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (const auto address = quillboxd::parsePartAddress(text)) {
        const auto start = "/_part/" + std::to_string(address->file) + '/' + std::to_string(address->number);
        require(start + end(address->expires, address->signature) == text,
                "a part address is written back equal");
        require(signer.check(*address, 0) == quillboxd::AddressSigner::Verdict::altered,
                "no part without the key");
    }
    if (const auto address = quillboxd::parseContentAddress(text)) {
        const auto start = "/_content/" + std::to_string(address->file) +
                           (address->revision ? "/revision/" + std::to_string(address->revision) : "") +
                           (address->share ? "/share/" + std::to_string(address->share) : "") +
                           (address->inlineView ? "/inline" : "");
        require(start + end(address->expires, address->signature) == text,
                "a content address is written back equal");
        require(signer.check(*address, 0) == quillboxd::AddressSigner::Verdict::altered,
                "no content without the key");
    }
    return 0;
}
