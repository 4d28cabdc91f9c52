#include "tests/support/quillboxd_process.h"

#include <fcntl.h>
#include <unistd.h>

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace test_support {
namespace {

constexpr auto program = BASEAPI_BIN_DIR "/quillboxd";

std::string readFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace

QuillboxdProcess::QuillboxdProcess(Storage storage, std::vector<std::string> extraArguments)
    : storage_(storage), extraArguments_(std::move(extraArguments)) {
    start();
}

void QuillboxdProcess::start() {
    service_ = std::make_unique<baseapi::testkit::LocalService>(
        baseapi::testkit::LocalService::Options{program, arguments(), folder_ / "errors"});
    if (!service_->problem().empty()) throw std::runtime_error(service_->problem() + ": " + output());
    port_ = service_->port();
}

std::string QuillboxdProcess::output() const {
    return readFile(folder_ / "errors");
}

std::vector<std::string> QuillboxdProcess::arguments() const {
    std::vector<std::string> all{"--port", std::to_string(port_)};
    if (storage_ == Storage::memory) {
        all.push_back("--memory");
    } else {
        all.insert(all.end(), {"--data", dataFolder().string()});
    }
    all.insert(all.end(), extraArguments_.begin(), extraArguments_.end());
    return all;
}

QuillboxdRun runQuillboxd(const std::vector<std::string>& arguments) {
    const TemporaryFolder folder;
    std::vector<std::string> words{program};
    words.insert(words.end(), arguments.begin(), arguments.end());
    const int file = ::open((folder / "output").c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    QuillboxdRun run;
    run.exitStatus = baseapi::testkit::ChildProcess(words, file, file).wait();
    ::close(file);
    run.output = readFile(folder / "output");
    return run;
}

}  // namespace test_support
