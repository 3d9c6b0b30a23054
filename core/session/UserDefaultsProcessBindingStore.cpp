#include "session/UserDefaultsProcessBindingStore.h"

#include <cstdint>
#include <limits>

#include "base/Utf8.h"

namespace wakeloft {

namespace {

const DefaultsValue* entry(const DefaultsValue::Dictionary& dictionary, std::string_view name) {
  for (const auto& [key, value] : dictionary) {
    if (key == name) return &value;
  }
  return nullptr;
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
  const auto* dictionary = object->get<DefaultsValue::Dictionary>();
  if (!dictionary || dictionary->size() != 3) return StoredProcessBinding::unreadable();
  const auto* pid = entry(*dictionary, "pid");
  const auto* startTime = entry(*dictionary, "startTime");
  const auto* name = entry(*dictionary, "name");
  const auto* pidValue = pid ? pid->get<std::int64_t>() : nullptr;
  const auto* startValue = startTime ? startTime->get<std::int64_t>() : nullptr;
  const auto* nameValue = name ? name->get<std::string>() : nullptr;
  if (!pidValue || *pidValue <= 1 || *pidValue > std::numeric_limits<pid_t>::max() || !startValue ||
      *startValue < 0 || !nameValue || !isStorableName(*nameValue)) {
    return StoredProcessBinding::unreadable();
  }
  return StoredProcessBinding::bound(
      {{static_cast<pid_t>(*pidValue), static_cast<std::uint64_t>(*startValue)}, *nameValue});
}

void UserDefaultsProcessBindingStore::save(const std::optional<RunningProcess>& process) {
  if (!process) {
    defaults_.remove(key);
    return;
  }
  defaults_.set(key, DefaultsValue::Dictionary{
                         {"name", process->name},
                         {"pid", std::int64_t{process->identity.pid}},
                         {"startTime", static_cast<std::int64_t>(process->identity.startTime)},
                     });
}

}  // namespace wakeloft
