#include "baseapi/api/records/multi_part_info.h"

#include <gtest/gtest.h>

#include "tests/api/wire_text.h"

namespace baseapi {
namespace {

TEST(MultiPartInfoRecords, MultiPartInfoIsItsWireText) {
    MultiPartInfo record;
    record.partNumber = 11;
    record.partSize = 12;
    record.partOffset = 4294967296;
    record.hashCtx = std::vector<std::uint32_t>{0, 4294967295};
    record.uploadUrl = "uploadUrl-1";
    record.partId = "partId-1";
    expectWireText(record,
                   R"({"partNumber":11,"partSize":12,"partOffset":4294967296,"hashCtx":[0,4294967295],)"
                   R"("uploadUrl":"uploadUrl-1","partId":"partId-1"})");
}

TEST(MultiPartInfoRecords, FilePartInfoIsItsWireText) {
    FilePartInfo record;
    record.partNumber = 11;
    record.partSize = 12;
    record.partOffset = 4294967296;
    record.hashCtx = std::vector<std::int64_t>{-1, 4294967296};
    expectWireText(record,
                   R"({"partNumber":11,"partSize":12,"partOffset":4294967296,"hashCtx":[-1,4294967296]})");
}

TEST(MultiPartInfoRecords, NumberSizeAndOffsetMustBeThere) {
    expectFailure<MultiPartInfo>(R"({"partSize":1,"partOffset":0})", DecodingError::Kind::keyNotFound, "");
    expectFailure<MultiPartInfo>(R"({"partNumber":1,"partOffset":0})", DecodingError::Kind::keyNotFound, "");
    expectFailure<MultiPartInfo>(R"({"partNumber":1,"partSize":1})", DecodingError::Kind::keyNotFound, "");
    EXPECT_EQ(decoded<MultiPartInfo>(R"({"partNumber":1,"partSize":2,"partOffset":3})").hashCtx,
              std::nullopt);
}

TEST(MultiPartInfoRecords, TheHashStateHasWordsOf32BitsWithoutSign) {
    constexpr auto text = [](const char* word) {
        return std::string(R"({"partNumber":1,"partSize":2,"partOffset":3,"hashCtx":[0,)") + word + "]}";
    };
    EXPECT_EQ(decoded<MultiPartInfo>(text("4294967295")).hashCtx->back(), 4294967295U);
    expectFailure<MultiPartInfo>(text("4294967296"), DecodingError::Kind::typeMismatch, "hashCtx[1]");
    expectFailure<MultiPartInfo>(text("-1"), DecodingError::Kind::typeMismatch, "hashCtx[1]");
}

}  // namespace
}  // namespace baseapi
