#include "quillboxd/handlers/handlers.h"

namespace quillboxd::users {

Reply getToken(Call& call) {
    static constexpr Field shape[] = {{"authCode", Type::text}};
    const auto code = requiredText(call.record(shape), "authCode");
    Accounts accounts(call.service.database);
    const auto account = accounts.signIn(code);
    // The container stands in carrierUserId: the answer has no other place for it, and a client needs it.
    return success({{"accessToken", accounts.makeToken(account)},
                    {"innerUserId", account.id},
                    {"data",
                     {{"carrierUserId", account.container},
                      {"carrierUserName", code},
                      {"carrierUserGrade", "standard"},
                      {"carrierUserStatus", "active"}}}});
}

}  // namespace quillboxd::users
