#include "session/UserDefaultsProcessBindingStore.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "base/Utf8.h"
#include "session/AwakeIntent.h"

namespace wakeloft {

namespace {

using Dictionary = DefaultsValue::Dictionary;

const DefaultsValue* entry(const Dictionary& dictionary, std::string_view name) {
  for (const auto& [key, value] : dictionary) {
    if (key == name) return &value;
  }
  return nullptr;
}

std::optional<ProcessHold> readHold(const DefaultsValue& value) {
  const auto* dictionary = value.get<Dictionary>();
  if (!dictionary) return std::nullopt;
  const auto* pid = entry(*dictionary, "pid");
  const auto* startTime = entry(*dictionary, "startTime");
  const auto* name = entry(*dictionary, "name");
  const auto* until = entry(*dictionary, "until");
  const auto* pidValue = pid ? pid->get<std::int64_t>() : nullptr;
  const auto* startValue = startTime ? startTime->get<std::int64_t>() : nullptr;
  const auto* nameValue = name ? name->get<std::string>() : nullptr;
  const auto* untilValue = until ? until->get<Date>() : nullptr;
  if (dictionary->size() != (until ? 4u : 3u) || !pidValue || *pidValue <= 1 ||
      *pidValue > std::numeric_limits<pid_t>::max() || !startValue || *startValue < 0 || !nameValue ||
      !UserDefaultsProcessBindingStore::isStorableName(*nameValue) || (until && !untilValue) ||
      (untilValue && !AwakeIntent::isUsable(*untilValue))) {
    return std::nullopt;
  }
  ProcessHold hold{{{static_cast<pid_t>(*pidValue), static_cast<std::uint64_t>(*startValue)}, *nameValue}, {}};
  if (untilValue) hold.until = *untilValue;
  return hold;
}

// Absent when it cannot be read; an absent claim reads as nullopt inside.
std::optional<std::optional<UserClaim>> readUser(const DefaultsValue* value) {
  if (!value) return std::optional<UserClaim>();
  if (const auto* flag = value->get<bool>(); flag && *flag) return std::optional(UserClaim{});
  if (const auto* date = value->get<Date>(); date && AwakeIntent::isUsable(*date)) return std::optional(UserClaim{*date});
  return std::nullopt;
}

}  // namespace

bool UserDefaultsProcessBindingStore::isStorableName(std::string_view name) {
  if (name.empty() || name.size() > longestName) return false;
  for (std::string_view rest = name; !rest.empty();) {
    const auto scalar = Utf8::front(rest);
    if (!scalar.valid || scalar.value < 0x20 || (scalar.value >= 0x7F && scalar.value < 0xA0)) return false;
    rest.remove_prefix(scalar.length);
  }
  return true;
}

StoredProcessBinding UserDefaultsProcessBindingStore::load() const {
  const auto object = defaults_.object(key);
  if (!object) return StoredProcessBinding::none();
  const auto* dictionary = object->get<Dictionary>();
  const auto* holds = dictionary ? entry(*dictionary, "holds") : nullptr;
  const auto* array = holds ? holds->get<DefaultsValue::Array>() : nullptr;
  const auto* user = dictionary ? entry(*dictionary, "user") : nullptr;
  if (!array || array->empty() || array->size() > SessionClaims::mostHolds || dictionary->size() != (user ? 2u : 1u)) {
    return StoredProcessBinding::unreadable();
  }
  const auto userClaim = readUser(user);
  if (!userClaim) return StoredProcessBinding::unreadable();
  SessionClaims claims{*userClaim, {}};
  for (const auto& value : *array) {
    const auto hold = readHold(value);
    const auto samePid = [&](const ProcessHold& other) { return hold && other.process.identity.pid == hold->process.identity.pid; };
    if (!hold || std::any_of(claims.holds.begin(), claims.holds.end(), samePid)) {
      return StoredProcessBinding::unreadable();
    }
    claims.holds.push_back(*hold);
  }
  return StoredProcessBinding::bound(std::move(claims));
}

void UserDefaultsProcessBindingStore::save(const std::optional<SessionClaims>& claims) {
  if (!claims || claims->holds.empty()) {
    defaults_.remove(key);
    return;
  }
  DefaultsValue::Array holds;
  for (const auto& hold : claims->holds) {
    Dictionary written{
        {"name", hold.process.name},
        {"pid", std::int64_t{hold.process.identity.pid}},
        {"startTime", static_cast<std::int64_t>(hold.process.identity.startTime)},
    };
    if (hold.until) written.emplace_back("until", *hold.until);
    holds.emplace_back(std::move(written));
  }
  Dictionary record{{"holds", std::move(holds)}};
  if (claims->user) {
    if (claims->user->until) {
      record.emplace_back("user", *claims->user->until);
    } else {
      record.emplace_back("user", true);
    }
  }
  defaults_.set(key, std::move(record));
}

}  // namespace wakeloft
