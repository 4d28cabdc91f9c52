#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace test_support {

/// All bytes of a file; none where there is no such file.
inline std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace test_support
