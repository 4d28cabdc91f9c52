#pragma once

#include <functional>
#include <mutex>
#include <string>

#include "cli/monitor.h"

namespace quillbox {

/// Ctrl-C: the first one cancels the work, the second one ends the process with status 130.
///
/// Make it before any other thread starts, so that no other thread gets the signal; it must live as long as
/// the process.
class Interrupt {
  public:
    /// What is to happen at the first Ctrl-C; both run on a thread of this object's.
    struct Work {
        std::function<void()> cancel;
        /// What is waited for then, such as "the upload of report.pdf".
        std::function<std::string()> waitingFor;
    };

    explicit Interrupt(Monitor& monitor);
    Interrupt(const Interrupt&) = delete;
    Interrupt& operator=(const Interrupt&) = delete;

    /// Says what the work is from now on. Where the first Ctrl-C has been already, `cancel` is called at
    /// once.
    void setWork(const Work& work);
    /// Who is told what is waited for, in one line.
    void setTell(std::function<void(const std::string&)> tell);
    /// Whether the first Ctrl-C has been; if so, returns after its work has been cancelled and told of.
    bool happened();

  private:
    void listen();
    void first();

    Monitor& monitor_;
    /// Held while the first Ctrl-C does its work.
    std::mutex acting_;
    std::mutex mutex_;
    Work work_;
    std::function<void(const std::string&)> tell_;
    bool happened_ = false;
};

}  // namespace quillbox
