#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <utility>

namespace wakeloft {

// Tells a running helper whether the executable it was started from has been
// replaced on disk (by an update of the app, say), so that it can step aside
// and let the system start the new one. Judging a file means checking its
// signature, so an unchanged file is judged only once.
class LidHelperFileWatch {
 public:
  // A file, whatever its content: device and inode.
  struct File {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    friend bool operator==(const File&, const File&) = default;
  };

  // A file in one state: any change of content or a touch changes it.
  struct Identity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t size = 0;
    long modifiedSeconds = 0;
    long modifiedNanoseconds = 0;

    File file() const { return {device, inode}; }
    friend bool operator==(const Identity&, const Identity&) = default;
  };

  class Finding {
   public:
    enum class Kind {
      // A validly signed helper is there, but other code, or the same code
      // in another file, than the one running.
      replaced,
      // The running file, with the running code.
      running,
      // Nothing can be examined at the path.
      missing,
      // A file whose signature is invalid or does not meet the requirement.
      unrecognised,
    };

    static Finding replaced(std::string codeDirectoryHash) { return {Kind::replaced, std::move(codeDirectoryHash)}; }
    static Finding running() { return {Kind::running, {}}; }
    static Finding missing() { return {Kind::missing, {}}; }
    static Finding unrecognised() { return {Kind::unrecognised, {}}; }

    Kind kind() const { return kind_; }
    // The hash found on disk; empty except for `replaced`.
    const std::string& codeDirectoryHash() const { return codeDirectoryHash_; }

    friend bool operator==(const Finding&, const Finding&) = default;

   private:
    Finding(Kind kind, std::string codeDirectoryHash) : kind_(kind), codeDirectoryHash_(std::move(codeDirectoryHash)) {}

    Kind kind_;
    std::string codeDirectoryHash_;
  };

  struct Look {
    Finding finding;
    bool changed;
  };

  using Identify = std::function<std::optional<Identity>(const std::string& path)>;
  // The code-directory hash of the file at the path if its signature is valid
  // and meets the helper's requirement.
  using Judge = std::function<std::optional<std::string>(const std::string& path)>;
  // The same against a requirement text (`CodeSigningIdentity`'s
  // codeDirectoryHash(ofCodeAt:satisfying:) on macOS).
  using JudgeAgainst = std::function<std::optional<std::string>(const std::string& path, const std::string& requirement)>;

  LidHelperFileWatch(std::string path, std::string runningCodeDirectoryHash, File startedFrom, Identify identify,
                     Judge judge);

  // The watch for this helper, or absent unless the path, the starting file
  // and the team identifier are known and make a requirement for the
  // helper's signing identifier.
  static std::optional<LidHelperFileWatch> forRunningHelper(const std::optional<std::string>& path,
                                                            const std::optional<File>& startedFrom,
                                                            std::string runningCodeDirectoryHash,
                                                            const std::optional<std::string>& teamIdentifier,
                                                            JudgeAgainst judgeAgainst);

  // The file's status (following links), or absent if it cannot be examined.
  static std::optional<Identity> identity(const std::string& path);

  // The executable path in a process's argument area as the kernel hands it
  // out (a 32-bit argument count, then the path ended by a zero byte);
  // accepted only when absolute.
  static std::optional<std::string> launchedPath(std::span<const std::uint8_t> argumentArea);

  // A replaced helper steps aside only when that cannot leave the sleep
  // setting behind: no lease held and no reset of the setting in doubt.
  static bool stepsAside(const Finding& finding, bool isLeaseHeld, bool isResetInDoubt);

  // What is at the path now, judging the file only if it changed.
  Finding find();
  // `find()`, and whether that differs from the last look.
  Look look();

  const std::string& path() const { return path_; }
  const std::optional<Finding>& lastFinding() const { return lastFinding_; }

 private:
  std::string path_;
  std::string runningCodeDirectoryHash_;
  File startedFrom_;
  Identify identify_;
  Judge judge_;
  std::optional<std::pair<Identity, Finding>> judged_;
  std::optional<Finding> lastFinding_;
};

}  // namespace wakeloft
