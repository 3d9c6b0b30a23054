#include "release/SparkleSigningKey.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>

#include <stdexcept>

#include "release/Base64.h"

namespace wakeloft {

namespace {

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view whitespace = " \t\n\r\v\f";
  const auto first = text.find_first_not_of(whitespace);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(whitespace) - first + 1);
}

}  // namespace

void SparkleSigningKey::Free::operator()(evp_pkey_st* key) const { EVP_PKEY_free(key); }

std::variant<SparkleSigningKey, SparkleSigningKey::Error> SparkleSigningKey::fromExportedKey(std::string_view text) {
  auto secret = Base64::decode(trimmed(text));
  if (!secret || secret->empty()) {
    return Error{"the private key file does not hold base64 text, as generate_keys -x writes it"};
  }
  const std::size_t size = secret->size();
  EVP_PKEY* key = size == seedBytes
                      ? EVP_PKEY_new_raw_private_key(EVP_PKEY_ED25519, nullptr, secret->data(), secret->size())
                      : nullptr;
  OPENSSL_cleanse(secret->data(), secret->size());
  if (size == olderSecretBytes) {
    return Error{
        "the private key is in Sparkle's older 96-byte form (expanded key and public key), which cannot be "
        "signed with here; sign with Sparkle's sign_update, or make a new key with generate_keys"};
  }
  if (size != seedBytes) {
    return Error{"the private key file holds " + std::to_string(size) + " bytes, not a 32-byte Ed25519 seed"};
  }
  if (!key) throw std::runtime_error("OpenSSL could not make an Ed25519 key from a seed");
  return SparkleSigningKey(key);
}

std::variant<SparkleSigningKey, SparkleSigningKey::Error> SparkleSigningKey::forPublicKey(std::string_view text,
                                                                                        std::string_view publicKey) {
  const auto expected = Base64::decode(publicKey);
  if (!expected || expected->size() != 32) {
    return Error{"the public key needs to be the base64 of a 32-byte Ed25519 key, as SUPublicEDKey holds it"};
  }
  auto key = fromExportedKey(text);
  if (const auto* signingKey = std::get_if<SparkleSigningKey>(&key); signingKey && signingKey->publicKey() != publicKey) {
    return Error{"the private key does not belong to the public key " + std::string(publicKey) + " (its own is " +
                 signingKey->publicKey() + ")"};
  }
  return key;
}

std::string SparkleSigningKey::publicKey() const {
  unsigned char bytes[32];
  std::size_t size = sizeof bytes;
  if (EVP_PKEY_get_raw_public_key(key_.get(), bytes, &size) != 1 || size != sizeof bytes) {
    throw std::runtime_error("OpenSSL could not give the Ed25519 public key");
  }
  return Base64::encode(std::string_view(reinterpret_cast<const char*>(bytes), size));
}

std::string SparkleSigningKey::sign(std::string_view bytes) const {
  const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(), EVP_MD_CTX_free);
  unsigned char signature[64];
  std::size_t size = sizeof signature;
  // Ed25519 hashes the message itself: no digest is named, and the whole
  // message goes in one call.
  if (!context || EVP_DigestSignInit(context.get(), nullptr, nullptr, nullptr, key_.get()) != 1 ||
      EVP_DigestSign(context.get(), signature, &size, reinterpret_cast<const unsigned char*>(bytes.data()),
                     bytes.size()) != 1 ||
      size != sizeof signature) {
    throw std::runtime_error("OpenSSL could not sign with the Ed25519 key");
  }
  return Base64::encode(std::string_view(reinterpret_cast<const char*>(signature), size));
}

}  // namespace wakeloft
