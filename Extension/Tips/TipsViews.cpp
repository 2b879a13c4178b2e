#include "Extension/Tips/TipsViews.h"

#include "Extension/Shared/MessageView.h"
#include "Extension/Shared/WidgetHeader.h"
#include "Platform/Foundation/Localization.h"
#include "Platform/Foundation/LocalizedDate.h"
#include "Platform/Views/Divider.h"
#include "Platform/Views/Spacer.h"
#include "Platform/Views/Stack.h"
#include "Platform/Views/Symbol.h"
#include "Platform/Views/Text.h"

namespace foliovault {

using namespace platform;

namespace {

constexpr VStackOptions tightColumn{.alignment = HorizontalAlignment::leading, .spacing = 0};

View header(TipsMode mode) {
    return WidgetHeader{.title = "Tips", .subtitle = subtitle(mode)}.body().padding({.bottom = 6});
}

/// The differences of the two large families.
struct ArticleStyle {
    Font title;
    Font date;
    double dividerPadding;
    Font description;
};

View article(const TipItem& tip, TipsMode mode, const ArticleStyle& style) {
    return vStack(tightColumn,
                  {
                      header(mode),
                      text(tip.title).font(style.title.semibold()).lineLimit(3),
                      text(localizedDate(tip.pubDate)).font(style.date).foreground(tertiary).padding({.top = 2}),
                      divider().padding({.top = style.dividerPadding, .bottom = style.dividerPadding}),
                      text(tip.description).font(style.description).foreground(secondary),
                      spacer(0),
                  });
}

} // namespace

View TipsEntryView::body(const Environment& environment) const {
    if (!entry.tip) {
        return TipsEmptyView().body();
    }
    switch (environment.family) {
    case WidgetFamily::small:
        return TipsSmallView{*entry.tip}.body();
    case WidgetFamily::large:
        return TipsLargeView{*entry.tip, entry.mode}.body();
    case WidgetFamily::extraLarge:
        return TipsExtraLargeView{*entry.tip, entry.mode}.body();
    case WidgetFamily::medium:
    case WidgetFamily::unknown:
        break;
    }
    return TipsMediumView{*entry.tip, entry.mode}.body();
}

View TipsSmallView::body() const {
    return vStack({.alignment = HorizontalAlignment::leading, .spacing = 4},
                  {
                      hStack({}, {text(localized("Tips")).font(headline), spacer(),
                                  symbol("lightbulb").foreground(Color::yellow)}),
                      spacer(2),
                      text(tip.title).font(callout).lineLimit(4).foreground(primary),
                      spacer(0),
                  });
}

View TipsMediumView::body() const {
    return vStack(tightColumn,
                  {
                      header(mode),
                      text(tip.title).font(callout.semibold()).lineLimit(2),
                      text(tip.description).font(caption).foreground(secondary).lineLimit(3).padding({.top = 2}),
                      spacer(0),
                  });
}

View TipsLargeView::body() const {
    return article(tip, mode, {.title = callout, .date = caption2, .dividerPadding = 6, .description = caption});
}

View TipsExtraLargeView::body() const {
    return article(tip, mode, {.title = title3, .date = caption, .dividerPadding = 8, .description = callout});
}

View TipsEmptyView::body() const {
    return MessageView{.symbol = "lightbulb.slash", .title = "No Tips", .explanation = "Tips could not be loaded."}
        .body();
}

} // namespace foliovault
