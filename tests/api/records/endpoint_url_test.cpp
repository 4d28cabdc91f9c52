#include "baseapi/api/records/endpoint_url.h"

#include <gtest/gtest.h>

#include "tests/api/wire_text.h"

namespace baseapi {
namespace {

TEST(EndpointUrlRecords, EndpointURLIsItsWireText) {
    EndpointURL record;
    record.url = "url-1";
    record.method = "method-1";
    record.partId = "partId-1";
    record.headers = std::map<std::string, std::string>{{"k", "v"}};
    record.forms = std::map<std::string, std::string>{{"k", "v"}};
    expectWireText(record, R"({"url":"url-1","method":"method-1","partId":"partId-1","headers":{"k":"v"},)"
                           R"("forms":{"k":"v"}})");
}

TEST(EndpointUrlRecords, EndpointURLMetadataIsItsWireText) {
    EndpointURLMetadata record;
    record.url = "url-1";
    record.method = "method-1";
    expectWireText(record, R"({"url":"url-1","method":"method-1"})");
}

}  // namespace
}  // namespace baseapi
