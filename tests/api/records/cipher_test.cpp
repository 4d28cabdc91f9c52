#include "baseapi/api/records/cipher.h"

#include <gtest/gtest.h>

#include "tests/api/wire_text.h"

namespace baseapi {
namespace {

TEST(CipherRecords, KeychainIsItsWireText) {
    Keychain record;
    record.id = "id-1";
    record.type = 11;
    record.algorithm = "algorithm-1";
    record.ekey = "ekey-1";
    expectWireText(record, R"({"id":"id-1","type":11,"algorithm":"algorithm-1","ekey":"ekey-1"})");
}

TEST(CipherRecords, CipherIsItsWireText) {
    Cipher record;
    record.algorithm = "algorithm-1";
    record.hfek = "hfek-1";
    record.iv = "iv-1";
    record.dataType = 11;
    record.keychains = std::vector<Keychain>{Keychain{.id = "id-1"}};
    expectWireText(record, R"({"algorithm":"algorithm-1","hfek":"hfek-1","iv":"iv-1","dataType":11,)"
                           R"("keychains":[{"id":"id-1"}]})");
}

}  // namespace
}  // namespace baseapi
