// Refusal texts as they come back from the helper: any text decodes to a
// refusal whose reason is that very text, and every refusal but an
// unrecognised one survives the trip through its text.

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <string>

#include "FuzzCheck.h"
#include "lease/LidHelperRefusal.h"

using namespace wakeloft;
using fuzz::require;

namespace {

LidHelperRefusal made(int kind, std::string detail) {
  switch (kind) {
    case 0: return LidHelperRefusal::settingUnreadable(std::move(detail));
    case 1: return LidHelperRefusal::settingUnwritten(std::move(detail));
    case 2: return LidHelperRefusal::settingNotPutBack(std::move(detail));
    case 3: return LidHelperRefusal::deadlineNotANumber();
    case 4: return LidHelperRefusal::settingOnElsewhere();
    case 5: return LidHelperRefusal::settingTurnedOffElsewhere();
    default: return LidHelperRefusal::unrecognized(std::move(detail));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  const int kind = input.ConsumeIntegralInRange(0, 6);
  const std::string text = input.ConsumeRemainingBytesAsString();

  // The text as a reply: decoding never loses a byte of it.
  const auto decoded = LidHelperRefusal::fromReason(text);
  require(decoded.reason() == text, "a decoded refusal gives back the text it came from");
  require(LidHelperRefusal::fromReason(decoded.reason()) == decoded, "decoding is stable");
  if (decoded.kind() == LidHelperRefusal::Kind::unrecognized) {
    require(decoded.detail() == text, "an unknown text is kept whole");
  }

  // The text as a detail: a refusal made by the helper comes back as made.
  const auto refusal = made(kind, text);
  const auto back = LidHelperRefusal::fromReason(refusal.reason());
  if (refusal.kind() != LidHelperRefusal::Kind::unrecognized) {
    require(back == refusal, "a refusal survives the trip through its reason text");
  }
  require(back.reason() == refusal.reason(), "a reason text survives decoding");
  return 0;
}
