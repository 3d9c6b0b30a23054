#pragma once

namespace wakeloft {

// One call on a lease connection, in the form the helper's service handles it.
class LidLeaseRequest {
 public:
  enum class Kind {
    renew,
    revoke,
    // Asks how the setting and this helper's lease stand; changes nothing.
    status,
    // The connection was invalidated: the client went away. Handled like
    // revoke; nobody waits for its result.
    disconnect,
  };

  // `until` is the deadline as it came over the wire, seconds since 1970;
  // it may be anything, including not a number.
  static LidLeaseRequest renew(double until) { return LidLeaseRequest(Kind::renew, until); }
  static LidLeaseRequest revoke() { return LidLeaseRequest(Kind::revoke, 0); }
  static LidLeaseRequest status() { return LidLeaseRequest(Kind::status, 0); }
  static LidLeaseRequest disconnect() { return LidLeaseRequest(Kind::disconnect, 0); }

  Kind kind() const { return kind_; }
  // The deadline of a renewal; 0 for the other kinds.
  double until() const { return until_; }

  // Deadlines compare as numbers, so two not-a-number renewals differ.
  friend bool operator==(const LidLeaseRequest& a, const LidLeaseRequest& b) {
    return a.kind_ == b.kind_ && (a.kind_ != Kind::renew || a.until_ == b.until_);
  }

 private:
  LidLeaseRequest(Kind kind, double until) : kind_(kind), until_(until) {}

  Kind kind_;
  double until_;
};

}  // namespace wakeloft
