// wakeloft:// addresses, durations and the app's outcome lines as anything
// outside may send them: any bytes give a request or a reason, a request
// written back reads the same, and what reads keeps to the grammar's limits.

#include <cmath>
#include <cstdint>
#include <string_view>
#include <variant>

#include "FuzzCheck.h"
#include "automation/AutomationAddress.h"
#include "automation/AutomationDuration.h"
#include "automation/AutomationOutcome.h"

using namespace wakeloft;
using fuzz::require;

namespace {

bool isLength(const AwakeDuration& duration) {
  return duration.seconds == std::floor(duration.seconds) && duration.seconds >= AutomationDuration::shortest &&
         duration.seconds <= AutomationDuration::longest();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);

  const auto duration = AutomationDuration::parse(text);
  if (const auto* length = std::get_if<AwakeDuration>(&duration)) {
    require(isLength(*length), "a duration read is whole seconds within the limits");
    const auto again = AutomationDuration::parse(AutomationDuration::write(*length));
    require(std::holds_alternative<AwakeDuration>(again) && std::get<AwakeDuration>(again) == *length,
            "a duration written back reads the same");
  } else {
    require(!std::get<AutomationError>(duration).reason.empty(), "a refused duration says why");
  }

  const auto outcome = AutomationOutcome::parse(text);
  if (const auto* heard = std::get_if<AutomationOutcome>(&outcome)) {
    require(heard->requestId.empty() || AutomationAddress::isRequestID(heard->requestId), "an outcome's id is an id");
    require((heard->kind == AutomationOutcome::Kind::released) == (heard->pid > 1), "only a release names a pid");
    require(heard->encode() == text, "an outcome read is written back byte for byte");
  } else {
    require(!std::get<AutomationError>(outcome).reason.empty(), "a refused outcome says why");
  }

  const auto parsed = AutomationAddress::parse(text);
  if (const auto* error = std::get_if<AutomationError>(&parsed)) {
    require(!error->reason.empty(), "a refused address says why");
    return 0;
  }
  const auto& request = std::get<AutomationRequest>(parsed);
  require(!request.duration || isLength(*request.duration), "an address's duration keeps to the limits");
  require(request.action != AutomationRequest::Action::hold || request.pid > 1, "a held pid is above 1");
  require(request.requestId.empty() || AutomationAddress::isRequestID(request.requestId), "an id keeps to its shape");
  const auto written = AutomationAddress::write(request);
  require(written.size() <= AutomationAddress::longest, "a written address is one the app reads");
  const auto again = AutomationAddress::parse(written);
  require(std::holds_alternative<AutomationRequest>(again) && std::get<AutomationRequest>(again) == request,
          "a request written back reads the same");
  return 0;
}
