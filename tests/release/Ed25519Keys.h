#pragma once

#include <openssl/evp.h>

#include <memory>
#include <string_view>

#include "release/Base64.h"

namespace wakeloft::testing {

// RFC 8032, section 7.1, TEST 2: a seed, its public key and the signature
// of the one byte 0x72. Sparkle makes its key pair from a seed the same way
// (orlp/ed25519's ed25519_create_keypair).
inline constexpr std::string_view rfcSeed = "TM0Imyj/ltqdtsNG7BFOD1uKMZ81q6Yk2oz27U+4pvs=";
inline constexpr std::string_view rfcPublicKey = "PUAXw+hDiVqStwqnTRt+vJyYLM8uxJaMwM1V8Sr0Zgw=";
inline constexpr std::string_view rfcSignatureOf72 =
    "kqAJqfDUyrhyDoILX2QlQKKye1QWUD+Ps3YiI+vbadoIWsHkPhWZbkWPNhPQ8R2MOHsurrQwKu6wDSkWErsMAA==";

// Whether OpenSSL finds `signature` (base64) an Ed25519 signature of
// `message` by `publicKey` (base64), the check Sparkle makes.
inline bool verifies(std::string_view publicKey, std::string_view message, std::string_view signature) {
  const auto key = Base64::decode(publicKey);
  const auto bytes = Base64::decode(signature);
  if (!key || !bytes) return false;
  const std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> pkey(
      EVP_PKEY_new_raw_public_key(EVP_PKEY_ED25519, nullptr, key->data(), key->size()), EVP_PKEY_free);
  const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(), EVP_MD_CTX_free);
  return pkey && context && EVP_DigestVerifyInit(context.get(), nullptr, nullptr, nullptr, pkey.get()) == 1 &&
         EVP_DigestVerify(context.get(), bytes->data(), bytes->size(),
                          reinterpret_cast<const unsigned char*>(message.data()), message.size()) == 1;
}

}  // namespace wakeloft::testing
