#include "bench/file_page.h"

#include <cstdint>
#include <initializer_list>
#include <random>
#include <string_view>
#include <vector>

namespace bench {
namespace {

std::string join(std::initializer_list<std::string_view> pieces) {
    std::string text;
    for (const auto piece : pieces) text += piece;
    return text;
}

/// Values that differ from file to file, the same in every run.
class Values {
  public:
    std::string hex(std::size_t length) {
        std::string text(length, '\0');
        for (char& digit : text) digit = "0123456789abcdef"[engine_() % 16];
        return text;
    }
    std::string number(std::uint64_t end) { return std::to_string(engine_() % end); }
    std::string truth() { return engine_() % 2 == 0 ? "true" : "false"; }
    std::string time() { return join({"2026-0", number(10), "-1", number(10), "T08:15:30.125Z"}); }
    std::string name() {
        static constexpr std::string_view names[] = {
            "Holiday by the sea", "IMG", "Rechnung für Müller", "会议记录", "scan \\\"final\\\" version",
        };
        return join({names[engine_() % std::size(names)], " ", number(100'000)});
    }
    std::string address() {
        return join({"https://content-", number(64), ".example.net/v1/object/", hex(48), "?expires=17910",
                     number(100'000), "&signature=", hex(64)});
    }
    std::uint32_t word() { return static_cast<std::uint32_t>(engine_()); }

  private:
    std::mt19937_64 engine_{20261121};
};

std::string user(Values& values) {
    return join({R"({"userId":")", values.hex(18), R"(","displayName":"Grace Hopper","me":)", values.truth(),
                 R"(,"permissionId":")", values.number(1'000'000'000), R"("})"});
}

std::string image(Values& values, const std::string& process) {
    return join({R"({"process":")", process, R"(","downloadUrl":{"url":")", values.address(),
                 R"(","method":"GET"}})"});
}

std::string attachment(Values& values, const std::string& usage) {
    return join({R"({"usage":")", usage, R"(","sha256":")", values.hex(64), R"(","hash":")", values.hex(40),
                 R"(","asset":{"mimeType":"image/jpeg","resource":{"object":{"id":")", values.hex(32),
                 R"(","start":0,"downloadUrl":{"url":")", values.address(), R"(","method":"GET"},"images":[)",
                 image(values, "resize,w_256"), ",", image(values, "resize,w_1024"), "]}}}}"});
}

std::string file(Values& values) {
    return join(
        {R"({"id":")",
         values.hex(32),
         R"(","fileName":")",
         values.name(),
         R"(.jpg","fileType":"1","mimeType":"image/jpeg","size":)",
         values.number(50'000'000),
         R"(,"sha256":")",
         values.hex(64),
         R"(","createdTime":")",
         values.time(),
         R"(","editedTime":")",
         values.time(),
         R"(","parentFolder":[")",
         values.hex(32),
         R"("],"containers":["drive"],"hidden":)",
         values.truth(),
         R"(,"favorite":)",
         values.truth(),
         R"(,"recycled":false,"directlyRecycled":false,)",
         R"("fileSuffix":"jpg","properties":{"width":")",
         values.number(8000),
         R"(","height":")",
         values.number(6000),
         R"("},"owners":[)",
         user(values),
         R"(],"lastEditor":)",
         user(values),
         R"(,"userCapabilities":{"addChildNodePermission":false,"copyPermission":true,"deletePermission":true,)",
         R"("downloadPermission":true,"editPermission":true,"listChildNodePermission":false,)",
         R"("removeChildNodePermission":false,"renameFilePermission":true,"shareFilePermission":)",
         values.truth(),
         R"(,"uploadPermission":false,"viewPermission":true},"attachments":[)",
         attachment(values, "content"),
         R"(],"downloadLinks":[{"usage":"content","version":)",
         values.number(100),
         R"(,"downloadLink":")",
         values.address(),
         R"("}]})"});
}

}  // namespace

std::string filePage(int count) {
    Values values;
    std::string page = R"({"code":0,"msg":"success","category":"files","files":[)";
    for (int index = 0; index < count; ++index) {
        if (index > 0) page += ',';
        page += file(values);
    }
    return page + R"(],"nextCursor":")" + values.hex(64) + R"(","searchCompleted":false})";
}

baseapi::FilesCreateBean createRequest(int count) {
    constexpr std::int64_t partSize = 16 << 20;
    Values values;
    baseapi::FilesCreateBean request;
    request.createdTime = values.time();
    request.mimeType = "video/mp4";
    request.fileName = "Rechnung für Müller \"final\".mp4";
    request.fileType.emplace("2");
    request.parentFolder = {values.hex(32)};
    request.sha256 = values.hex(64);
    request.length = count * partSize;
    request.proofCode = values.hex(40);
    auto& parts = request.multiParts.emplace();
    for (int index = 0; index < count; ++index) {
        baseapi::MultiPartInfo part;
        part.partNumber = index + 1;
        part.partSize = partSize;
        part.partOffset = index * partSize;
        auto& state = part.hashCtx.emplace();
        for (int word = 0; word < 8; ++word) state.push_back(values.word());
        parts.push_back(std::move(part));
    }
    return request;
}

}  // namespace bench
