#include <gtest/gtest.h>

#include <string>

#include "Ed25519Keys.h"
#include "release/SparkleSigningKey.h"

namespace wakeloft {
namespace {

using testing::rfcPublicKey;
using testing::rfcSeed;

TEST(SparkleSigningKeyTest, ASeedFileGivesTheStandardKeyPairAndSignature) {
  // generate_keys -x writes the base64 alone; a line break after it is
  // what an editor or a secret store may add.
  const auto key = SparkleSigningKey::fromExportedKey(std::string(rfcSeed) + "\n");
  ASSERT_TRUE(std::holds_alternative<SparkleSigningKey>(key));
  const auto& signingKey = std::get<SparkleSigningKey>(key);
  EXPECT_EQ(signingKey.publicKey(), rfcPublicKey);
  EXPECT_EQ(signingKey.sign("\x72"), testing::rfcSignatureOf72);

}

TEST(SparkleSigningKeyTest, AnythingButABase64SeedIsRefused) {
  const std::pair<std::string, std::string> refused[] = {
      {"TM0Imyj/ltqd tsNG7BFOD1uKMZ81q6Yk2oz27U+4pvs=", "does not hold base64 text"},
      {std::string(128, 'A'), "older 96-byte form"},
      {"AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA==", "holds 31 bytes, not a 32-byte Ed25519 seed"},
  };
  for (const auto& [text, message] : refused) {
    const auto read = SparkleSigningKey::fromExportedKey(text);
    ASSERT_TRUE(std::holds_alternative<SparkleSigningKey::Error>(read)) << text;
    EXPECT_NE(std::get<SparkleSigningKey::Error>(read).message.find(message), std::string::npos)
        << text << ": " << std::get<SparkleSigningKey::Error>(read).message;
  }
}

}  // namespace
}  // namespace wakeloft
