#include "Extension/Shared/ItemRows.h"

#include "Platform/Views/Image.h"
#include "Platform/Views/Shape.h"
#include "Platform/Views/Spacer.h"
#include "Platform/Views/Symbol.h"
#include "Platform/Views/Text.h"

namespace foliovault {

using namespace platform;

View ItemIconView::body(const Environment& environment) const {
    const View icon = symbol(sfSymbol).foreground(secondary);
    const bool showsPicture =
        data && data->storedSize() <= greatestIconSize && environment.renderingMode == RenderingMode::fullColor;
    return (showsPicture ? image(*data, icon) : icon).frame({.width = size, .height = size});
}

View AccentDot::body(const Environment& environment) const {
    if (!color) {
        return clear().frame({.width = size, .height = size});
    }
    const View dot = circle(*color).frame({.width = size, .height = size});
    return environment.renderingMode == RenderingMode::fullColor ? dot : dot.accentable();
}

View LinkedItem::body() const {
    return url ? content.link(url->absoluteString(), id) : content;
}

View CompactItemRow::body(const Environment& environment) const {
    return hStack({.spacing = 4}, {
                                      AccentDot{.color = item.dotColor, .size = 5}.body(environment),
                                      ItemIconView{.data = item.iconData, .sfSymbol = item.icon, .size = 12}
                                          .body(environment)
                                          .font(caption2)
                                          .frame({.width = 12}),
                                      text(item.title).font(caption).lineLimit(1).foreground(primary),
                                  });
}

View StandardItemRow::body(const Environment& environment) const {
    Views parts{
        AccentDot{.color = item.dotColor, .size = 6}.body(environment),
        ItemIconView{.data = item.iconData, .sfSymbol = item.icon, .size = 16}
            .body(environment)
            .font(callout)
            .frame({.width = 16}),
        text(item.title).font(callout).lineLimit(1).foreground(primary),
        spacer(),
    };
    if (item.subtitle) {
        parts.push_back(text(*item.subtitle).font(caption2).foreground(tertiary));
    }
    return hStack({.spacing = 6}, std::move(parts)).padding({.top = 3, .bottom = 3});
}

View DetailedItemRow::body(const Environment& environment) const {
    Views lines{text(item.title).font(callout).lineLimit(1).foreground(primary)};
    if (item.subtitle) {
        lines.push_back(text(*item.subtitle).font(caption2).lineLimit(1).foreground(secondary));
    }
    return hStack({.spacing = 8},
                  {
                      AccentDot{.color = item.dotColor, .size = 6}.body(environment),
                      ItemIconView{.data = item.iconData, .sfSymbol = item.icon, .size = 18}
                          .body(environment)
                          .font(callout)
                          .frame({.width = 18}),
                      vStack({.alignment = HorizontalAlignment::leading, .spacing = 1}, std::move(lines)),
                      spacer(),
                  })
        .padding({.top = 3, .bottom = 3});
}

} // namespace foliovault
