#include "rig/RigWire.h"

#include <gtest/gtest.h>

#include <cmath>

namespace wakeloft {
namespace {

using RigWire::Violation;

LidLeaseRequest request(std::string_view line) {
  const auto parsed = RigWire::parseRequest(line);
  EXPECT_TRUE(std::holds_alternative<LidLeaseRequest>(parsed)) << line;
  return std::holds_alternative<LidLeaseRequest>(parsed) ? std::get<LidLeaseRequest>(parsed) : LidLeaseRequest::revoke();
}

bool isViolation(std::string_view line) { return std::holds_alternative<Violation>(RigWire::parseRequest(line)); }

TEST(RigWireTest, RequestLinesReadAsTheirRequestWithNumbersAsStrtodReadsThem) {
  EXPECT_EQ(request("revoke"), LidLeaseRequest::revoke());
  EXPECT_EQ(request("status"), LidLeaseRequest::status());
  EXPECT_EQ(request("renew 1731700000.25"), LidLeaseRequest::renew(1731700000.25));
  EXPECT_EQ(request("renew -12.5e2"), LidLeaseRequest::renew(-1250));
  EXPECT_EQ(request("renew -inf"), LidLeaseRequest::renew(-HUGE_VAL));
  EXPECT_EQ(request("renew 1e999"), LidLeaseRequest::renew(HUGE_VAL));
  // Too small to represent is a deadline long past, not an infinity.
  EXPECT_EQ(request("renew 1e-400"), LidLeaseRequest::renew(0));
  EXPECT_TRUE(std::isnan(request("renew nan").until()));
}

TEST(RigWireTest, AnyOtherLineIsAViolation) {
  for (const char* line : {"", "renew", "renew ", "renew  5", "renew 5 ", "renew 12abc", "renew 0x10", "renew 1e",
                           "renew .", "renew NaN", "renew infinity", "Revoke", "revoke ", "revoke now", "status ", "hello",
                           "renew 5\r"}) {
    EXPECT_TRUE(isViolation(line)) << '"' << line << '"';
  }
}

TEST(RigLineReaderTest, BytesThatAreNotUtf8OrALineOver4096BytesSpendTheReader) {
  auto items = RigLineReader().feed("revoke\nrenew \xC3\x28\nrevoke\n");
  ASSERT_EQ(items.size(), 2u);
  EXPECT_EQ(std::get<Violation>(items[1]).why, "bytes that are not UTF-8");

  RigLineReader longLine;
  EXPECT_TRUE(longLine.feed(std::string(4096, 'a')).empty());  // at the limit, still waiting for its end
  items = longLine.feed("a");
  ASSERT_EQ(items.size(), 1u);
  EXPECT_EQ(std::get<Violation>(items[0]).why, "a line over 4096 bytes");
  EXPECT_TRUE(longLine.feed("revoke\n").empty());
}

}  // namespace
}  // namespace wakeloft
