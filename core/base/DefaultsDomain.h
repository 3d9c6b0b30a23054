#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "base/Date.h"

namespace wakeloft {

// One value of a property-list-shaped preferences domain. Booleans and
// numbers are different kinds, as CFBoolean and CFNumber are. Dictionaries are
// here so that whatever the domain holds can be read, even where a reader
// only ever expects the other kinds.
struct DefaultsValue {
  using Data = std::vector<std::uint8_t>;
  using Array = std::vector<DefaultsValue>;
  using Dictionary = std::vector<std::pair<std::string, DefaultsValue>>;
  std::variant<bool, std::int64_t, double, std::string, Date, Data, Array, Dictionary> value;

  template <typename T>
  DefaultsValue(T v) : value(std::move(v)) {}
  DefaultsValue(int v) : value(std::int64_t{v}) {}
  DefaultsValue(const char* v) : value(std::string(v)) {}

  template <typename T>
  bool holds() const { return std::holds_alternative<T>(value); }
  template <typename T>
  const T* get() const { return std::get_if<T>(&value); }

  // A number object that is not a boolean, as a double; integers by value.
  std::optional<double> number() const {
    if (const auto* i = get<std::int64_t>()) return static_cast<double>(*i);
    if (const auto* d = get<double>()) return *d;
    return std::nullopt;
  }

  friend bool operator==(const DefaultsValue&, const DefaultsValue&) = default;
};

// The user-defaults domain that the stores read and write.
class DefaultsDomain {
 public:
  virtual ~DefaultsDomain() = default;

  virtual std::optional<DefaultsValue> object(const std::string& key) const = 0;
  virtual void set(const std::string& key, DefaultsValue value) = 0;
  virtual void remove(const std::string& key) = 0;

  // The domain's own boolean reading: a missing key is false, and other
  // kinds of value are converted the way the platform converts them.
  virtual bool boolean(const std::string& key) const = 0;

  // Whether a configuration profile sets the key: `object` then reads the
  // profile's value, and the user's own changes do not count.
  virtual bool isForced(const std::string& key) const = 0;
};

}  // namespace wakeloft
