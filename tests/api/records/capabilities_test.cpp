#include "baseapi/api/records/capabilities.h"

#include <gtest/gtest.h>

#include "tests/api/wire_text.h"

namespace baseapi {
namespace {

TEST(CapabilitiesRecords, UserCapabilitiesIsItsWireText) {
    UserCapabilities record;
    record.addChildNodePermission = true;
    record.copyPermission = true;
    record.deletePermission = true;
    record.downloadPermission = true;
    record.editPermission = true;
    record.listChildNodePermission = true;
    record.removeChildNodePermission = true;
    record.renameFilePermission = true;
    record.shareFilePermission = true;
    record.uploadPermission = true;
    record.viewPermission = true;
    expectWireText(
        record, R"({"addChildNodePermission":true,"copyPermission":true,"deletePermission":true,)"
                R"("downloadPermission":true,"editPermission":true,"listChildNodePermission":true,)"
                R"("removeChildNodePermission":true,"renameFilePermission":true,"shareFilePermission":true,)"
                R"("uploadPermission":true,"viewPermission":true})");
}

TEST(CapabilitiesRecords, CapabilitiesIsItsWireText) {
    Capabilities record;
    record.addChildNodePermission = true;
    record.copyPermission = true;
    record.deletePermission = true;
    record.downloadPermission = true;
    record.editPermission = true;
    record.listChildNodePermission = true;
    record.removeChildNodePermission = true;
    record.renameFilePermission = true;
    record.shareFilePermission = true;
    record.uploadPermission = true;
    record.viewPermission = true;
    expectWireText(
        record, R"({"addChildNodePermission":true,"copyPermission":true,"deletePermission":true,)"
                R"("downloadPermission":true,"editPermission":true,"listChildNodePermission":true,)"
                R"("removeChildNodePermission":true,"renameFilePermission":true,"shareFilePermission":true,)"
                R"("uploadPermission":true,"viewPermission":true})");
}

TEST(CapabilitiesRecords, CapabilitiesExIsItsWireText) {
    CapabilitiesEx record;
    record.writerHasChangeCopyPermission = true;
    record.commentPermission = true;
    record.readHistoryVersionPermission = true;
    record.recyclePermission = true;
    record.unrecyclePermission = true;
    record.addChildNodePermission = true;
    record.copyPermission = true;
    record.deletePermission = true;
    record.downloadPermission = true;
    record.editPermission = true;
    record.listChildNodePermission = true;
    record.removeChildNodePermission = true;
    record.renameFilePermission = true;
    record.shareFilePermission = true;
    record.uploadPermission = true;
    record.viewPermission = true;
    expectWireText(
        record, R"({"writerHasChangeCopyPermission":true,"commentPermission":true,)"
                R"("readHistoryVersionPermission":true,"recyclePermission":true,"unrecyclePermission":true,)"
                R"("addChildNodePermission":true,"copyPermission":true,"deletePermission":true,)"
                R"("downloadPermission":true,"editPermission":true,"listChildNodePermission":true,)"
                R"("removeChildNodePermission":true,"renameFilePermission":true,"shareFilePermission":true,)"
                R"("uploadPermission":true,"viewPermission":true})");
}

TEST(CapabilitiesRecords, EveryCapabilityMustBeThere) {
    expectFailure<Capabilities>("{}", DecodingError::Kind::keyNotFound, "");
    CapabilitiesEx::fields([](std::string_view missing, auto) {
        std::string text = "{";
        CapabilitiesEx::fields([&](std::string_view key, auto) {
            if (key != missing) text += '"' + std::string(key) + "\":true,";
        });
        text.back() = '}';
        CapabilitiesEx ignored;
        const auto error = decode(text, ignored);
        ASSERT_TRUE(error) << missing;
        EXPECT_EQ(error->kind, DecodingError::Kind::keyNotFound);
        EXPECT_EQ(error->subject, missing);
    });
}

TEST(CapabilitiesRecords, NoneOfAUsersCapabilitiesHasToBeThere) {
    EXPECT_EQ(encode(decoded<UserCapabilities>("{}")), "{}");
}

}  // namespace
}  // namespace baseapi
