// Memory that is used again and again: it grows where it must and never shrinks. One thread at a time.
#pragma once

#include <cstddef>
#include <memory>

namespace host {

template <class Value>
class Room {
  public:
    /// Room for so many values, of whatever content. It takes the place of what was given before.
    Value* take(std::size_t count) {
        if (count > size_) {
            values_ = std::make_unique_for_overwrite<Value[]>(count); // NOLINT(modernize-avoid-c-arrays)
            size_ = count;
        }
        return values_.get();
    }

  private:
    std::unique_ptr<Value[]> values_; // NOLINT(modernize-avoid-c-arrays): vectors clear what they add
    std::size_t size_ = 0;
};

} // namespace host
