// What an entry shows of a list: its first items, and how many there are.
#pragma once

#include "Extension/Shared/DisplayableItem.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace foliovault {

/// Costs memory for the items that it holds alone, however long the list.
template <DisplayableItem Item>
struct ListExcerpt {
    /// The first ones, at most `listEntryItemCap`.
    std::vector<Item> items;
    /// How many there are in all.
    std::int64_t count = 0;

    /// Counts one item more, which `make()`, an optional, makes only where there is room for it.
    template <class Make>
    void add(Make make) {
        ++count;
        if (items.size() < listEntryItemCap) {
            items.reserve(listEntryItemCap);
            if (auto item = make()) {
                items.push_back(*std::move(item));
            }
        }
    }
};

} // namespace foliovault
