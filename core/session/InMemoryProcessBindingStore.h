#pragma once

#include "session/ProcessBindingStore.h"

namespace wakeloft {

class InMemoryProcessBindingStore final : public ProcessBindingStore {
 public:
  explicit InMemoryProcessBindingStore(StoredProcessBinding initial = StoredProcessBinding::none())
      : stored(std::move(initial)) {}

  StoredProcessBinding load() const override { return stored; }
  void save(const std::optional<SessionClaims>& claims) override {
    stored = claims && !claims->holds.empty() ? StoredProcessBinding::bound(*claims) : StoredProcessBinding::none();
  }

  StoredProcessBinding stored;
};

}  // namespace wakeloft
