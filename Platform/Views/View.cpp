#include "Platform/Views/View.h"

#include "Platform/Views/Node.h"

#include <utility>

namespace platform {
namespace {

View viewOf(NodeContent content) {
    return View(Node{.content = std::move(content)});
}

std::string visible(std::string text) {
    constexpr std::size_t controlLength = 6;
    if (text.size() <= maxTextLength / controlLength) {
        return text;
    }
    std::size_t end = 0;
    for (std::size_t length = 0; end < text.size(); ++end) {
        length += static_cast<unsigned char>(text[end]) < 0x20 ? controlLength : 1;
        if (length > maxTextLength) {
            break;
        }
    }
    const auto isTrail = [&](std::size_t at) { return (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80; };
    while (end > 0 && end < text.size() && isTrail(end)) {
        --end;
    }
    text.resize(end);
    return text;
}

} // namespace

View::View(Node node) : node_(std::make_shared<const Node>(std::move(node))) {}

bool operator==(const View& a, const View& b) {
    return a.node_ == b.node_ || *a.node_ == *b.node_;
}

View View::font(Font font) const {
    Node changed = *node_;
    changed.font = font;
    return View(std::move(changed));
}
View View::foreground(Foreground foreground) const {
    Node changed = *node_;
    changed.foreground = foreground;
    return View(std::move(changed));
}
View View::lineLimit(int lines) const {
    Node changed = *node_;
    if (auto* text = std::get_if<Text>(&changed.content)) {
        text->lineLimit = lines;
    }
    return View(std::move(changed));
}
View View::textAlignment(HorizontalAlignment alignment) const {
    Node changed = *node_;
    if (auto* text = std::get_if<Text>(&changed.content)) {
        text->textAlignment = alignment;
    }
    return View(std::move(changed));
}
View View::padding(Insets insets) const {
    return viewOf(Padding{.child = *this, .insets = insets});
}
View View::frame(FixedSize size) const {
    return viewOf(Frame{.child = *this, .size = size});
}
View View::capsuleBackground(Color fill) const {
    return viewOf(Background{.child = *this, .shape = ShapeKind::capsule, .fill = fill});
}
View View::accentable() const {
    return viewOf(Accentable{.child = *this});
}
View View::link(std::string_view url, std::optional<std::string> id) const {
    return url.size() > maxLinkLength ? *this
                                      : viewOf(Link{.child = *this, .url = std::string(url), .id = std::move(id)});
}

View vStack(VStackOptions options, Views children) {
    return viewOf(VStack{.children = std::move(children), .alignment = options.alignment, .spacing = options.spacing});
}
View hStack(HStackOptions options, Views children) {
    return viewOf(HStack{.children = std::move(children), .alignment = options.alignment, .spacing = options.spacing});
}
View spacer(std::optional<double> minLength) {
    return viewOf(Spacer{.minLength = minLength});
}
View divider() {
    return viewOf(Divider{});
}
View text(std::string text) {
    return viewOf(Text{.text = visible(std::move(text))});
}
View symbol(std::string_view name) {
    return viewOf(Symbol{.symbol = std::string(name)});
}
View label(std::string_view symbolName, std::string text) {
    return viewOf(Label{.symbol = std::string(symbolName), .text = visible(std::move(text))});
}
View image(EncodedData data, View fallback) {
    return viewOf(Image{.data = std::move(data), .fallback = std::move(fallback)});
}
View circle(Color fill) {
    return viewOf(Circle{.fill = fill});
}
View clear() {
    return viewOf(Clear{});
}

} // namespace platform
