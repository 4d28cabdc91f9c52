#pragma once

#include <string>
#include <vector>

namespace quillboxd_test {

/// An entry for makeZip; a name that ends in a slash is a folder.
struct Zipped {
    std::string name;
    std::string bytes = {};
    bool isLink = false;
};

/// A zip archive with these entries, whatever their names; encrypted where a password is given.
std::string makeZip(const std::vector<Zipped>& entries, const std::string& password = "");

}  // namespace quillboxd_test
