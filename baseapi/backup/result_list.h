#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>

namespace baseapi::inline v1 {

/// How the upload of one file has ended.
struct ResultBean {
    std::optional<std::int64_t> code;
    std::optional<std::string> msg;
    bool finish = false;
};

/// The uploads of a run by the key of their file, counted as they end. Two uploads of one key share one
/// entry, as where two scopes overlap.
class ResultList {
  public:
    void add(const std::string& key);
    void finish(const std::string& key, std::int64_t code, std::string msg);

    /// Uploads that ended with code 0.
    std::int64_t succeeded() const { return succeeded_; }
    /// Uploads that ended with another code.
    std::int64_t failed() const { return finished_ - succeeded_; }
    bool allFinished() const { return finished_ == static_cast<std::int64_t>(results_.size()); }

  private:
    void count(const ResultBean& result, std::int64_t by);

    std::unordered_map<std::string, ResultBean> results_;
    std::int64_t finished_ = 0;
    std::int64_t succeeded_ = 0;
};

}  // namespace baseapi::inline v1
