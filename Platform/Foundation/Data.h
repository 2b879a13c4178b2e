// Immutable bytes that are shared, never copied.
//
// A `Data` is a run of bytes together with a share in the memory that holds them: a file that was read, or a buffer of
// its own. A slice shares the same memory, so the icon of one record keeps its file alive and nothing else.
//
// Copying costs one atomic increment. All operations may be called from any thread.
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

    /// Bytes that `owner` keeps alive and unchanged.
    Data(std::shared_ptr<const void> owner, std::string_view bytes) : owner_(std::move(owner)), bytes_(bytes) {}

    /// Takes `bytes` over.
    static Data owning(std::string bytes) {
        auto owner = std::make_shared<const std::string>(std::move(bytes));
        const std::string_view view = *owner;
        return {std::move(owner), view};
    }

    std::string_view bytes() const { return bytes_; }
    std::size_t size() const { return bytes_.size(); }

    /// Part of these bytes, sharing their memory. `part` must lie within `bytes()`.
    Data slice(std::string_view part) const { return {owner_, part}; }

    friend bool operator==(const Data& a, const Data& b) { return a.bytes_ == b.bytes_; }

  private:
    std::shared_ptr<const void> owner_;
    std::string_view bytes_;
};

} // namespace platform
