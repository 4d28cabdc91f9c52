#include "tests/cli/quillbox_process.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "tests/support/without_root_rights.h"

namespace quillbox_test {
namespace {

const char* const program = BASEAPI_BIN_DIR "/quillbox";

struct Pipe {
    int read = -1;
    int write = -1;
};

Pipe makePipe() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    return {ends[0], ends[1]};
}

std::vector<std::string> environmentOf(const RunSettings& settings) {
    std::vector<std::string> variables;
    for (const char* name :
         {"HOME", "PATH", "TMPDIR", "ASAN_OPTIONS", "UBSAN_OPTIONS", "TSAN_OPTIONS", "LSAN_OPTIONS"})
        if (const char* value = std::getenv(name); value && !settings.environment.count(name))
            variables.push_back(std::string(name) + "=" + value);
    for (const auto& [name, value] : settings.environment) variables.push_back(name + "=" + value);
    return variables;
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> result;
    for (auto& text : texts) result.push_back(text.data());
    result.push_back(nullptr);
    return result;
}

/// A file that holds the text, open for reading from its beginning.
int inputOf(const std::string& text) {
    const int file = ::open("/tmp", O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
    if (::write(file, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
        throw std::runtime_error("no standard input");
    ::lseek(file, 0, SEEK_SET);
    return file;
}

}  // namespace

QuillboxProcess::QuillboxProcess(std::vector<std::string> arguments, RunSettings settings) {
    arguments.insert(arguments.begin(), program);
    settings.environment.emplace("QUILLBOX_STATE", (state_ / "state").string());
    launch(arguments, settings);
}

QuillboxProcess::~QuillboxProcess() {
    if (pid_ > 0) kill();
    for (auto* captured : {&output_, &error_})
        if (captured->thread.joinable()) captured->thread.join();
}

void QuillboxProcess::launch(std::vector<std::string>& arguments, const RunSettings& settings) {
    auto variables = environmentOf(settings);
    const auto argv = pointers(arguments);
    const auto envp = pointers(variables);
    const int input = inputOf(settings.standardInput);
    auto out = makePipe();
    if (settings.readerGone) ::close(std::exchange(out.read, -1));
    const auto err = makePipe();
    const int output = settings.standardOutput.empty()
                           ? out.write
                           : ::open(settings.standardOutput.c_str(), O_WRONLY | O_CLOEXEC);
    pid_ = ::fork();
    if (pid_ == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (settings.fileSizeLimit) {
            const rlimit limit{*settings.fileSizeLimit, *settings.fileSizeLimit};
            ::setrlimit(RLIMIT_FSIZE, &limit);
            ::signal(SIGXFSZ, SIG_IGN);
        }
        if (settings.withoutRootRights) test_support::dropRootRights();
        if (!settings.folder.empty() && ::chdir(settings.folder.c_str()) != 0) ::_exit(127);
        ::dup2(input, STDIN_FILENO);
        ::dup2(output, STDOUT_FILENO);
        ::dup2(err.write, STDERR_FILENO);
        ::execve(program, argv.data(), envp.data());
        ::_exit(127);
    }
    ::close(input);
    ::close(out.write);
    ::close(err.write);
    if (output != out.write) ::close(output);
    if (pid_ < 0) throw std::runtime_error("quillbox cannot be started");
    capture(output_, out.read);
    capture(error_, err.read);
}

void QuillboxProcess::capture(Captured& captured, int descriptor) {
    captured.descriptor = descriptor;
    captured.thread = std::thread([this, &captured, descriptor] {
        std::array<char, 65536> bytes;
        while (true) {
            const auto count = ::read(descriptor, bytes.data(), bytes.size());
            std::lock_guard lock(mutex_);
            captured.ended = count <= 0;
            if (count > 0) captured.text.append(bytes.data(), static_cast<std::size_t>(count));
            changed_.notify_all();
            if (count <= 0) break;
        }
        if (descriptor >= 0) ::close(descriptor);
    });
}

bool QuillboxProcess::waitFor(Captured& captured, const std::string& text) {
    std::unique_lock lock(mutex_);
    const auto found = [&] { return captured.text.find(text) != std::string::npos; };
    changed_.wait_for(lock, test_support::kPatience, [&] { return found() || captured.ended; });
    return found();
}

bool QuillboxProcess::waitForOutput(const std::string& text) {
    return waitFor(output_, text);
}
bool QuillboxProcess::waitForError(const std::string& text) {
    return waitFor(error_, text);
}

void QuillboxProcess::interrupt() {
    ::kill(pid_, SIGINT);
}

void QuillboxProcess::kill() {
    ::kill(pid_, SIGKILL);
    wait();
}

int QuillboxProcess::wait() {
    int status = 0;
    ::waitpid(std::exchange(pid_, -1), &status, 0);
    for (auto* captured : {&output_, &error_}) captured->thread.join();
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::string QuillboxProcess::output() {
    std::lock_guard lock(mutex_);
    return output_.text;
}

std::string QuillboxProcess::error() {
    std::lock_guard lock(mutex_);
    return error_.text;
}

std::vector<std::string> QuillboxProcess::lines() {
    std::vector<std::string> lines;
    std::istringstream text(output());
    for (std::string line; std::getline(text, line);) lines.push_back(line);
    return lines;
}

Outcome run(std::vector<std::string> arguments, RunSettings settings) {
    QuillboxProcess process(std::move(arguments), std::move(settings));
    const int status = process.wait();
    return {status, process.lines(), process.output(), process.error()};
}

}  // namespace quillbox_test
