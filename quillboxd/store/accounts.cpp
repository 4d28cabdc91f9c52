#include "quillboxd/store/accounts.h"

#include "quillboxd/crypto/random.h"
#include "quillboxd/crypto/sha256.h"
#include "quillboxd/store/database.h"

namespace quillboxd {

Account Accounts::signIn(std::string_view authCode) {
    {
        auto found = database_.query("SELECT id, container FROM accounts WHERE auth_code = ?", authCode);
        if (found.next()) return {found.integer(0), found.text(1)};
    }
    const Account account{randomId(), std::to_string(randomId())};
    database_.run("INSERT INTO accounts (id, auth_code, container) VALUES (?, ?, ?)", account.id, authCode,
                  account.container);
    return account;
}

std::string Accounts::makeToken(const Account& account) {
    auto token = hex(randomBytes(24));
    database_.run("INSERT INTO tokens (token, account) VALUES (?, ?)", token, account.id);
    return token;
}

std::optional<Account> Accounts::byToken(std::string_view token) {
    auto found = database_.query(
        "SELECT accounts.id, container FROM tokens JOIN accounts ON accounts.id = account WHERE token = ?",
        token);
    if (!found.next()) return std::nullopt;
    return Account{found.integer(0), found.text(1)};
}

}  // namespace quillboxd
