#include "baseapi/backup/result_list.h"

#include <utility>

namespace baseapi::inline v1 {

void ResultList::add(const std::string& key) {
    auto& result = results_[key];
    count(result, -1);
    result = {};
}

void ResultList::finish(const std::string& key, std::int64_t code, std::string msg) {
    auto& result = results_[key];
    count(result, -1);
    result = {code, std::move(msg), true};
    count(result, 1);
}

void ResultList::count(const ResultBean& result, std::int64_t by) {
    if (!result.finish) return;
    finished_ += by;
    if (result.code == 0) succeeded_ += by;
}

}  // namespace baseapi::inline v1
