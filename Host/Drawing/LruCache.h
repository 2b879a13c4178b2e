// A map that forgets what was longest not asked for once it holds more than it may.
//
// Each entry has a weight (a count of one, or its bytes); the sum stays within the capacity, except that the entry just
// put in is always kept, however heavy. `Seek` is what entries are looked up by without making a `Key`: a key converts
// to it, it refers to the key's memory, and it is hashed by `Hash` and compared by ==. References hold until the next
// call that changes the cache. One thread at a time.
#pragma once

#include <cstddef>
#include <functional>
#include <list>
#include <unordered_map>
#include <utility>

namespace host {

template <class Key, class Value, class Seek = Key, class Hash = std::hash<Seek>>
class LruCache {
  public:
    explicit LruCache(std::size_t capacity) : capacity_(capacity) {}

    /// The entry's value, which counts as asked for; null where there is none.
    Value* find(const Seek& key) {
        const auto found = places_.find(key);
        if (found == places_.end()) {
            return nullptr;
        }
        entries_.splice(entries_.begin(), entries_, found->second);
        return &found->second->value;
    }

    /// `key` must not be in the cache yet.
    Value& insert(Key key, Value value, std::size_t weight = 1) {
        entries_.push_front({std::move(key), std::move(value), weight});
        places_.emplace(Seek(entries_.front().key), entries_.begin());
        weight_ += weight;
        while (weight_ > capacity_ && entries_.size() > 1) {
            weight_ -= entries_.back().weight;
            places_.erase(Seek(entries_.back().key));
            entries_.pop_back();
        }
        return entries_.front().value;
    }

    std::size_t size() const { return entries_.size(); }

  private:
    struct Entry {
        Key key;
        Value value;
        std::size_t weight;
    };
    std::size_t capacity_;
    std::size_t weight_ = 0;
    std::list<Entry> entries_;
    std::unordered_map<Seek, typename std::list<Entry>::iterator, Hash> places_;
};

} // namespace host
