#include <condition_variable>
#include <cstdio>
#include <deque>
#include <map>
#include <mutex>

#include "baseapi/baseapi.h"

using namespace baseapi;

/// Where a phone has its system log, this has standard error.
class SystemLog final : public LogSink {
  public:
    void line(std::span<const std::string_view> pieces) noexcept override {
        ::flockfile(stderr);
        for (const auto piece : pieces) std::fwrite(piece.data(), 1, piece.size(), stderr);
        std::fputc('\n', stderr);
        ::funlockfile(stderr);
    }
};

/// The application's event loop: jobs of any thread, run one after the other on the thread that runs it.
class MainLoop final : public Executor {
  public:
    void post(std::function<void()> job) override {
        const std::lock_guard lock(mutex_);
        jobs_.push_back(std::move(job));
        changed_.notify_one();
    }

    /// Runs jobs until one calls `quit`.
    void run() {
        while (!quit_) next()();
    }
    void quit() { quit_ = true; }

  private:
    std::function<void()> next() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return !jobs_.empty(); });
        auto job = std::move(jobs_.front());
        jobs_.pop_front();
        return job;
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<std::function<void()>> jobs_;
    bool quit_ = false;
};

/// One picture that is made up; a phone asks its system in each function.
class Photos final : public PhotoLibrary {
  public:
    int authorizationStatus() override { return authorized; }

    std::vector<PhotoAsset> fetchAssets(PhotoAsset::MediaType mediaType) override {
        if (mediaType != PhotoAsset::MediaType::image) return {};
        return {{"picture-1", PhotoAsset::MediaType::image}};
    }
    std::optional<std::string> originalFilename(const PhotoAsset&) override { return "IMG_0001.JPG"; }
    std::optional<std::int64_t> fileSize(const PhotoAsset&) override { return 4; }

    void requestImageData(const PhotoAsset&, const RequestOptions&,
                          std::function<void(std::optional<std::string>)> answer) override {
        answer("JPEG");
    }
    void requestVideoFile(const PhotoAsset&, const RequestOptions&,
                          std::function<void(std::optional<std::string>)> answer) override {
        answer(std::nullopt);
    }
    void requestContentEditingInput(const PhotoAsset&, const ContentEditingOptions&,
                                    std::function<void(ContentEditingAnswer)> answer) override {
        answer({std::nullopt, "there is no editor"});
    }
};

/// Contacts in memory, by identifier.
class Contacts final : public AddressBook {
  public:
    AuthorizationStatus authorizationStatus() noexcept override { return AuthorizationStatus::authorized; }

    std::optional<AddressBookError> enumerateContacts(
        std::span<const ContactKey>, const std::function<void(SharedContact)>& visit) noexcept override {
        for (const auto& [identifier, contact] : copy()) visit(contact);
        return std::nullopt;
    }

    std::optional<AddressBookError> execute(const ContactSaveRequest& request) noexcept override {
        const std::lock_guard lock(mutex_);
        auto changed = contacts_;
        for (const auto& contact : request.deleted)
            if (changed.erase(std::string(contact->identifier())) == 0)
                return AddressBookError{"it is not there"};
        for (const auto& contact : request.added) {
            auto own = editableContact(*contact);
            own.identifier = std::to_string(++lastIdentifier_);
            changed[own.identifier] = shareContact(own);
        }
        contacts_ = std::move(changed);
        return std::nullopt;
    }

    std::optional<std::string> fullName(const PackedContact& contact) noexcept override {
        if (contact.givenName().empty() && contact.familyName().empty()) return std::nullopt;
        return std::string(contact.givenName()).append(" ").append(contact.familyName());
    }

  private:
    /// No lock is held while contacts are visited.
    std::map<std::string, SharedContact> copy() {
        const std::lock_guard lock(mutex_);
        return contacts_;
    }

    std::mutex mutex_;
    std::map<std::string, SharedContact> contacts_;
    int lastIdentifier_ = 0;
};

// porting STATE_FOLDER [CA_BUNDLE]
int main(int argc, char** argv) {
    if (argc < 2) return 2;
    const auto loop = std::make_shared<MainLoop>();
    usePlatform({.log = std::make_shared<SystemLog>(),
                 .mainQueue = loop,
                 .photoLibrary = std::make_shared<Photos>(),
                 .addressBook = std::make_shared<Contacts>(),
                 .stateFolder = argv[1],
                 .caBundle = argc > 2 ? argv[2] : "",
                 .applicationIdentifier = "org.example.drive"});
    platform().mainQueue->post([&] { loop->quit(); });
    loop->run();
}
