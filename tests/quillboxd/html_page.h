#pragma once

#include <gtest/gtest.h>

#include <string>

namespace quillboxd_test {

/// The first address behind a link of this page whose text begins so.
inline std::string linkOn(const std::string& page, const std::string& text) {
    const auto end = page.find("\">" + text);
    EXPECT_NE(end, page.npos) << text << " is not on " << page;
    if (end == page.npos) return {};
    const auto begin = page.rfind("href=\"", end) + 6;
    auto address = page.substr(begin, end - begin);
    for (auto at = address.find("&amp;"); at != address.npos; at = address.find("&amp;"))
        address.erase(at + 1, 4);
    return address;
}

/// How often the words stand there.
inline std::size_t countOf(const std::string& page, const std::string& words) {
    std::size_t count = 0;
    for (auto at = page.find(words); at != page.npos; at = page.find(words, at + words.size())) ++count;
    return count;
}

}  // namespace quillboxd_test
