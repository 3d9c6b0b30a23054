#include "IOKitAssertionHolders.h"

#include <IOKit/pwr_mgt/IOPMLib.h>

#include <algorithm>

#include "CFOwned.h"

namespace wakeloft::IOKitAssertionHolders {

namespace {

// A string value of the dictionary, or empty when it holds none.
std::string text(CFDictionaryRef dictionary, CFStringRef key) {
  const CFTypeRef value = CFDictionaryGetValue(dictionary, key);
  if (!value || CFGetTypeID(value) != CFStringGetTypeID()) return {};
  const auto string = static_cast<CFStringRef>(value);
  const CFIndex length = CFStringGetLength(string);
  const CFIndex capacity = CFStringGetMaximumSizeForEncoding(length, kCFStringEncodingUTF8) + 1;
  std::string bytes(static_cast<std::size_t>(capacity), '\0');
  if (!CFStringGetCString(string, bytes.data(), capacity, kCFStringEncodingUTF8)) return {};
  bytes.resize(std::char_traits<char>::length(bytes.c_str()));
  return bytes;
}

struct Listing {
  const ProcessTable* processes;
  std::vector<AssertionHolder>* holders;
};

void addProcess(const void* key, const void* value, void* context) {
  auto* listing = static_cast<Listing*>(context);
  int pid = 0;
  if (!key || CFGetTypeID(key) != CFNumberGetTypeID() ||
      !CFNumberGetValue(static_cast<CFNumberRef>(key), kCFNumberIntType, &pid)) {
    return;
  }
  if (!value || CFGetTypeID(value) != CFArrayGetTypeID()) return;
  const auto assertions = static_cast<CFArrayRef>(value);
  const auto process = listing->processes->find(static_cast<pid_t>(pid));
  for (CFIndex i = 0; i < CFArrayGetCount(assertions); ++i) {
    const CFTypeRef assertion = CFArrayGetValueAtIndex(assertions, i);
    if (!assertion || CFGetTypeID(assertion) != CFDictionaryGetTypeID()) continue;
    const auto dictionary = static_cast<CFDictionaryRef>(assertion);
    std::string type = text(dictionary, kIOPMAssertionTypeKey);
    if (!AssertionHolder::keepsAwake(type)) continue;
    listing->holders->push_back(
        {static_cast<pid_t>(pid), process ? process->name : std::string(), std::move(type),
         text(dictionary, kIOPMAssertionNameKey)});
  }
}

}  // namespace

std::optional<std::vector<AssertionHolder>> read(const ProcessTable& processes) {
  CFDictionaryRef byProcess = nullptr;
  if (IOPMCopyAssertionsByProcess(&byProcess) != kIOReturnSuccess || !byProcess) return std::nullopt;
  const CFOwned<CFDictionaryRef> owned(byProcess);
  std::vector<AssertionHolder> holders;
  Listing listing{&processes, &holders};
  CFDictionaryApplyFunction(owned.get(), addProcess, &listing);
  // The listing's order is the dictionary's; a report reads better by pid.
  std::stable_sort(holders.begin(), holders.end(), [](const auto& a, const auto& b) { return a.pid < b.pid; });
  return holders;
}

}  // namespace wakeloft::IOKitAssertionHolders
