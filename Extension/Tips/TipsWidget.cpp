#include "Extension/Tips/TipsWidget.h"

#include "Extension/Tips/TipsViews.h"

namespace foliovault {

using namespace platform;

namespace {

std::optional<std::string> clickAddress(const TipsEntry& entry) {
    const auto url = entry.tip ? entry.tip->url() : std::nullopt;
    return url ? std::optional(url->absoluteString()) : std::nullopt;
}

/// Returns an entry for each sample.
std::vector<TipsEntry> sampleEntries() {
    std::vector<TipsEntry> entries;
    for (const TipItem& tip : TipItem::sampleItems()) {
        entries.push_back({.date = SystemClock::shared().now(), .tip = tip});
    }
    return entries;
}

std::vector<TipsEntry> entriesWithoutTip() {
    return {{.date = SystemClock::shared().now(), .tip = std::nullopt}};
}

} // namespace

std::unique_ptr<Widget> TipsWidget::body() const {
    return std::make_unique<IntentWidget<TipsProvider>>(IntentConfiguration<TipsProvider>{
        .kind = kind,
        .provider = provider,
        .content = [](const TipsEntry& entry,
                      const Environment& environment) { return TipsEntryView{entry}.body(environment); },
        .widgetURL = clickAddress,
        .previews = {{"Tips Small", WidgetFamily::small, sampleEntries},
                     {"Tips Medium", WidgetFamily::medium, sampleEntries},
                     {"Tips Large", WidgetFamily::large, sampleEntries},
                     {"Tips Extra Large", WidgetFamily::extraLarge, sampleEntries},
                     {"Tips Empty", WidgetFamily::small, entriesWithoutTip}},
    });
}

} // namespace foliovault
