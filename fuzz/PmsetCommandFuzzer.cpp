// The power-settings tool's answers as the helper reads them: any exit status
// and output give a setting or a runtime_error whose text is fit for a reply,
// and line endings do not change what a listing says.

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <exception>
#include <optional>
#include <stdexcept>
#include <string>

#include "FuzzCheck.h"
#include "base/Utf8.h"
#include "helper/PmsetCommand.h"

using namespace wakeloft;
using fuzz::require;

namespace {

// A complaint quotes at most 200 bytes of the tool's words, each repaired
// byte growing to three; the rest is the helper's own short text.
constexpr std::size_t longestError = 200 * 3 + 160;

void checkError(const std::runtime_error& error) {
  const std::string text = error.what();
  require(!text.empty() && text.size() <= longestError, "an error text is short enough for a reply");
  require(Utf8::isValid(text), "an error text is UTF-8");
  require(text.find('\n') == std::string::npos, "an error text is one line");
}

// The setting a listing gives, or nothing when it is refused.
std::optional<bool> reading(const ChildProcess::Result& listing) {
  try {
    return PmsetCommand::sleepDisabled(listing);
  } catch (const std::runtime_error& error) {
    checkError(error);
    return std::nullopt;
  } catch (const std::exception&) {
    require(false, "a listing is refused only with a runtime_error");
  }
  return std::nullopt;
}

std::string withCarriageReturns(const std::string& output) {
  std::string out;
  for (const char c : output) {
    if (c == '\n') out += '\r';
    out += c;
  }
  return out;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  const int exitStatus = input.ConsumeBool() ? 0 : input.ConsumeIntegral<int>();
  const ChildProcess::Result result{exitStatus, input.ConsumeRemainingBytesAsString()};

  const auto setting = reading(result);
  if (exitStatus != 0) require(!setting, "a failed listing is never read as a setting");
  if (setting && *setting) {
    require(result.output.find("SleepDisabled") != std::string::npos, "1 is read only from a SleepDisabled line");
  }
  require(reading({exitStatus, withCarriageReturns(result.output)}) == setting,
          "carriage returns before line feeds change nothing");

  bool refused = false;
  try {
    PmsetCommand::checkWritten(result);
  } catch (const std::runtime_error& error) {
    checkError(error);
    refused = true;
  }
  require(refused == (exitStatus != 0), "a write is refused exactly when the tool failed");
  return 0;
}
