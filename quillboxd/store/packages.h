#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillboxd {

class Database;

/// A package of room that the carrier sells; a price is a text in the currency of the country.
struct Package {
    std::string_view id;
    std::string_view name;
    int type = 1;               ///< 1 by the month, 2 by the year
    std::int64_t capacity = 0;  ///< bytes
    bool onSale = true;
    std::string_view price;
    std::string_view promotionPrice = {};  ///< empty for none
};

constexpr std::string_view packageCountry = "GB";
constexpr std::string_view packageCurrency = "GBP";

std::span<const Package> catalogue();

/// Throws ApiError where the catalogue has no such package.
const Package& requirePackage(std::string_view id);

/// The numbers stand on the wire.
enum class OrderStatus { toCome = 0, active = 1, ended = 2, runningOut = 3 };

struct Order {
    std::string_view package;  ///< of the catalogue
    std::string activateTime;
    std::string endTime;  ///< empty for none
    OrderStatus status = OrderStatus::active;
};

/// The packages that an account has ordered.
class Orders {
  public:
    Orders(Database& database, std::int64_t account) : database_(database), account_(account) {}

    /// The newest first.
    std::vector<Order> all();
    /// How many bytes the orders that are active now give.
    std::int64_t capacity();

    /// Adds so many orders of the package; throws ApiError where the account would have too many.
    void add(const Package& package, std::int64_t count, std::string_view activateTime,
             std::string_view endTime);
    /// Ends the newest so many of the package now; throws ApiError where there are fewer that have not ended.
    void takeBack(const Package& package, std::int64_t count);
    /// Marks the active ones of the package as running out, or ends them. False where there are none.
    bool noteRunningOut(const Package& package);
    bool noteEnd(const Package& package);

    /// Whether the operation of this number has been done. A number counts once.
    bool isDone(std::string_view operation);
    void noteDone(std::string_view operation);

  private:
    /// Far fewer than would make a capacity that no number holds. Those that have ended count too.
    static constexpr std::int64_t most = 10'000;

    std::int64_t count();

    Database& database_;
    std::int64_t account_;
};

}  // namespace quillboxd
