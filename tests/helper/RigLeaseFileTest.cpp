#include "helper/RigLeaseFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cmath>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include "TemporaryDirectory.h"

namespace wakeloft {
namespace {

using testing::TemporaryDirectory;

TEST(RigLeaseFileTest, DecodesOneFiniteNumberBetweenBlanks) {
  EXPECT_EQ(RigLeaseFile::decode(" \t\r\n1731700000.5\r\n\v\f "), Date{1731700000.5});
  // Unicode blanks and separators count too: NBSP, NEL, LINE SEPARATOR, IDEOGRAPHIC SPACE.
  EXPECT_EQ(RigLeaseFile::decode("\u00a0\u00851731700000.5\u2028\u3000"), Date{1731700000.5});
  EXPECT_EQ(RigLeaseFile::decode("-1e3"), Date{-1000});
  for (const std::string_view text : {"", " \n ", "nan", "inf", "1e999", "12abc", "1 2", "1,5", "\u00a0",
                                      "1731700000.5\u200b", "\xff" "1"}) {
    EXPECT_EQ(RigLeaseFile::decode(text), std::nullopt) << '"' << text << '"';
  }
  EXPECT_EQ(RigLeaseFile::decode(std::string_view("1.5\0", 4)), std::nullopt);
}

class RigLeaseFileOnDiskTest : public ::testing::Test {
 protected:
  std::string path() const { return (directory.path() / "rig.lease").string(); }
  TemporaryDirectory directory;
};

TEST_F(RigLeaseFileOnDiskTest, WriteReplacesTheFileInOneStepWithADateThatReadsBack) {
  RigLeaseFile::write(Date{1}, path());
  struct stat before {};
  ASSERT_EQ(::stat(path().c_str(), &before), 0);
  RigLeaseFile::write(Date{1731700000.25}, path());
  struct stat after {};
  ASSERT_EQ(::stat(path().c_str(), &after), 0);
  // A new file put in the old one's place, never the old one rewritten.
  EXPECT_NE(before.st_ino, after.st_ino);
  EXPECT_EQ(after.st_mode & 0777, 0644u);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(directory.path()), {}), 1);
  EXPECT_EQ(RigLeaseFile::read(path()), Date{1731700000.25});
}

TEST_F(RigLeaseFileOnDiskTest, WriteIntoAMissingFolderFailsNamingThePath) {
  const auto missing = (directory.path() / "no such folder" / "rig.lease").string();
  try {
    RigLeaseFile::write(Date{5}, missing);
    FAIL() << "wrote into a missing folder";
  } catch (const std::system_error& error) {
    EXPECT_NE(std::string(error.what()).find(missing), std::string::npos);
  }
}

TEST_F(RigLeaseFileOnDiskTest, WriteReplacesALinkInsteadOfFollowingIt) {
  const auto target = directory.write("elsewhere", "keep me");
  std::filesystem::create_symlink(target, path());
  RigLeaseFile::write(Date{5}, path());
  EXPECT_FALSE(std::filesystem::is_symlink(path()));
  EXPECT_EQ(RigLeaseFile::read(target), std::nullopt);
}

TEST_F(RigLeaseFileOnDiskTest, RemoveSaysWhetherThereWasAFileAndNeitherCallTouchesAFolder) {
  RigLeaseFile::write(Date{5}, path());
  EXPECT_TRUE(RigLeaseFile::remove(path()));
  EXPECT_FALSE(RigLeaseFile::remove(path()));
  std::filesystem::create_directory(path());
  EXPECT_THROW(RigLeaseFile::write(Date{6}, path()), std::system_error);
  EXPECT_THROW(RigLeaseFile::remove(path()), std::system_error);
  EXPECT_EQ(RigLeaseFile::read(path()), std::nullopt);
}

TEST_F(RigLeaseFileOnDiskTest, ReadGivesAbsentForAnythingButAUTF8TextFileOfOneDate) {
  std::string ideographicSpaces;  // three bytes each: some cut where the file is read in pieces
  for (int i = 0; i < 50'000; ++i) ideographicSpaces += "\u3000";
  const std::string number = "1731700000.5";
  const std::pair<std::string, std::optional<Date>> cases[] = {
      {number + "\xff", std::nullopt},
      {ideographicSpaces + number + ideographicSpaces, Date{1731700000.5}},
      {std::string(100'000, ' ') + number + std::string(100'000, ' ') + "\xC3", std::nullopt},
      {ideographicSpaces + number + " 1", std::nullopt},
  };
  for (const auto& [content, date] : cases) {
    directory.write("rig.lease", content);
    EXPECT_EQ(RigLeaseFile::read(path()), date) << content.size() << " bytes";
  }
}

}  // namespace
}  // namespace wakeloft
