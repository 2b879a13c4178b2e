// Immutable bytes with shared ownership of their memory. A slice shares the same memory, so the icon of one record
// keeps the bytes of its file alive.
//
// Copying costs one atomic increment. Any thread.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace platform {

class Data {
  public:
    Data() = default;

    /// Requires that `owner` keeps `bytes` alive and unchanged.
    Data(std::shared_ptr<const void> owner, std::string_view bytes) : owner_(std::move(owner)), bytes_(bytes) {}

    /// Takes ownership of `bytes`.
    static Data owning(std::string bytes) {
        auto owner = std::make_shared<const std::string>(std::move(bytes));
        const std::string_view view = *owner;
        return {std::move(owner), view};
    }

    std::string_view bytes() const { return bytes_; }
    std::size_t size() const { return bytes_.size(); }

    /// Returns a part that shares the memory. Requires a part of `bytes()`.
    Data slice(std::string_view part) const { return {owner_, part}; }

    friend bool operator==(const Data& a, const Data& b) { return a.bytes_ == b.bytes_; }

  private:
    std::shared_ptr<const void> owner_;
    std::string_view bytes_;
};

} // namespace platform
