#include "quillboxd/call.h"

#include <chrono>

namespace quillboxd {

void Call::checkContainer(std::string_view container) const {
    if (container.empty() || container == account.container || container == std::to_string(account.id))
        return;
    forbidden("the container \"" + std::string(container) + "\" is not this account's");
}

std::int64_t now() {
    using namespace std::chrono;
    return duration_cast<seconds>(system_clock::now().time_since_epoch()).count();
}

Reply success(json::object fields) {
    json::object object;
    object.reserve(fields.size() + 2);
    object["code"] = 0;
    object["msg"] = "success";
    for (auto& field : fields) object[field.key()] = std::move(field.value());
    return jsonReply(200, object);
}

Reply jsonReply(int status, const json::object& object) {
    return {.status = status, .body = json::serialize(object)};
}

Reply errorReply(const ApiError& error) {
    return jsonReply(error.status(), {{"code", static_cast<int>(error.code())}, {"msg", error.what()}});
}

}  // namespace quillboxd
