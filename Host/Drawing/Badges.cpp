#include "Host/Drawing/Badges.h"

#include "Host/Drawing/PixelGrid.h"
#include "Platform/Views/Stack.h"
#include "Platform/Views/Symbol.h"
#include "Platform/Views/Text.h"

#include <algorithm>
#include <utility>

namespace host {

using platform::View;

namespace {

constexpr const char* failureSymbol = "exclamationmark.circle";

View smallPrint(const View& view) {
    return view.font(platform::caption2)
        .foreground(platform::secondary)
        .padding({.top = 2, .bottom = 2, .leading = 7, .trailing = 7});
}

} // namespace

View asOfBadge(std::string text) {
    return smallPrint(platform::text(std::move(text)).lineLimit(1));
}

View failedAsOfBadge(std::string text) {
    return smallPrint(platform::hStack(
        {.spacing = 4}, {platform::symbol(failureSymbol), platform::text(std::move(text)).lineLimit(1)}));
}

View failureMark() {
    return platform::symbol(failureSymbol)
        .font(platform::callout)
        .foreground(platform::secondary)
        .padding({.top = 2.5, .bottom = 2.5, .leading = 2.5, .trailing = 2.5});
}

View messageView(std::string title, std::vector<std::string> texts, std::optional<MessageButton> button) {
    constexpr auto centered = platform::HorizontalAlignment::center;
    platform::Views parts{platform::text(std::move(title)).font(platform::headline).textAlignment(centered)};
    for (std::string& text : texts) {
        parts.push_back(platform::text(std::move(text))
                            .font(platform::caption)
                            .foreground(platform::secondary)
                            .textAlignment(centered));
    }
    platform::Views all{platform::vStack({.spacing = 4}, std::move(parts))};
    if (button) {
        all.push_back(platform::text(std::move(button->title))
                          .font(platform::caption.semibold())
                          .lineLimit(1)
                          .foreground(platform::Color::white)
                          .padding({.top = 4, .bottom = 4, .leading = 12, .trailing = 12})
                          .capsuleBackground(platform::Color::blue)
                          .accentable()
                          .link(button->url));
    }
    return platform::vStack({.spacing = 12}, std::move(all));
}

Rect drawBadge(RenderedTile& rendered, const View& badge, const TileStyle& style, Renderer& renderer) {
    const PixelGrid grid(rendered.scale);
    const Size room{rendered.picture.width / rendered.scale - 2 * badgeInset,
                    rendered.picture.height / rendered.scale - 2 * badgeInset};
    if (!rendered.picture.surface || room.width <= 0 || room.height <= 0) {
        return {};
    }
    WidgetLayout layout = layOutAlone(badge, room, renderer.texts(), renderer.images());
    if (style.direction == Direction::rightToLeft) {
        mirror(layout);
    }
    const double width = grid.edge(layout.size.width);
    const double height = grid.edge(layout.size.height);
    const double inset = grid.edge(badgeInset);
    const Point origin{style.direction == Direction::rightToLeft ? inset : rendered.picture.width - inset - width,
                       rendered.picture.height - inset - height};
    // Badges on placeholders are readable, too.
    Appearance appearance = style.appearance;
    appearance.redaction = Redaction::none;
    renderer.drawBadge(rendered.picture, origin, layout, appearance, rendered.scale);
    return {origin.x / rendered.scale, origin.y / rendered.scale, width / rendered.scale, height / rendered.scale};
}

} // namespace host
