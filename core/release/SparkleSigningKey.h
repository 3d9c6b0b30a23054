#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <variant>

struct evp_pkey_st;

namespace wakeloft {

// The Ed25519 key Sparkle signs updates with, read from the file its key
// tool exports (`generate_keys -x FILE`). That file holds the base64 of the
// key's keychain secret: 32 bytes, the Ed25519 seed, for keys made by
// Sparkle 2.6 and later; 96 bytes (orlp/ed25519's expanded private key and
// the public key) for older ones. Only the seed form can be used: OpenSSL
// signs from a seed, and the expanded form cannot be turned back into one.
class SparkleSigningKey {
 public:
  struct Error {
    std::string message;
  };

  static constexpr std::size_t seedBytes = 32;
  static constexpr std::size_t olderSecretBytes = 96;

  // From the file's text; like Sparkle, whitespace around the base64 is
  // ignored.
  static std::variant<SparkleSigningKey, Error> fromExportedKey(std::string_view text);

  // The key from the file's text, refused unless its public key is
  // `publicKey` (the app's SUPublicEDKey, base64): a release signed with any
  // other key would be refused by every installed copy.
  static std::variant<SparkleSigningKey, Error> forPublicKey(std::string_view text, std::string_view publicKey);

  // The base64 of the 32-byte public key: the app's SUPublicEDKey.
  std::string publicKey() const;

  // The base64 of the 64-byte Ed25519 signature of `bytes`, as
  // sparkle:edSignature carries it.
  std::string sign(std::string_view bytes) const;

 private:
  struct Free {
    void operator()(evp_pkey_st* key) const;
  };
  explicit SparkleSigningKey(evp_pkey_st* key) : key_(key) {}

  std::unique_ptr<evp_pkey_st, Free> key_;
};

}  // namespace wakeloft
