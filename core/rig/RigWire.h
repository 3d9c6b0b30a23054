#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "lease/LidLeaseRequest.h"

namespace wakeloft {

// The lease rig's wire: UTF-8 lines ending in "\n". A client sends
// "renew <seconds since 1970>", "revoke" or "status"; every request gets
// exactly one reply line: for a renewal or revocation empty when granted or
// handled, otherwise the refusal's reason; for a status, its text.
namespace RigWire {

inline constexpr std::size_t maximumLineBytes = 4096;

// The request line for a renewal: the deadline in the shortest decimal that
// reads back to the same double ("nan", "inf" and "-inf" for the rest).
std::string renewLine(double deadline);
inline constexpr std::string_view revokeLine = "revoke\n";
inline constexpr std::string_view statusLine = "status\n";
// The line for any request; a disconnect is never sent, and reads as the
// revocation it is handled as.
std::string requestLine(const LidLeaseRequest& request);

// The reply line for a service answer; line breaks inside it become blanks.
std::string replyLine(const std::optional<std::string>& reply);

// A reply line as read, without its "\n": empty means granted.
std::optional<std::string> replyText(std::string_view line);

// Why a line is not a request, or the request it is.
struct Violation {
  std::string why;
  friend bool operator==(const Violation&, const Violation&) = default;
};
std::variant<LidLeaseRequest, Violation> parseRequest(std::string_view line);

}  // namespace RigWire

// Cuts a byte stream into complete lines. A line longer than the wire allows
// or that is not UTF-8 is a violation, after which the reader takes nothing
// more: the connection is to be closed.
class RigLineReader {
 public:
  using Item = std::variant<std::string, RigWire::Violation>;

  std::vector<Item> feed(std::string_view bytes);
  bool isSpent() const { return spent_; }

 private:
  std::string pending_;
  bool spent_ = false;
};

}  // namespace wakeloft
