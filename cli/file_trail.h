#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "cli/upload_cause.h"

namespace quillbox {

/// One file of a backup on its way up.
struct FileTrail {
    explicit FileTrail(std::string which) : file(std::move(which)) {}

    /// What people call it.
    const std::string file;
    UploadCause cause;
    /// In bytes; what failed parts have sent does not count.
    std::atomic<std::int64_t> sent{0};
    /// Goes when the file has come to its end; may be absent.
    std::shared_ptr<void> copy;

    /// The trail that the calling thread works for; null for none.
    static std::shared_ptr<FileTrail>& ofThread() {
        thread_local std::shared_ptr<FileTrail> trail;
        return trail;
    }

    /// Makes a trail that of the thread for a while.
    class Scope {
      public:
        explicit Scope(std::shared_ptr<FileTrail> trail)
            : before_(std::exchange(ofThread(), std::move(trail))) {
            ++scopes();
        }
        ~Scope() {
            --scopes();
            ofThread() = std::move(before_);
        }
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

      private:
        std::shared_ptr<FileTrail> before_;
    };

    /// The thread has done what it does for the file that it has begun with; its next job may be for another.
    static void leaveThread() {
        if (scopes() == 0) ofThread() = nullptr;
    }

  private:
    static int& scopes() {
        thread_local int open = 0;
        return open;
    }
};

}  // namespace quillbox
