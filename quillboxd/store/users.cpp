#include "quillboxd/store/users.h"

#include "quillboxd/store/database.h"
#include "quillboxd/unicode.h"

namespace quillboxd {
namespace {

const std::string selectUsers =
    "SELECT accounts.id, accounts.name, department, departments.name, mobile, role, status, container, "
    "created_time FROM accounts JOIN departments ON departments.id = department ";

const std::string filtered =
    "WHERE removed = 0 AND instr(fold_case(accounts.name), ?3) > 0 AND (department = ?1 OR NOT ?2 AND "
    "department IN (WITH RECURSIVE below (id) AS (SELECT ?1 UNION SELECT departments.id FROM departments "
    "JOIN below ON parent = below.id) SELECT id FROM below)) ";

User readUser(const Query& row) {
    return {row.integer(0),
            row.text(1),
            row.integer(2),
            row.text(3),
            row.text(4),
            static_cast<Role>(row.integer(5)),
            static_cast<UserStatus>(row.integer(6)),
            row.text(7),
            row.text(8)};
}

template <class Enumeration>
std::optional<std::int64_t> numberOf(const std::optional<Enumeration>& value) {
    return value ? std::optional(static_cast<std::int64_t>(*value)) : std::nullopt;
}

}  // namespace

std::optional<User> Users::find(std::int64_t id) {
    auto row = database_.query(selectUsers + "WHERE removed = 0 AND accounts.id = ?", id);
    return row.next() ? std::optional(readUser(row)) : std::nullopt;
}

std::vector<User> Users::list(const UserFilter& filter, std::int64_t offset, std::int64_t limit) {
    const auto keyWord = foldCase(filter.keyWord);
    auto rows =
        database_.query(selectUsers + filtered + "ORDER BY accounts.name, accounts.id LIMIT ?4 OFFSET ?5",
                        filter.department, filter.direct, keyWord, limit, offset);
    std::vector<User> users;
    while (rows.next()) users.push_back(readUser(rows));
    return users;
}

std::int64_t Users::count(const UserFilter& filter) {
    const auto keyWord = foldCase(filter.keyWord);
    auto count = database_.query("SELECT count(*) FROM accounts " + filtered, filter.department,
                                 filter.direct, keyWord);
    count.next();
    return count.integer(0);
}

std::optional<std::string> Users::departmentName(std::int64_t id) {
    auto row = database_.query("SELECT name FROM departments WHERE id = ?", id);
    return row.next() ? std::optional(row.text(0)) : std::nullopt;
}

bool Users::isIn(std::int64_t user, std::int64_t department) {
    auto row = database_.query(
        "WITH RECURSIVE above (id) AS (SELECT department FROM accounts WHERE id = ?1 UNION "
        "SELECT parent FROM departments JOIN above ON departments.id = above.id) "
        "SELECT 1 FROM above WHERE id = ?2",
        user, department);
    return row.next();
}

void Users::change(std::int64_t user, const UserChange& change) {
    const auto role = numberOf(change.role);
    const auto status = numberOf(change.status);
    database_.run(
        "UPDATE accounts SET department = coalesce(?2, department), role = coalesce(?3, role), "
        "status = coalesce(?4, status) WHERE id = ?1",
        user, change.department, role, status);
}

void Users::remove(std::int64_t user) {
    database_.run("DELETE FROM tokens WHERE account = ?", user);
    database_.run("UPDATE accounts SET removed = 1 WHERE id = ?", user);
}

}  // namespace quillboxd
