// Memory that is used again and again: it grows where it must and never shrinks. One thread at a time.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>

namespace host {

template <class Value>
class Room {
  public:
    /// Room for so many values, of whatever content. It takes the place of what was given before.
    Value* take(std::size_t count) {
        if (count > size_) {
            // More than is asked for: what is never touched costs nothing, and what has been stays at hand.
            size_ = std::max(count, leastBytes / sizeof(Value));
            values_ = std::make_unique_for_overwrite<Value[]>(size_); // NOLINT(modernize-avoid-c-arrays)
        }
        return values_.get();
    }

  private:
    static constexpr std::size_t leastBytes = std::size_t{8} << 20;

    std::unique_ptr<Value[]> values_; // NOLINT(modernize-avoid-c-arrays): vectors clear what they add
    std::size_t size_ = 0;
};

} // namespace host
