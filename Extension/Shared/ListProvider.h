// Answers the host's requests for a list widget, whichever list it shows.
//
// The file is read afresh for every snapshot and timeline, none for a placeholder. A timeline has one entry, and asks
// to be asked again after five minutes, or when the file changes.
#pragma once

#include "Platform/Foundation/Clock.h"
#include "Platform/Widgets/Timeline.h"

#include <utility>

namespace foliovault {

/// `Entry` has a member `date`, which is set here, and says what is shown: `Entry::sample()` for a placeholder,
/// `Entry::read(store, intent)` of the user's own. `Store::shared()` is the store on the user's own file.
template <class EntryType, class IntentType, class Store>
class ListProvider {
  public:
    using Entry = EntryType;
    using Intent = IntentType;

    static constexpr double reloadSeconds = 300;

    explicit ListProvider(const Store& store = Store::shared(),
                          const platform::Clock& clock = platform::SystemClock::shared())
        : store_(&store), clock_(&clock) {}

    Entry placeholder() const { return dated(Entry::sample()); }
    Entry snapshot(const Intent& intent) const { return makeEntry(intent); }
    platform::Timeline<Entry> timeline(const Intent& intent) const {
        platform::Timeline<Entry> timeline;
        timeline.entries.push_back(makeEntry(intent));
        timeline.reload = {clock_->now().addingSeconds(reloadSeconds)};
        timeline.watches = store_->watches();
        return timeline;
    }

    /// An entry with nothing to show, for the preview of that.
    Entry emptyEntry() const { return dated({}); }

  private:
    Entry makeEntry(const Intent& intent) const { return dated(Entry::read(*store_, intent)); }
    Entry dated(Entry entry) const {
        entry.date = clock_->now();
        return entry;
    }

    const Store* store_;
    const platform::Clock* clock_;
};

} // namespace foliovault
