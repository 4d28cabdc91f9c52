#include "quillboxd/jobs/zip_archive.h"

#include <sys/stat.h>
#include <zip.h>

#include "quillboxd/error.h"

namespace quillboxd {
namespace {

constexpr std::uint64_t mostEntries = 100'000;

[[noreturn]] void damaged(const std::string& what, zip_error_t* error) {
    const auto code = zip_error_code_zip(error);
    if (code == ZIP_ER_NOPASSWD || code == ZIP_ER_WRONGPASSWD)
        forbidden("the archive's password is missing or wrong");
    badRequest(what + ": " + zip_error_strerror(error));
}

bool isLink(zip* archive, std::uint64_t index) {
    zip_uint8_t system = 0;
    zip_uint32_t attributes = 0;
    zip_file_get_external_attributes(archive, index, 0, &system, &attributes);
    return system == ZIP_OPSYS_UNIX && S_ISLNK(attributes >> 16);
}

ZipEntry statEntry(zip* archive, std::uint64_t index) {
    zip_stat_t stat;
    zip_stat_init(&stat);
    if (zip_stat_index(archive, index, 0, &stat) != 0)
        damaged("the archive is damaged", zip_get_error(archive));
    return {.index = index,
            .name = stat.name,
            .size = static_cast<std::int64_t>(stat.size),
            .millis = std::int64_t{stat.mtime} * 1000,
            .isLink = isLink(archive, index)};
}

}  // namespace

/// What libzip asks of the archive's bytes.
struct ZipSource {
    static zip_int64_t answer(void* user, void* data, zip_uint64_t length, zip_source_cmd_t command) {
        auto& archive = *static_cast<ZipArchive*>(user);
        switch (command) {
            case ZIP_SOURCE_SUPPORTS:
                return ZIP_SOURCE_SUPPORTS_SEEKABLE |
                       ZIP_SOURCE_MAKE_COMMAND_BITMASK(ZIP_SOURCE_ACCEPT_EMPTY);
            case ZIP_SOURCE_OPEN:
                archive.position_ = 0;
                return 0;
            case ZIP_SOURCE_READ:
                return read(archive, static_cast<char*>(data), length);
            case ZIP_SOURCE_STAT:
                return stat(archive, static_cast<zip_stat_t*>(data));
            case ZIP_SOURCE_SEEK:
                return seek(archive, data, length);
            case ZIP_SOURCE_TELL:
                return archive.position_;
            default:
                return 0;
        }
    }

  private:
    static zip_int64_t read(ZipArchive& archive, char* buffer, zip_uint64_t length) {
        try {
            const auto count = archive.content_.read(archive.position_, buffer, length);
            archive.position_ += static_cast<std::int64_t>(count);
            return static_cast<zip_int64_t>(count);
        } catch (const std::exception&) {
            return -1;
        }
    }
    static zip_int64_t stat(const ZipArchive& archive, zip_stat_t* stat) {
        zip_stat_init(stat);
        stat->size = static_cast<zip_uint64_t>(archive.size());
        stat->valid = ZIP_STAT_SIZE;
        return sizeof *stat;
    }
    static zip_int64_t seek(ZipArchive& archive, void* data, zip_uint64_t length) {
        const auto place =
            zip_source_seek_compute_offset(static_cast<zip_uint64_t>(archive.position_),
                                           static_cast<zip_uint64_t>(archive.size()), data, length, nullptr);
        if (place < 0) return -1;
        archive.position_ = place;
        return 0;
    }
};

void ZipArchive::Closer::operator()(zip* archive) const {
    zip_discard(archive);
}

ZipArchive::ZipArchive(ContentReader content, const std::string& password) : content_(std::move(content)) {
    zip_error_t error;
    zip_error_init(&error);
    auto* source = zip_source_function_create(ZipSource::answer, this, &error);
    archive_.reset(source ? zip_open_from_source(source, ZIP_RDONLY, &error) : nullptr);
    if (!archive_) {
        zip_source_free(source);
        damaged("this is no zip archive", &error);
    }
    if (!password.empty()) zip_set_default_password(archive_.get(), password.c_str());
    const auto count = static_cast<std::uint64_t>(zip_get_num_entries(archive_.get(), 0));
    if (count > mostEntries) badRequest("the archive has more than 100,000 entries");
    for (std::uint64_t index = 0; index < count; ++index)
        entries_.push_back(statEntry(archive_.get(), index));
}

ZipArchive::~ZipArchive() = default;

void ZipArchive::read(const ZipEntry& entry, const std::function<bool(std::string_view)>& take) {
    const std::unique_ptr<zip_file_t, int (*)(zip_file_t*)> file(
        zip_fopen_index(archive_.get(), entry.index, 0), zip_fclose);
    if (!file) damaged("the entry cannot be read", zip_get_error(archive_.get()));
    std::string buffer(256 * 1024, '\0');
    while (true) {
        const auto count = zip_fread(file.get(), buffer.data(), buffer.size());
        if (count < 0) damaged("the entry cannot be read", zip_file_get_error(file.get()));
        if (count == 0 || !take(std::string_view(buffer).substr(0, static_cast<std::size_t>(count)))) return;
    }
}

}  // namespace quillboxd
