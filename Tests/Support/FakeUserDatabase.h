// A user with the home folders that a test gives.
#pragma once

#include "Platform/Foundation/UserDatabase.h"

#include <utility>

namespace platform {

class FakeUserDatabase final : public UserDatabase {
  public:
    explicit FakeUserDatabase(std::optional<std::string> recordedHome, std::string processHome = "/")
        : recordedHome_(std::move(recordedHome)), processHome_(std::move(processHome)) {}

    std::optional<std::string> recordedHome() const override { return recordedHome_; }
    std::string processHome() const override { return processHome_; }

  private:
    std::optional<std::string> recordedHome_;
    std::string processHome_;
};

} // namespace platform
