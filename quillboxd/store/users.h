#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quillboxd {

class Database;

// The numbers of both stand on the wire.
enum class Role { member = 0, administrator = 1 };
enum class UserStatus { active = 0, suspended = 1 };

/// A member of the organisation. Each account is one, from its first sign-in on.
struct User {
    std::int64_t id = 0;
    std::string name;
    std::int64_t department = 0;
    std::string departmentName;
    std::string mobile;  ///< empty where there is none
    Role role = Role::member;
    UserStatus status = UserStatus::active;
    std::string container;
    std::string createdTime;
};

struct UserFilter {
    std::int64_t department = 1;
    bool direct = false;  ///< without the departments below
    std::string keyWord;  ///< a part of the name, in any case
};

/// What becomes of a user; what is absent stays.
struct UserChange {
    std::optional<std::int64_t> department;
    std::optional<Role> role;
    std::optional<UserStatus> status;
};

/// The organisation: its departments and its users.
class Users {
  public:
    static constexpr std::int64_t wholeOrganisation = 1;
    static constexpr const char* tenant = "quillbox";

    explicit Users(Database& database) : database_(database) {}

    std::optional<User> find(std::int64_t id);

    /// By name; at most `limit` after the first `offset`.
    std::vector<User> list(const UserFilter& filter, std::int64_t offset, std::int64_t limit);
    std::int64_t count(const UserFilter& filter);

    std::optional<std::string> departmentName(std::int64_t id);
    /// Whether the user is in the department, or in one below it.
    bool isIn(std::int64_t user, std::int64_t department);
    void change(std::int64_t user, const UserChange& change);

    /// The user leaves for good: no token of theirs is valid any more, and none is given.
    void remove(std::int64_t user);

  private:
    Database& database_;
};

}  // namespace quillboxd
