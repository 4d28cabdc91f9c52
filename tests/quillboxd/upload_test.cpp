#include "tests/quillboxd/service_fixture.h"

namespace quillboxd_test {
namespace {

using testing::ElementsAre;

class UploadTest : public ServiceTest {};

TEST_F(UploadTest, AFileInSeveralPartsComesBackByteForByte) {
    const auto bytes = someBytes(3'000'001);
    const auto id = client_.upload("three parts.bin", bytes, 1 << 20);
    EXPECT_EQ(client_.download(id), bytes);
    EXPECT_THAT(client_.names(), ElementsAre("three parts.bin"));
}

}  // namespace
}  // namespace quillboxd_test
