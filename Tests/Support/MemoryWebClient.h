// A web in memory, with the pages that a test publishes.
#pragma once

#include "Platform/Foundation/WebClient.h"

#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace platform {

class MemoryWebClient final : public WebClient {
  public:
    /// The body at `address`; an error, "Could not resolve host", for others.
    Expected<Data, WebError> get(const URL& address) const override {
        if (whileLoading) {
            whileLoading(address.absoluteString());
        }
        const std::scoped_lock lock(mutex_);
        requests_.push_back(address.absoluteString());
        if (failure_) {
            return Unexpected{*failure_};
        }
        const auto body = bodies_.find(address.absoluteString());
        if (body == bodies_.end()) {
            return Unexpected{WebError{"Could not resolve host: " + address.host().value_or("")}};
        }
        return Data::owning(body->second);
    }

    void publish(const std::string& address, std::string body) {
        const std::scoped_lock lock(mutex_);
        bodies_.insert_or_assign(address, std::move(body));
    }

    /// From now on every download fails.
    void fail(std::string description) {
        const std::scoped_lock lock(mutex_);
        failure_ = WebError{std::move(description)};
    }
    void recover() {
        const std::scoped_lock lock(mutex_);
        failure_.reset();
    }

    /// The addresses that were asked for, in their order.
    std::vector<std::string> requests() const {
        const std::scoped_lock lock(mutex_);
        return requests_;
    }

    /// Runs inside every download, on its thread; to be set before the first.
    std::function<void(const std::string& address)> whileLoading;

  private:
    mutable std::mutex mutex_;
    std::map<std::string, std::string> bodies_;
    std::optional<WebError> failure_;
    mutable std::vector<std::string> requests_;
};

} // namespace platform
