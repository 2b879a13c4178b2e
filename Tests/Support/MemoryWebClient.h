// A web in memory, with the pages that a test publishes.
#pragma once

#include "Platform/Foundation/WebClient.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace platform {

/// One thread at a time.
class MemoryWebClient final : public WebClient {
  public:
    /// Returns the body at `address`; fails with "Could not resolve host" for others.
    Expected<Data, WebError> get(const URL& address) const override {
        if (whileLoading) {
            whileLoading();
        }
        requests_.push_back(address.absoluteString());
        const auto body = bodies_.find(address.absoluteString());
        if (failure_ || body == bodies_.end()) {
            return Unexpected{failure_.value_or(WebError{"Could not resolve host: " + address.host().value_or("")})};
        }
        return Data::owning(body->second);
    }

    void publish(const std::string& address, std::string body) { bodies_.insert_or_assign(address, std::move(body)); }

    /// From now on every download fails.
    void fail(std::string description) { failure_ = WebError{std::move(description)}; }

    /// The addresses of all downloads, in their order.
    const std::vector<std::string>& requests() const { return requests_; }

    /// Runs inside every download, on its thread.
    std::function<void()> whileLoading;

  private:
    std::map<std::string, std::string> bodies_;
    std::optional<WebError> failure_;
    mutable std::vector<std::string> requests_;
};

} // namespace platform
