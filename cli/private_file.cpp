#include "cli/private_file.h"

#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>

namespace quillbox {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const char* what, const fs::path& file) {
    throw fs::filesystem_error(what, file, {errno, std::generic_category()});
}

/// A file under a name of its own, gone again unless it was moved into place.
class Draft {
  public:
    explicit Draft(const fs::path& file) : name_(file.string() + ".XXXXXX") {
        descriptor_ = ::mkstemp(name_.data());  // readable by the owner alone
        if (descriptor_ < 0) fail("cannot make a file", file);
    }
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;
    ~Draft() {
        ::close(descriptor_);
        if (!moved_) ::unlink(name_.c_str());
    }

    void write(std::string_view content) {
        while (!content.empty()) {
            const auto count = ::write(descriptor_, content.data(), content.size());
            if (count < 0 && errno != EINTR) fail("cannot write", name_);
            if (count > 0) content.remove_prefix(static_cast<std::size_t>(count));
        }
        if (::fsync(descriptor_) != 0) fail("cannot write", name_);
    }
    void moveTo(const fs::path& file) {
        fs::rename(name_, file);
        moved_ = true;
    }

  private:
    std::string name_;
    int descriptor_ = -1;
    bool moved_ = false;
};

}  // namespace

void writePrivateFile(const fs::path& file, std::string_view content) {
    if (file.has_parent_path()) fs::create_directories(file.parent_path());
    Draft draft(file);
    draft.write(content);
    draft.moveTo(file);
}

}  // namespace quillbox
