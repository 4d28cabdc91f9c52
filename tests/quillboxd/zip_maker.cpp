#include "tests/quillboxd/zip_maker.h"

#include <sys/stat.h>
#include <zip.h>

#include <stdexcept>

namespace quillboxd_test {
namespace {

void check(bool success) {
    if (!success) throw std::runtime_error("the archive cannot be made");
}

void addEntry(zip_t* archive, const Zipped& entry, const std::string& password) {
    auto* source = zip_source_buffer(archive, entry.bytes.data(), entry.bytes.size(), 0);
    const auto added = zip_file_add(archive, entry.name.c_str(), source, ZIP_FL_ENC_UTF_8);
    check(added >= 0);
    const auto index = static_cast<zip_uint64_t>(added);
    if (entry.isLink)
        check(zip_file_set_external_attributes(archive, index, 0, ZIP_OPSYS_UNIX,
                                               static_cast<zip_uint32_t>(S_IFLNK | 0777) << 16) == 0);
    if (!password.empty())
        check(zip_file_set_encryption(archive, index, ZIP_EM_AES_256, password.c_str()) == 0);
}

std::string bytesOf(zip_source_t* source) {
    zip_stat_t stat;
    check(zip_source_stat(source, &stat) == 0 && zip_source_open(source) == 0);
    std::string bytes(stat.size, '\0');
    check(zip_source_read(source, bytes.data(), bytes.size()) == static_cast<zip_int64_t>(bytes.size()));
    zip_source_close(source);
    return bytes;
}

}  // namespace

std::string makeZip(const std::vector<Zipped>& entries, const std::string& password) {
    auto* source = zip_source_buffer_create(nullptr, 0, 0, nullptr);
    auto* archive = zip_open_from_source(source, ZIP_TRUNCATE, nullptr);
    check(source && archive);
    zip_source_keep(source);
    for (const auto& entry : entries) addEntry(archive, entry, password);
    check(zip_close(archive) == 0);
    auto bytes = bytesOf(source);
    zip_source_free(source);
    return bytes;
}

}  // namespace quillboxd_test
