#pragma once

#include "session/ProcessBindingStore.h"

namespace wakeloft {

class InMemoryProcessBindingStore final : public ProcessBindingStore {
 public:
  explicit InMemoryProcessBindingStore(StoredProcessBinding initial = StoredProcessBinding::none())
      : stored(std::move(initial)) {}

  StoredProcessBinding load() const override { return stored; }
  void save(const std::optional<RunningProcess>& process) override {
    stored = process ? StoredProcessBinding::bound(*process) : StoredProcessBinding::none();
  }

  StoredProcessBinding stored;
};

}  // namespace wakeloft
