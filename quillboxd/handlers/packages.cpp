#include "quillboxd/store/packages.h"

#include "quillboxd/handlers/handlers.h"
#include "quillboxd/store/database.h"
#include "quillboxd/store/time_text.h"

namespace quillboxd::packages {
namespace {

constexpr int mostAtOnce = 100;

constexpr Field changeShape[] = {
    {"changeType", Type::integer}, {"packageId", Type::text},      {"packageType", Type::integer},
    {"capacity", Type::integer},   {"count", Type::integer},       {"channel", Type::integer},
    {"properties", Type::textMap}, {"activateTime", Type::text},   {"endTime", Type::text},
    {"packageName", Type::text},   {"basePackageId", Type::text},  {"status", Type::text},
    {"price", Type::text},         {"promotionPrice", Type::text}, {"countryCode", Type::text},
    {"currencyCode", Type::text}};
constexpr Field operationShape[] = {{"operationSN", Type::text},
                                    {"carrierUserId", Type::text},
                                    {"packageChangeList", Type::records, changeShape}};
constexpr Field batchShape[] = {{"batchSN", Type::text},
                                {"operationList", Type::records, operationShape},
                                {"assetClaerPolicy", Type::integer}};

Orders orderStore(Call& call) {
    return {call.service.database, call.account.id};
}

/// What a package and an order of it have alike.
json::object packageFields(const Package& package) {
    return {{"packageId", package.id},        {"name", package.name},   {"type", package.type},
            {"capacity", package.capacity},   {"price", package.price}, {"countryCode", packageCountry},
            {"currencyCode", packageCurrency}};
}

json::object orderFields(const Order& order) {
    auto fields = packageFields(requirePackage(order.package));
    fields["status"] = static_cast<int>(order.status);
    fields["activateTime"] = order.activateTime;
    if (!order.endTime.empty()) fields["endTime"] = order.endTime;
    return fields;
}

std::string readTime(const json::object& change, std::string_view key, const std::string& otherwise) {
    const auto given = text(change, key);
    if (given.empty()) return otherwise;
    auto time = normalisedTime(given);
    if (!time) badRequest("\"" + std::string(key) + "\" must be a time like 2026-01-02T03:04:05.678Z");
    return *std::move(time);
}

std::int64_t readCount(const json::object& change) {
    const auto count = integer(change, "count", 1);
    if (count < 1 || count > mostAtOnce) badRequest("\"count\" must be from 1 to 100");
    return count;
}

/// The records of a list that must be there, and no longer than a request may ask for.
const json::array& requiredRecords(const json::object& request, std::string_view key) {
    const auto* list = present(request, key);
    const auto quoted = "\"" + std::string(key) + "\"";
    if (!list || list->get_array().empty()) badRequest(quoted + " is missing or empty");
    if (list->get_array().size() > mostAtOnce) badRequest(quoted + " has more than 100 entries");
    return list->get_array();
}

void order(Orders orders, const Package& package, const json::object& change) {
    if (!package.onSale)
        conflict(Code::conflict, "the package " + std::string(package.id) + " is not on sale");
    const auto from = readTime(change, "activateTime", timestamp());
    const auto to = readTime(change, "endTime", "");
    if (!to.empty() && to <= from) badRequest("\"endTime\" is not after \"activateTime\"");
    orders.add(package, readCount(change), from, to);
}

void apply(Orders orders, const json::object& change) {
    const auto& package = requirePackage(requiredText(change, "packageId"));
    switch (requiredInteger(change, "changeType")) {
        case 1:
            return order(orders, package, change);
        case 2:
            return orders.takeBack(package, readCount(change));
        default:
            badRequest("\"changeType\" must be 1 (order) or 2 (take back)");
    }
}

/// All changes of an operation, or none of them.
void perform(Call& call, const json::object& operation) {
    const auto number = requiredText(operation, "operationSN");
    call.checkContainer(text(operation, "carrierUserId"));
    const auto& changes = requiredRecords(operation, "packageChangeList");
    auto orders = orderStore(call);
    if (orders.isDone(number)) return;
    Savepoint savepoint(call.service.database);
    for (const auto& change : changes) apply(orders, change.get_object());
    orders.noteDone(number);
    savepoint.keep();
}

json::object outcome(Call& call, const json::object& operation) {
    const auto fields = [&call](Code code, const char* message, bool done) {
        return json::object{{"qbUserId", std::to_string(call.account.id)},
                            {"errorCode", std::to_string(static_cast<int>(code))},
                            {"errorMsg", message},
                            {"status", done ? 0 : 1}};
    };
    try {
        perform(call, operation);
        return fields(Code{}, "success", true);
    } catch (const ApiError& error) {
        return fields(error.code(), error.what(), false);
    }
}

}  // namespace

Reply list(Call&) {
    json::array list;
    for (const auto& package : catalogue()) {
        auto fields = packageFields(package);
        fields["status"] = package.onSale ? 1 : 0;
        if (!package.promotionPrice.empty()) fields["promotionPrice"] = package.promotionPrice;
        list.push_back(std::move(fields));
    }
    return success({{"data", std::move(list)}});
}

Reply orders(Call& call) {
    json::array list;
    for (const auto& order : orderStore(call).all()) list.push_back(orderFields(order));
    return success({{"data", std::move(list)}});
}

Reply change(Call& call) {
    const auto request = call.record(batchShape);
    const auto batch = requiredText(request, "batchSN");
    const auto& operations = requiredRecords(request, "operationList");
    if (integer(request, "assetClaerPolicy", 0) != 0)
        badRequest("\"assetClaerPolicy\" must be 0: the files stay when a package ends");
    json::array outcomes;
    for (const auto& operation : operations) outcomes.push_back(outcome(call, operation.get_object()));
    return success(
        {{"data", json::array{json::object{{"batchSN", batch}, {"operationList", std::move(outcomes)}}}}});
}

Reply noteExpiry(Call& call) {
    static constexpr Field shape[] = {
        {"carrierUserId", Type::text}, {"type", Type::integer}, {"packageId", Type::integer}};
    const auto request = call.record(shape);
    call.checkContainer(text(request, "carrierUserId"));
    const auto id = std::to_string(requiredInteger(request, "packageId"));
    const auto type = requiredInteger(request, "type");
    if (type != 1 && type != 2) badRequest("\"type\" must be 1 (runs out soon) or 2 (has run out)");
    const auto& package = requirePackage(id);
    auto orders = orderStore(call);
    if (!(type == 1 ? orders.noteRunningOut(package) : orders.noteEnd(package)))
        notFound("no order of the package " + id + " is active");
    return success();
}

}  // namespace quillboxd::packages
