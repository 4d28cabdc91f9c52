#include "quillboxd/store/packages.h"

#include <algorithm>

#include "quillboxd/error.h"
#include "quillboxd/store/database.h"
#include "quillboxd/store/time_text.h"

namespace quillboxd {
namespace {

constexpr std::int64_t gibibyte = std::int64_t{1} << 30;

constexpr Package packages[] = {
    {.id = "1001", .name = "Notebook", .capacity = 50 * gibibyte, .price = "0.99", .promotionPrice = "0.49"},
    {.id = "1002", .name = "Ledger", .capacity = 200 * gibibyte, .price = "2.99"},
    {.id = "1003", .name = "Archive", .type = 2, .capacity = 2048 * gibibyte, .price = "79.00"},
    {.id = "1004", .name = "Leaflet", .capacity = 5 * gibibyte, .onSale = false, .price = "0.29"},
};

OrderStatus statusAt(const std::string& now, const Order& order, bool warned) {
    if (!order.endTime.empty() && order.endTime <= now) return OrderStatus::ended;
    if (order.activateTime > now) return OrderStatus::toCome;
    return warned ? OrderStatus::runningOut : OrderStatus::active;
}

}  // namespace

std::span<const Package> catalogue() {
    return packages;
}

const Package& requirePackage(std::string_view id) {
    const auto* found = std::find_if(std::begin(packages), std::end(packages),
                                     [id](const Package& package) { return package.id == id; });
    if (found == std::end(packages)) notFound("there is no package \"" + std::string(id) + "\"");
    return *found;
}

std::vector<Order> Orders::all() {
    const auto now = timestamp();
    auto rows = database_.query(
        "SELECT package, activate_time, end_time, warned FROM orders WHERE account = ? ORDER BY id DESC",
        account_);
    std::vector<Order> orders;
    while (rows.next()) {
        Order order{requirePackage(rows.text(0)).id, rows.text(1), rows.text(2)};
        order.status = statusAt(now, order, rows.boolean(3));
        orders.push_back(std::move(order));
    }
    return orders;
}

std::int64_t Orders::capacity() {
    const auto now = timestamp();
    auto rows = database_.query(
        "SELECT package, count(*) FROM orders WHERE account = ?1 AND activate_time <= ?2 AND "
        "(end_time = '' OR end_time > ?2) GROUP BY package",
        account_, now);
    std::int64_t bytes = 0;
    while (rows.next()) bytes += requirePackage(rows.text(0)).capacity * rows.integer(1);
    return bytes;
}

std::int64_t Orders::count() {
    auto row = database_.query("SELECT count(*) FROM orders WHERE account = ?", account_);
    row.next();
    return row.integer(0);
}

void Orders::add(const Package& package, std::int64_t count, std::string_view activateTime,
                 std::string_view endTime) {
    if (this->count() + count > most)
        conflict(Code::conflict, "an account has " + std::to_string(most) + " orders at most");
    for (; count > 0; --count) {
        database_.run("INSERT INTO orders (account, package, activate_time, end_time) VALUES (?, ?, ?, ?)",
                      account_, package.id, activateTime, endTime);
    }
}

void Orders::takeBack(const Package& package, std::int64_t count) {
    const auto now = timestamp();
    auto rows = database_.query(
        "UPDATE orders SET end_time = ?1 WHERE id IN (SELECT id FROM orders WHERE account = ?2 AND "
        "package = ?3 AND (end_time = '' OR end_time > ?1) ORDER BY id DESC LIMIT ?4) RETURNING id",
        now, account_, package.id, count);
    std::int64_t ended = 0;
    while (rows.next()) ++ended;
    if (ended < count)
        conflict(Code::conflict, "only " + std::to_string(ended) + " orders of the package " +
                                     std::string(package.id) + " have not ended");
}

bool Orders::noteRunningOut(const Package& package) {
    const auto now = timestamp();
    auto rows = database_.query(
        "UPDATE orders SET warned = 1 WHERE account = ?2 AND package = ?3 AND activate_time <= ?1 AND "
        "(end_time = '' OR end_time > ?1) RETURNING id",
        now, account_, package.id);
    return rows.next();
}

bool Orders::noteEnd(const Package& package) {
    const auto now = timestamp();
    auto rows = database_.query(
        "UPDATE orders SET end_time = ?1 WHERE account = ?2 AND package = ?3 AND activate_time <= ?1 AND "
        "(end_time = '' OR end_time > ?1) RETURNING id",
        now, account_, package.id);
    return rows.next();
}

bool Orders::isDone(std::string_view operation) {
    return database_
        .query("SELECT 1 FROM package_operations WHERE account = ? AND number = ?", account_, operation)
        .next();
}

void Orders::noteDone(std::string_view operation) {
    database_.run("INSERT INTO package_operations (account, number) VALUES (?, ?)", account_, operation);
}

}  // namespace quillboxd
