#include "baseapi/transfer/cache_records.h"

#include <gtest/gtest.h>

#include "baseapi/json/codec.h"

namespace baseapi {
namespace {

template <class T>
void expectText(const T& record, const std::string& text) {
    EXPECT_EQ(encode(record), text);
    std::string copy = text;
    T read;
    EXPECT_FALSE(decode(copy, read));
    EXPECT_EQ(read, record);
}

TEST(CacheRecords, KeepTheirKeys) {
    expectText(UploadCacheBean{{{{"10", true, 5}}}, "h", true, "f", "s"},
               R"({"items":[{"sub_hash":"10","has_finnish":true,"finish_time":5}],"hash":"h",)"
               R"("has_complele":true,"file_id":"f","sha256":"s"})");
    expectText(DownloadCacheItenBean{1, 2, 3}, R"({"pageNum":1,"offset":2,"length":3})");
}

TEST(CacheRecords, NestDownloadsInDownloads) {
    DownloadCacheBean bean;
    bean.items = {DownloadCacheBean{std::nullopt, true, "inner"}};
    bean.fileId = "outer";
    expectText(bean, R"({"items":[{"hasComplete":true,"fileId":"inner"}],"fileId":"outer"})");
}

TEST(CacheRecords, MayLackEverything) {
    expectText(UploadCacheBean{}, "{}");
    expectText(UploadCacheItemBean{}, "{}");
    expectText(DownloadCacheBean{}, "{}");
    expectText(DownloadCacheItenBean{}, "{}");
}

}  // namespace
}  // namespace baseapi
