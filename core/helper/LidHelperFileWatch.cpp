#include "helper/LidHelperFileWatch.h"

#include <sys/stat.h>

#include <algorithm>
#include <exception>

#include "helper/LidHelperService.h"

namespace wakeloft {

namespace {

// Linux calls the modification time st_mtim, macOS st_mtimespec.
template <typename Status>
timespec modificationTime(const Status& status) {
  if constexpr (requires { status.st_mtim; }) {
    return status.st_mtim;
  } else {
    return status.st_mtimespec;
  }
}

}  // namespace

LidHelperFileWatch::LidHelperFileWatch(std::string path, std::string runningCodeDirectoryHash, File startedFrom,
                                       Identify identify, Judge judge)
    : path_(std::move(path)),
      runningCodeDirectoryHash_(std::move(runningCodeDirectoryHash)),
      startedFrom_(startedFrom),
      identify_(std::move(identify)),
      judge_(std::move(judge)) {}

std::optional<LidHelperFileWatch> LidHelperFileWatch::forRunningHelper(
    const std::optional<std::string>& path, const std::optional<File>& startedFrom,
    std::string runningCodeDirectoryHash, const std::optional<std::string>& teamIdentifier,
    JudgeAgainst judgeAgainst) {
  if (!path || !startedFrom || !teamIdentifier || !judgeAgainst) return std::nullopt;
  auto requirement = LidHelperService::codeRequirement(LidHelperService::label, teamIdentifier);
  if (!requirement) return std::nullopt;
  Judge judge = [requirement = std::move(*requirement), judgeAgainst = std::move(judgeAgainst)](
                    const std::string& file) { return judgeAgainst(file, requirement); };
  return LidHelperFileWatch(*path, std::move(runningCodeDirectoryHash), *startedFrom, &LidHelperFileWatch::identity,
                            std::move(judge));
}

std::optional<LidHelperFileWatch::Identity> LidHelperFileWatch::identity(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return std::nullopt;
  const timespec modified = modificationTime(status);
  return Identity{
      static_cast<std::uint64_t>(status.st_dev),
      static_cast<std::uint64_t>(status.st_ino),
      static_cast<std::int64_t>(status.st_size),
      static_cast<long>(modified.tv_sec),
      static_cast<long>(modified.tv_nsec),
  };
}

std::optional<std::string> LidHelperFileWatch::launchedPath(std::span<const std::uint8_t> argumentArea) {
  constexpr std::size_t countSize = sizeof(std::int32_t);
  if (argumentArea.size() <= countSize) return std::nullopt;
  const auto rest = argumentArea.subspan(countSize);
  const auto end = std::find(rest.begin(), rest.end(), std::uint8_t{0});
  // Without its zero byte the path may have been cut short.
  if (end == rest.end()) return std::nullopt;
  std::string path(rest.begin(), end);
  if (!path.starts_with('/')) return std::nullopt;
  return path;
}

bool LidHelperFileWatch::stepsAside(const Finding& finding, bool isLeaseHeld, bool isResetInDoubt) {
  return finding.kind() == Finding::Kind::replaced && !isLeaseHeld && !isResetInDoubt;
}

LidHelperFileWatch::Finding LidHelperFileWatch::find() {
  const auto identity = identify_(path_);
  if (!identity) return Finding::missing();
  if (judged_ && judged_->first == *identity) return judged_->second;

  auto finding = [&] {
    std::optional<std::string> hash;
    try {
      hash = judge_(path_);
    } catch (const std::exception&) {
      // A judge that fails is no evidence of a new helper.
    }
    if (!hash) return Finding::unrecognised();
    if (*hash == runningCodeDirectoryHash_ && identity->file() == startedFrom_) return Finding::running();
    return Finding::replaced(*hash);
  }();
  judged_.emplace(*identity, finding);
  return finding;
}

LidHelperFileWatch::Look LidHelperFileWatch::look() {
  auto finding = find();
  const bool changed = !lastFinding_ || *lastFinding_ != finding;
  lastFinding_ = finding;
  return {std::move(finding), changed};
}

}  // namespace wakeloft
