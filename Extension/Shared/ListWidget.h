// The common part of all list widgets: entry, provider, and the widget's declaration.
#pragma once

#include "Extension/Shared/DisplayableItem.h"
#include "Platform/Foundation/Clock.h"
#include "Platform/Widgets/Widget.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace foliovault {

template <DisplayableItem Item>
struct ListEntry {
    platform::Date date;
    /// The first `listEntryItemCap` items that the intent includes, in the list's order.
    std::vector<Item> items = {};
    /// The number of items that the intent includes.
    std::int64_t displayCount = 0;

    /// Adds the next item of the list if `intent.includes(item)`.
    template <class Intent>
    void add(Item&& item, const Intent& intent) {
        if (intent.includes(item)) {
            ++displayCount;
            if (items.size() < listEntryItemCap) {
                items.push_back(std::move(item));
            }
        }
    }
};

/// Reads the file for every snapshot and timeline. A placeholder shows samples. A timeline has one entry; the host
/// reloads it after five minutes, or when the file changes.
template <class EntryType, class IntentType, class Store>
class ListProvider {
  public:
    using Entry = EntryType;
    using Intent = IntentType;
    using Item = typename decltype(Entry::items)::value_type;

    static constexpr double reloadSeconds = 300;

    explicit ListProvider(const Store& store = Store::shared(),
                          const platform::Clock& clock = platform::SystemClock::shared())
        : store_(&store), clock_(&clock) {}

    Entry placeholder() const {
        Entry entry = emptyEntry();
        for (Item item : Item::sampleItems()) {
            entry.add(std::move(item), Intent());
        }
        return entry;
    }
    Entry snapshot(const Intent& intent) const {
        Entry entry = emptyEntry();
        store_->forEachItem([&](Item&& item) { entry.add(std::move(item), intent); });
        return entry;
    }
    platform::Timeline<Entry> timeline(const Intent& intent) const {
        return {.entries = {snapshot(intent)},
                .reload = {clock_->now().addingSeconds(reloadSeconds)},
                .watches = store_->watches()};
    }

    /// Returns an entry without items.
    Entry emptyEntry() const {
        Entry entry;
        entry.date = clock_->now();
        return entry;
    }

  private:
    const Store* store_;
    const platform::Clock* clock_;
};

/// Returns the widget of that kind in all families, with its intent's title and description. `Provider` is a
/// `ListProvider`; `EntryView` is made of an entry and has a `body(environment)`. The previews, the samples in three
/// families and an entry without items, are named after `previewPrefix`: "Favorites Small".
template <class EntryView, class Provider>
std::unique_ptr<platform::Widget> listWidget(std::string kind, const Provider& provider,
                                             const std::string& previewPrefix) {
    using platform::WidgetFamily;
    using Entry = typename Provider::Entry;
    const auto samples = [provider] { return std::vector{provider.placeholder()}; };
    const auto nothing = [provider] { return std::vector{provider.emptyEntry()}; };
    return std::make_unique<platform::IntentWidget<Provider>>(platform::IntentConfiguration<Provider>{
        .kind = std::move(kind),
        .provider = provider,
        .content = [](const Entry& entry,
                      const platform::Environment& environment) { return EntryView{entry}.body(environment); },
        .previews = {{previewPrefix + "Small", WidgetFamily::small, samples},
                     {previewPrefix + "Medium", WidgetFamily::medium, samples},
                     {previewPrefix + "Large", WidgetFamily::large, samples},
                     {previewPrefix + "Empty", WidgetFamily::small, nothing}},
    });
}

} // namespace foliovault
