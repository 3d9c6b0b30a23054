// Stored preferences as another version of the app, or the user, may have
// left them: whatever value of whatever kind lies under a key, reading never
// throws and never writes, a value read is the default or follows the
// store's rules, and what a store writes it reads back. (The guardrail
// store is the one that cleans: it removes what it cannot read.)

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <exception>
#include <map>
#include <memory>
#include <string>

#include "FuzzCheck.h"
#include "base/InMemoryDefaultsDomain.h"
#include "lid/UserDefaultsDeepwakeGuardrailStore.h"
#include "lid/UserDefaultsLidAwakeStore.h"
#include "prefs/PresetDurations.h"
#include "prefs/PresetDurationsController.h"
#include "prefs/UserDefaultsPresetDurationStore.h"
#include "session/UserDefaultsAwakeIntentStore.h"
#include "session/UserDefaultsProcessBindingStore.h"

using namespace wakeloft;
using fuzz::require;

namespace {

// Numbers the rules turn on, so the fuzzer meets them more often than by
// chance: the starred candidates, the ends of usable dates, the odd doubles.
double number(FuzzedDataProvider& input) {
  static constexpr std::array<double, 12> notable = {
      1800, 3600, 7200, 14400, 21600, 28800, 0, -0.0, 1731700000.5, 64092211200.0, 64092211200.5, -1};
  switch (input.ConsumeIntegralInRange(0, 3)) {
    case 0: return input.PickValueInArray(notable);
    case 1: return std::nan("");
    case 2: return input.ConsumeBool() ? HUGE_VAL : -HUGE_VAL;
    default: return std::bit_cast<double>(input.ConsumeIntegral<std::uint64_t>());
  }
}

DefaultsValue value(FuzzedDataProvider& input, int depth) {
  switch (input.ConsumeIntegralInRange(0, depth < 3 ? 7 : 5)) {
    case 0: return input.ConsumeBool();
    case 1: return input.ConsumeBool() ? input.ConsumeIntegral<std::int64_t>()
                                       : std::int64_t{input.PickValueInArray({0, 1, 1800, 3600, 7200, 28800})};
    case 2: return number(input);
    case 3: return input.ConsumeRandomLengthString(40);
    case 4: return Date{number(input)};
    case 5: {
      const auto bytes = input.ConsumeBytes<std::uint8_t>(input.ConsumeIntegralInRange(0, 16));
      return DefaultsValue::Data(bytes.begin(), bytes.end());
    }
    case 6: {
      DefaultsValue::Array array;
      for (int n = input.ConsumeIntegralInRange(0, 5); n > 0; --n) array.push_back(value(input, depth + 1));
      return array;
    }
    default: {
      DefaultsValue::Dictionary dictionary;
      for (int n = input.ConsumeIntegralInRange(0, 3); n > 0; --n) {
        auto key = input.ConsumeRandomLengthString(12);
        dictionary.emplace_back(std::move(key), value(input, depth + 1));
      }
      return dictionary;
    }
  }
}

// Equality as stored: not a number equals itself, and zeros keep their sign.
bool same(const DefaultsValue& a, const DefaultsValue& b) {
  if (a.value.index() != b.value.index()) return false;
  if (const auto* d = a.get<double>()) return std::bit_cast<std::uint64_t>(*d) == std::bit_cast<std::uint64_t>(*b.get<double>());
  if (const auto* d = a.get<Date>()) {
    return std::bit_cast<std::uint64_t>(d->secondsSince1970) == std::bit_cast<std::uint64_t>(b.get<Date>()->secondsSince1970);
  }
  if (const auto* array = a.get<DefaultsValue::Array>()) {
    const auto& other = *b.get<DefaultsValue::Array>();
    return std::equal(array->begin(), array->end(), other.begin(), other.end(), same);
  }
  if (const auto* dictionary = a.get<DefaultsValue::Dictionary>()) {
    const auto& other = *b.get<DefaultsValue::Dictionary>();
    return std::equal(dictionary->begin(), dictionary->end(), other.begin(), other.end(),
                      [](const auto& x, const auto& y) { return x.first == y.first && same(x.second, y.second); });
  }
  return a == b;
}

bool unchanged(const InMemoryDefaultsDomain& defaults, const std::map<std::string, DefaultsValue>& before) {
  return std::equal(before.begin(), before.end(), defaults.values().begin(), defaults.values().end(),
                    [](const auto& x, const auto& y) { return x.first == y.first && same(x.second, y.second); });
}

bool isNumber(const DefaultsValue& v) { return v.holds<std::int64_t>() || v.holds<double>(); }

void checkAwakeIntent(InMemoryDefaultsDomain& defaults) {
  using Store = UserDefaultsAwakeIntentStore;
  Store store(defaults);
  const auto before = defaults.values();
  const auto loaded = store.load();
  require(unchanged(defaults, before), "reading the awake intent writes nothing");

  const auto stored = defaults.object(Store::awakeUntilKey);
  if (!defaults.boolean(Store::isAwakeRequestedKey)) {
    require(loaded == StoredAwakeIntent::intent(AwakeIntent::off()), "no request flag reads as off");
  } else if (!stored) {
    require(loaded == StoredAwakeIntent::intent(AwakeIntent::indefinite()), "a request without a deadline has no timer");
  } else if (loaded.isUnreadableDeadline()) {
    const auto seconds = stored->number();
    require(!seconds || !AwakeIntent::isUsable(Date{*seconds}), "only an unusable deadline is unreadable");
  } else {
    const auto& intent = *loaded.readable();
    require(intent.kind() == AwakeIntent::Kind::until, "a stored deadline reads as a deadline");
    require(AwakeIntent::isUsable(*intent.date()) && stored->number() == intent.date()->secondsSince1970,
            "a deadline read is the usable number stored");
  }

  // Saving what was read, over the same values or into an empty domain,
  // reads back the same.
  if (const auto& intent = loaded.readable()) {
    store.save(*intent);
    require(store.load() == loaded, "an intent saved over the old values reads back");
    InMemoryDefaultsDomain fresh;
    Store freshStore(fresh);
    freshStore.save(*intent);
    require(freshStore.load() == loaded, "an intent saved into empty defaults reads back");
  }
}

void checkHeatWarning(InMemoryDefaultsDomain& defaults) {
  UserDefaultsLidAwakeStore store(defaults);
  const auto before = defaults.values();
  const bool acknowledged = store.hasAcknowledgedHeatWarning();
  require(unchanged(defaults, before), "reading the acknowledgement writes nothing");
  require(acknowledged == store.hasAcknowledgedHeatWarning(), "reading the acknowledgement is stable");
  for (const bool flag : {!acknowledged, acknowledged}) {
    store.setHasAcknowledgedHeatWarning(flag);
    require(store.hasAcknowledgedHeatWarning() == flag, "an acknowledgement written reads back");
  }
}

// The guardrail store removes a value it cannot read and reads the default
// instead; what it keeps reads the same again, and what it writes reads back.
void checkGuardrails(InMemoryDefaultsDomain& defaults) {
  using Store = UserDefaultsDeepwakeGuardrailStore;
  Store store(defaults);
  const auto settings = store.settings();
  require(DeepwakeGuardrails::Settings::isBatteryFloor(settings.batteryFloor), "the floor read is one on offer");
  const auto afterReading = defaults.values();
  require(store.settings() == settings && unchanged(defaults, afterReading), "a second reading finds nothing to clean");
  for (const char* key : {Store::stopsInLowPowerModeKey, Store::stopsWhenLidOpensKey, Store::onlyOnPowerAdapterKey}) {
    const auto kept = defaults.object(key);
    require(!kept || kept->holds<bool>(), "only a boolean switch is kept");
  }
  DeepwakeGuardrails::Settings flipped = settings;
  flipped.batteryFloor = settings.batteryFloor == 50 ? 10 : 50;
  flipped.onlyOnPowerAdapter = !settings.onlyOnPowerAdapter;
  store.setSettings(flipped);
  require(store.settings() == flipped, "settings written read back");
}

void checkPresets(InMemoryDefaultsDomain& defaults) {
  auto store = std::make_shared<UserDefaultsPresetDurationStore>(defaults);
  const auto before = defaults.values();
  const auto seconds = store->pinnedSeconds();
  if (seconds) {
    const auto stored = defaults.object(UserDefaultsPresetDurationStore::key);
    const auto* array = stored->get<DefaultsValue::Array>();
    require(array && array->size() == seconds->size(), "stored presets are read from an array of the same length");
    for (std::size_t i = 0; i < seconds->size(); ++i) {
      require(isNumber((*array)[i]), "only numbers are read as presets");
    }
  }

  const PresetDurationsController controller(store);
  require(unchanged(defaults, before), "reading the presets writes nothing");
  std::vector<double> pinned;
  for (const auto& d : controller.pinned()) pinned.push_back(d.seconds);
  const auto valid = PresetDurations::validated(pinned);
  require(valid.has_value(), "the presets shown pass the gate");
  const auto expected = PresetDurations::pinnedFromSeconds(seconds);
  require(controller.pinned() == expected, "the presets shown are the stored choice when it passes, else the default");

  store->setPinnedSeconds(pinned);
  require(store->pinnedSeconds() == pinned, "presets written read back");
  require(PresetDurationsController(store).pinned() == controller.pinned(), "presets written show the same");
}

// The processes a session is held for: a dictionary of holds, each a
// dictionary of pid, start time, name and end, often enough with those keys
// for the fuzzer to meet their rules.
DefaultsValue hold(FuzzedDataProvider& input) {
  if (input.ConsumeBool()) return value(input, 1);
  DefaultsValue::Dictionary dictionary;
  for (int n = input.ConsumeIntegralInRange(0, 5); n > 0; --n) {
    dictionary.emplace_back(input.PickValueInArray({"pid", "startTime", "name", "until", "pids"}), value(input, 3));
  }
  return dictionary;
}

DefaultsValue binding(FuzzedDataProvider& input) {
  if (input.ConsumeBool()) return value(input, 0);
  DefaultsValue::Array holds;
  for (int n = input.ConsumeIntegralInRange(0, 34); n > 0; --n) holds.push_back(hold(input));
  DefaultsValue::Dictionary dictionary{{"holds", std::move(holds)}};
  if (input.ConsumeBool()) dictionary.emplace_back(input.PickValueInArray({"user", "users"}), value(input, 1));
  return dictionary;
}

void checkProcessBinding(InMemoryDefaultsDomain& defaults) {
  UserDefaultsProcessBindingStore store(defaults);
  const auto before = defaults.values();
  const auto loaded = store.load();
  require(unchanged(defaults, before), "reading the binding writes nothing");
  const bool present = defaults.object(UserDefaultsProcessBindingStore::key).has_value();
  require(present == (loaded != StoredProcessBinding::none()), "only no record reads as no binding");
  if (const auto& claims = loaded.claims()) {
    require(!claims->holds.empty() && claims->holds.size() <= SessionClaims::mostHolds, "a binding read holds 1 to 32");
    for (const auto& held : claims->holds) {
      require(held.process.identity.pid > 1 && UserDefaultsProcessBindingStore::isStorableName(held.process.name),
              "a binding read names processes that can be held");
    }
    InMemoryDefaultsDomain fresh;
    UserDefaultsProcessBindingStore freshStore(fresh);
    freshStore.save(claims);
    require(freshStore.load() == loaded, "a binding saved reads back");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  InMemoryDefaultsDomain defaults;
  for (const char* key :
       {UserDefaultsAwakeIntentStore::isAwakeRequestedKey, UserDefaultsAwakeIntentStore::awakeUntilKey,
        UserDefaultsLidAwakeStore::key, UserDefaultsPresetDurationStore::key,
        UserDefaultsDeepwakeGuardrailStore::batteryFloorKey, UserDefaultsDeepwakeGuardrailStore::onlyOnPowerAdapterKey}) {
    if (input.ConsumeBool()) defaults.set(key, value(input, 0));
  }
  if (input.ConsumeBool()) defaults.set(UserDefaultsProcessBindingStore::key, binding(input));
  try {
    checkAwakeIntent(defaults);
    checkHeatWarning(defaults);
    checkPresets(defaults);
    checkGuardrails(defaults);
    checkProcessBinding(defaults);
  } catch (const std::exception&) {
    require(false, "reading stored preferences never throws");
  }
  return 0;
}
