// The wakeloft:// grammar the app reads and the command checks with.

#include <gtest/gtest.h>

#include "automation/AutomationAddress.h"

namespace wakeloft {
namespace {

using Request = AutomationRequest;

TEST(AutomationAddressTest, ReadsEveryFormAndWritesItBack) {
  const std::vector<std::pair<std::string, Request>> cases = {
      {"wakeloft://start", Request::start(std::nullopt)},
      {"wakeloft://start?for=90m", Request::start(AwakeDuration{5400})},
      {"WakeLoft://start/?for=1h30m", Request::start(AwakeDuration{5400})},
      {"wakeloft://start?for=1h5s", Request::start(AwakeDuration{3605})},
      {"wakeloft://start?for=28800", Request::start(AwakeDuration{28800})},
      {"wakeloft://stop", Request::stop()},
      {"wakeloft://toggle/", Request::toggle()},
      {"wakeloft://deepwake?on=1", Request::switchDeepwake(true)},
      {"wakeloft://deepwake?on=0", Request::switchDeepwake(false)},
      {"wakeloft://hold?pid=4242", Request::hold(4242, std::nullopt, false)},
      {"wakeloft://hold?deepwake=1&for=2h&pid=2", Request::hold(2, AwakeDuration{7200}, true)},
  };
  for (const auto& [address, request] : cases) {
    SCOPED_TRACE(address);
    const auto parsed = AutomationAddress::parse(address);
    ASSERT_TRUE(std::holds_alternative<Request>(parsed)) << std::get<AutomationError>(parsed).reason;
    EXPECT_EQ(std::get<Request>(parsed), request);
    const auto written = AutomationAddress::write(request);
    EXPECT_EQ(std::get<Request>(AutomationAddress::parse(written)), request) << written;
  }
}

TEST(AutomationAddressTest, RefusesWhatItCannotReadAndSaysWhy) {
  const std::vector<std::pair<std::string, std::string>> refusals = {
      {"wakeloft://sleep", "unknown action \"sleep\""},
      {"wakeloft://", "names no action"},
      {"https://start", "does not start with wakeloft://"},
      {"wakeloft://start/now", "path after its action"},
      {"wakeloft://start#soon", "fragment"},
      {"wakeloft://start?for=1h&for=2h", "\"for\" is given twice"},
      {"wakeloft://start?until=5", "start takes no key \"until\""},
      {"wakeloft://start?", "empty query"},
      {"wakeloft://start?for", "not KEY=VALUE"},
      {"wakeloft://start?for=-5m", "cannot be negative"},
      {"wakeloft://start?for=0", "longer than zero"},
      {"wakeloft://start?for=8h1s", "longer than 8h"},
      {"wakeloft://start?for=9999999999", "far too long"},
      {"wakeloft://start?for=30m1h", "not a duration"},
      {"wakeloft://start?for=1.5h", "not a duration"},
      {"wakeloft://deepwake?on=yes", "on must be 1 or 0"},
      {"wakeloft://hold?for=1h", "hold needs pid="},
      {"wakeloft://hold?pid=1", "system's own"},
      {"wakeloft://hold?pid=-7", "process number"},
      {"wakeloft://stop?id=a_b", "id must be 1 to 36"},
      {"wakeloft://stop?id=" + std::string(37, 'a'), "id must be 1 to 36"},
      {"wakeloft://st\xC3\xA4rt", "outside ASCII"},
      {"wakeloft://start?for=1h 30m", "space or a control character"},
      {"wakeloft://start?for=" + std::string(300, '1'), "longer than any"},
  };
  for (const auto& [address, reason] : refusals) {
    const auto parsed = AutomationAddress::parse(address);
    ASSERT_TRUE(std::holds_alternative<AutomationError>(parsed)) << address;
    EXPECT_NE(std::get<AutomationError>(parsed).reason.find(reason), std::string::npos)
        << address << ": " << std::get<AutomationError>(parsed).reason;
  }
}

}  // namespace
}  // namespace wakeloft
