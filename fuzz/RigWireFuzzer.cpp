// The lease rig's wire as a client's bytes reach the helper: the line reader
// cuts the same lines however the bytes arrive, every request it lets
// through comes back unchanged from its own encoding, and so does every
// status reply the command accepts.

#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "FuzzCheck.h"
#include "base/Utf8.h"
#include "lease/LidLeaseStatus.h"
#include "rig/RigWire.h"

using namespace wakeloft;
using fuzz::require;

namespace {

bool sameRequest(const LidLeaseRequest& a, const LidLeaseRequest& b) {
  if (a.kind() != b.kind()) return false;
  if (a.kind() != LidLeaseRequest::Kind::renew) return true;
  // Not a number never equals itself, but must come back as not a number.
  if (std::isnan(a.until())) return std::isnan(b.until());
  return a.until() == b.until() && std::signbit(a.until()) == std::signbit(b.until());
}

void checkRequestRoundTrip(const std::string& line) {
  const auto parsed = RigWire::parseRequest(line);
  const auto* request = std::get_if<LidLeaseRequest>(&parsed);
  if (!request) return;
  require(request->kind() != LidLeaseRequest::Kind::disconnect, "no line reads as a disconnect");
  const std::string encoded = RigWire::requestLine(*request);
  require(encoded.size() <= RigWire::maximumLineBytes + 1 && encoded.back() == '\n' &&
              encoded.find('\n') == encoded.size() - 1,
          "a request encodes to one line the wire allows");
  const auto again = RigWire::parseRequest(std::string_view(encoded).substr(0, encoded.size() - 1));
  const auto* back = std::get_if<LidLeaseRequest>(&again);
  require(back && sameRequest(*request, *back), "a parsed request re-encodes to a line that parses to it");
}

void checkReplyRoundTrip(const std::string& text) {
  const std::string line = RigWire::replyLine(text);
  require(!line.empty() && line.back() == '\n', "a reply line ends in a line break");
  const std::string_view body(line.data(), line.size() - 1);
  require(body.find_first_of("\r\n") == std::string_view::npos, "a reply line holds no other line break");
  const auto read = RigWire::replyText(body);
  require(read.has_value() == !text.empty(), "only an empty reply reads as granted");
  if (read) {
    std::string expected = text;
    for (char& c : expected) {
      if (c == '\r') c = ' ';
    }
    require(*read == expected, "a reply reads back as sent, line breaks as blanks");
  }
}

// A status reply, as the doctor reads it: whatever it accepts, it writes
// back as a line that reads the same.
void checkStatusRoundTrip(const std::string& line) {
  const auto status = LidLeaseStatus::read(line);
  if (!status) return;
  require(!status->leaseRemaining || (*status->leaseRemaining >= 0 && *status->leaseRemaining <= 30),
          "a lease term read from a status is within a lease's length");
  require(LidLeaseStatus::read(status->text()) == status, "a status read re-encodes to a line that reads the same");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  // The first byte chooses how the rest is cut into reads.
  const unsigned cut = data[0];
  const std::string_view stream(reinterpret_cast<const char*>(data + 1), size - 1);

  RigLineReader whole;
  const auto items = whole.feed(stream);

  RigLineReader pieces;
  std::vector<RigLineReader::Item> piecewise;
  for (std::size_t at = 0, step = 1; at < stream.size(); at += step, step = 1 + (step * 31 + cut) % 97) {
    for (auto& item : pieces.feed(stream.substr(at, step))) piecewise.push_back(std::move(item));
  }
  require(items == piecewise, "the reader cuts the same lines however the bytes arrive");
  require(whole.isSpent() == pieces.isSpent(), "a violation spends the reader however the bytes arrive");
  if (whole.isSpent()) require(whole.feed("revoke\n").empty(), "a spent reader takes nothing more");

  std::string consumed;
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (std::holds_alternative<RigWire::Violation>(items[i])) {
      require(i + 1 == items.size() && whole.isSpent(), "a violation is the last item");
      continue;
    }
    const auto& line = std::get<std::string>(items[i]);
    require(line.size() <= RigWire::maximumLineBytes, "no line is longer than the wire allows");
    require(line.find('\n') == std::string::npos && Utf8::isValid(line), "a line is UTF-8 without its line break");
    consumed += line + "\n";
    checkRequestRoundTrip(line);
    checkReplyRoundTrip(line);
    checkStatusRoundTrip(line);
  }
  require(stream.starts_with(consumed), "the lines are the stream's bytes in order");
  return 0;
}
