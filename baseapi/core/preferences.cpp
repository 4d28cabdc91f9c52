#include "baseapi/core/preferences.h"

#include "baseapi/json/define_codec.h"
#include "baseapi/platform/platform.h"

namespace baseapi::inline v1 {
namespace {

/// An array or a map as the store keeps it: JSON text has an object outermost.
struct StoredJSON {
    std::optional<JSONValue> stored;

    BASEAPI_FIELDS(StoredJSON, stored)
};

KeyValueStore& store() {
    return *platform().store;
}

template <class T>
std::optional<T> get(std::string_view key) {
    auto value = store().get(key);
    if (auto* held = value ? std::get_if<T>(&*value) : nullptr) return std::move(*held);
    return std::nullopt;
}

}  // namespace

Preferences& Preferences::shared() {
    static Preferences& preferences = *new Preferences;
    return preferences;
}

void Preferences::putString(std::string_view key, const std::optional<std::string>& value) {
    value ? store().put(key, *value) : remove(key);
}

std::string Preferences::getString(std::string_view key, std::string defaultValue) {
    return get<std::string>(key).value_or(std::move(defaultValue));
}

void Preferences::putInt(std::string_view key, std::int64_t value) {
    store().put(key, value);
}

std::int64_t Preferences::getInt(std::string_view key, std::int64_t /*defaultValue*/) {
    return get<std::int64_t>(key).value_or(0);
}

void Preferences::putBool(std::string_view key, bool value) {
    store().put(key, value);
}

bool Preferences::getBool(std::string_view key, bool /*defaultValue*/) {
    return get<bool>(key).value_or(false);
}

void Preferences::putDouble(std::string_view key, double value) {
    store().put(key, value);
}

double Preferences::getDouble(std::string_view key, double /*defaultValue*/) {
    return get<double>(key).value_or(0);
}

void Preferences::putFloat(std::string_view key, float value) {
    putDouble(key, value);
}

float Preferences::getFloat(std::string_view key, float /*defaultValue*/) {
    return static_cast<float>(getDouble(key, 0));
}

void Preferences::putDictionary(std::string_view key, const JSONValue::Map& map) {
    putJSON(key, {map});
}

JSONValue::Map Preferences::getDictionary(std::string_view key, JSONValue::Map defaultValue) {
    auto stored = getJSON(key);
    auto* map = stored ? std::get_if<JSONValue::Map>(&stored->value) : nullptr;
    return map != nullptr ? std::move(*map) : std::move(defaultValue);
}

bool Preferences::contains(std::string_view key) {
    return store().get(key).has_value();
}

void Preferences::remove(std::string_view key) {
    store().remove(key);
}

void Preferences::clear() {
    if (platform().applicationIdentifier) store().clear();
}

void Preferences::sync() {
    store().sync();
}

void Preferences::putJSON(std::string_view key, JSONValue value) {
    if (auto text = encode(StoredJSON{std::move(value)}))
        store().put(key, KeyValueStore::Json{std::move(*text)});
}

std::optional<JSONValue> Preferences::getJSON(std::string_view key) {
    auto json = get<KeyValueStore::Json>(key);
    StoredJSON record;
    if (!json || decode(json->text, record)) return std::nullopt;
    return std::move(record.stored);
}

void Preferences::putBytes(std::string_view key, std::string bytes) {
    store().put(key, KeyValueStore::Bytes{std::move(bytes)});
}

std::optional<std::string> Preferences::getBytes(std::string_view key) {
    auto bytes = get<KeyValueStore::Bytes>(key);
    if (!bytes) return std::nullopt;
    return std::move(bytes->bytes);
}

}  // namespace baseapi::inline v1
