#include "RigClamshell.h"

#include <cerrno>
#include <cstdio>

namespace wakeloft {

std::optional<bool> RigClamshell::lidIsClosed() {
  if (!path_) return false;
  std::FILE* file = std::fopen(path_->c_str(), "r");
  if (!file) return errno == ENOENT ? std::optional(false) : std::nullopt;
  char text[16] = {};
  const std::size_t length = std::fread(text, 1, sizeof text - 1, file);
  std::fclose(file);
  std::string word(text, length);
  while (!word.empty() && (word.back() == '\n' || word.back() == ' ' || word.back() == '\r')) word.pop_back();
  if (word == "closed") return true;
  if (word == "open") return false;
  return std::nullopt;
}

}  // namespace wakeloft
