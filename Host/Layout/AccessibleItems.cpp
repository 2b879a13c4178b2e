#include "Host/Layout/AccessibleItems.h"

#include <string_view>
#include <utility>

namespace host {
namespace {

std::string shortened(std::string_view text) {
    if (text.size() <= maxItemText) {
        return std::string(text);
    }
    std::size_t end = maxItemText;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80) {
        --end;
    }
    return std::string(text.substr(0, end));
}

bool saysNothing(std::string_view text) {
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

bool isTitle(platform::TextStyle style) {
    return style == platform::TextStyle::headline || style == platform::TextStyle::title3 ||
           style == platform::TextStyle::largeTitle;
}

bool isBeside(const Rect& frame, const Rect& other) {
    const double middle = frame.y + frame.height / 2;
    return middle >= other.y && middle <= other.bottom();
}

class ItemList {
  public:
    explicit ItemList(const WidgetLayout& layout) : layout_(layout), places_(layout.links.size()) {}

    std::vector<AccessibleItem> take() && {
        for (const LayoutItem& item : layout_.items) {
            if (item.link) {
                addLinks(*item.link + 1);
            }
            const auto* text = std::get_if<TextItem>(&item.content);
            if (text != nullptr && !saysNothing(text->whole)) {
                add(item, text->whole);
            }
        }
        addLinks(layout_.links.size());
        for (AccessibleItem& item : items_) {
            item.name = shortened(item.name.empty() ? item.url : item.name);
            item.description = shortened(item.description);
        }
        std::erase_if(items_, [](const AccessibleItem& item) { return item.name.empty(); });
        return std::move(items_);
    }

  private:
    /// Adds the links before `end` that are not added yet. Links are in drawing order, each before its items.
    void addLinks(std::size_t end) {
        for (; added_ < end; ++added_) {
            const LayoutLink& link = layout_.links[added_];
            places_[added_] = items_.size();
            items_.push_back({.role = AccessibleItem::Role::link, .frame = link.frame, .url = link.url});
        }
    }

    void add(const LayoutItem& item, const std::string& text) {
        if (item.link) {
            addTo(items_[places_[*item.link]], text);
        } else if (isTitle(item.font.style)) {
            items_.push_back({.role = AccessibleItem::Role::heading, .frame = item.frame, .name = text});
        } else if (!items_.empty() && items_.back().role == AccessibleItem::Role::heading &&
                   isBeside(item.frame, items_.back().frame)) {
            addTo(items_.back(), text);
        } else {
            items_.push_back({.role = AccessibleItem::Role::text, .frame = item.frame, .name = text});
        }
    }

    static void addTo(AccessibleItem& item, const std::string& text) {
        if (item.name.empty()) {
            item.name = text;
        } else if (item.description.size() <= maxItemText) {
            item.description += (item.description.empty() ? "" : ", ") + text;
        }
    }

    const WidgetLayout& layout_;
    std::vector<AccessibleItem> items_;
    /// The index in `items_` of each link that was added.
    std::vector<std::size_t> places_;
    std::size_t added_ = 0;
};

} // namespace

std::vector<AccessibleItem> accessibleItems(const WidgetLayout& layout) {
    return ItemList(layout).take();
}

} // namespace host
