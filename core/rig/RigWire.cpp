#include "rig/RigWire.h"

#include <charconv>
#include <cmath>

#include "base/DecimalNumber.h"
#include "base/Utf8.h"

namespace wakeloft {

namespace {

std::optional<double> parseDeadline(std::string_view text) {
  if (text == "nan") return std::nan("");
  if (text == "inf") return HUGE_VAL;
  if (text == "-inf") return -HUGE_VAL;
  return DecimalNumber::read(text);
}

}  // namespace

namespace RigWire {

std::string renewLine(double deadline) {
  if (std::isnan(deadline)) return "renew nan\n";
  if (std::isinf(deadline)) return deadline > 0 ? "renew inf\n" : "renew -inf\n";
  char digits[64];
  const auto result = std::to_chars(digits, digits + sizeof digits, deadline);
  return "renew " + std::string(digits, result.ptr) + "\n";
}

std::string requestLine(const LidLeaseRequest& request) {
  switch (request.kind()) {
    case LidLeaseRequest::Kind::renew: return renewLine(request.until());
    case LidLeaseRequest::Kind::status: return std::string(statusLine);
    case LidLeaseRequest::Kind::revoke:
    case LidLeaseRequest::Kind::disconnect: break;
  }
  return std::string(revokeLine);
}

std::string replyLine(const std::optional<std::string>& reply) {
  std::string line = reply.value_or("");
  for (char& c : line) {
    if (c == '\n' || c == '\r') c = ' ';
  }
  return line + "\n";
}

std::optional<std::string> replyText(std::string_view line) {
  if (line.empty()) return std::nullopt;
  return std::string(line);
}

std::variant<LidLeaseRequest, Violation> parseRequest(std::string_view line) {
  if (line == "revoke") return LidLeaseRequest::revoke();
  if (line == "status") return LidLeaseRequest::status();
  constexpr std::string_view renew = "renew ";
  if (line.starts_with(renew)) {
    if (const auto deadline = parseDeadline(line.substr(renew.size()))) return LidLeaseRequest::renew(*deadline);
    return Violation{"a renewal without a readable deadline"};
  }
  return Violation{"an unknown request"};
}

}  // namespace RigWire

std::vector<RigLineReader::Item> RigLineReader::feed(std::string_view bytes) {
  std::vector<Item> items;
  if (spent_) return items;
  pending_.append(bytes);
  std::size_t start = 0;
  for (;;) {
    const auto end = pending_.find('\n', start);
    const std::string_view line =
        std::string_view(pending_).substr(start, end == std::string::npos ? std::string::npos : end - start);
    if (line.size() > RigWire::maximumLineBytes) {
      items.emplace_back(RigWire::Violation{"a line over 4096 bytes"});
      break;
    }
    if (end == std::string::npos) break;
    if (!Utf8::isValid(line)) {
      items.emplace_back(RigWire::Violation{"bytes that are not UTF-8"});
      break;
    }
    items.emplace_back(std::string(line));
    start = end + 1;
  }
  if (!items.empty() && std::holds_alternative<RigWire::Violation>(items.back())) {
    spent_ = true;
    pending_.clear();
  } else {
    pending_.erase(0, start);
  }
  return items;
}

}  // namespace wakeloft
