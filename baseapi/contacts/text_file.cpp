#include "baseapi/contacts/text_file.h"

#include <stdexcept>

#include "baseapi/json/utf8.h"
#include "baseapi/transfer/local_file.h"

namespace baseapi::inline v1 {

void requireUTF8(std::string_view text, const std::filesystem::path& path) {
    if (!isValidUTF8(text)) throw std::runtime_error(path.string() + ": no UTF-8 text");
}

TextFile::TextFile(const std::filesystem::path& path) : size_(std::filesystem::file_size(path)) {
    bytes_ = std::make_unique_for_overwrite<char[]>(size_);
    size_ = LocalFile(path).read(bytes_.get(), size_);
    requireUTF8(text(), path);
}

}  // namespace baseapi::inline v1
