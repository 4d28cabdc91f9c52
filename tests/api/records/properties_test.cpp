#include "baseapi/api/records/properties.h"

#include <gtest/gtest.h>

#include "tests/api/wire_text.h"

namespace baseapi {
namespace {

TEST(PropertiesRecords, PrivatePropertiesIsItsWireText) {
    PrivateProperties record;
    record.attributes = AnyMap{{{"a", JSONValue{nullptr}}, {"b", JSONValue{std::int64_t{2}}}}};
    record.properties = std::map<std::string, std::string>{{"k", "v"}};
    expectWireText(record, R"({"attributes":{"a":null,"b":2},"properties":{"k":"v"}})");
}

TEST(PropertiesRecords, FileListPrivatePropertiesIsItsWireText) {
    FileListPrivateProperties record;
    record.properties = std::map<std::string, std::string>{{"k", "v"}};
    expectWireText(record, R"({"properties":{"k":"v"}})");
}

TEST(PropertiesRecords, PropertiesIsItsWireText) {
    Properties record;
    record.localCreatedAt = "localCreatedAt-1";
    record.localUpdatedAt = "localUpdatedAt-1";
    record.auditResult = "auditResult-1";
    expectWireText(record, R"({"localCreatedAt":"localCreatedAt-1","localUpdatedAt":"localUpdatedAt-1",)"
                           R"("auditResult":"auditResult-1"})");
}

}  // namespace
}  // namespace baseapi
