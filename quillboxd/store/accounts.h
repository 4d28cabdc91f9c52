#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillboxd {

class Database;

struct Account {
    std::int64_t id = 0;
    std::string container;
    bool administrator = false;
};

/// Who has signed in. Each authorisation code is an account of its own; all its tokens stay valid.
class Accounts {
  public:
    explicit Accounts(Database& database) : database_(database) {}

    /// The account of the code, made where it does not exist yet. Throws for a user who is suspended or has
    /// been deleted.
    Account signIn(std::string_view authCode);
    std::string makeToken(const Account& account);

    /// Throws for a user who is suspended.
    std::optional<Account> byToken(std::string_view token);

  private:
    Database& database_;
};

}  // namespace quillboxd
