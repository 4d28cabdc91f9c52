#include "quillboxd/store/accounts.h"

#include "quillboxd/crypto/random.h"
#include "quillboxd/crypto/sha256.h"
#include "quillboxd/error.h"
#include "quillboxd/store/database.h"
#include "quillboxd/store/time_text.h"
#include "quillboxd/store/users.h"

namespace quillboxd {
namespace {

const std::string selectAccounts = "SELECT accounts.id, container, role, status, removed FROM accounts ";

/// Throws for an account that may do nothing.
Account readAccount(const Query& row) {
    if (row.boolean(4)) forbidden("this user has been deleted");
    if (static_cast<UserStatus>(row.integer(3)) == UserStatus::suspended) forbidden("this user is suspended");
    return {row.integer(0), row.text(1), static_cast<Role>(row.integer(2)) == Role::administrator};
}

}  // namespace

Account Accounts::signIn(std::string_view authCode) {
    {
        auto found = database_.query(selectAccounts + "WHERE auth_code = ?", authCode);
        if (found.next()) return readAccount(found);
    }
    Account account{randomId(), std::to_string(randomId())};
    const auto time = timestamp();
    database_.run(
        "INSERT INTO accounts (id, auth_code, container, name, created_time) VALUES (?1, ?2, ?3, ?2, ?4)",
        account.id, authCode, account.container, time);
    return account;
}

std::string Accounts::makeToken(const Account& account) {
    auto token = hex(randomBytes(24));
    database_.run("INSERT INTO tokens (token, account) VALUES (?, ?)", token, account.id);
    return token;
}

std::optional<Account> Accounts::byToken(std::string_view token) {
    auto found =
        database_.query(selectAccounts + "JOIN tokens ON account = accounts.id WHERE token = ?", token);
    return found.next() ? std::optional(readAccount(found)) : std::nullopt;
}

}  // namespace quillboxd
