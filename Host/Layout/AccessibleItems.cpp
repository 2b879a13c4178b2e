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

class PartList {
  public:
    explicit PartList(const WidgetLayout& layout) : layout_(layout), places_(layout.links.size()) {}

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
        for (AccessibleItem& part : parts_) {
            part.name = shortened(part.name.empty() ? part.url : part.name);
            part.description = shortened(part.description);
        }
        std::erase_if(parts_, [](const AccessibleItem& part) { return part.name.empty(); });
        return std::move(parts_);
    }

  private:
    /// Links stand in the order in which they begin, as do items: an item's link, and all before it, have begun.
    void addLinks(std::size_t end) {
        for (; begun_ < end; ++begun_) {
            const LayoutLink& link = layout_.links[begun_];
            places_[begun_] = parts_.size();
            parts_.push_back({.role = AccessibleItem::Role::link, .frame = link.frame, .url = link.url});
        }
    }

    void add(const LayoutItem& item, const std::string& text) {
        if (item.link) {
            addTo(parts_[places_[*item.link]], text);
        } else if (isTitle(item.font.style)) {
            parts_.push_back({.role = AccessibleItem::Role::heading, .frame = item.frame, .name = text});
        } else if (!parts_.empty() && parts_.back().role == AccessibleItem::Role::heading &&
                   isBeside(item.frame, parts_.back().frame)) {
            addTo(parts_.back(), text);
        } else {
            parts_.push_back({.role = AccessibleItem::Role::text, .frame = item.frame, .name = text});
        }
    }

    static void addTo(AccessibleItem& part, const std::string& text) {
        if (part.name.empty()) {
            part.name = text;
        } else if (part.description.size() <= maxItemText) {
            part.description += (part.description.empty() ? "" : ", ") + text;
        }
    }

    const WidgetLayout& layout_;
    std::vector<AccessibleItem> parts_;
    /// Where among the parts each link is that has begun.
    std::vector<std::size_t> places_;
    std::size_t begun_ = 0;
};

} // namespace

std::vector<AccessibleItem> accessibleItems(const WidgetLayout& layout) {
    return PartList(layout).take();
}

} // namespace host
