#include "Host/Layout/ElementBuilder.h"

#include "Host/Layout/Measures.h"
#include "Platform/Views/Node.h"

#include <utility>
#include <variant>

namespace host {
namespace {

CrossAlignment crossAlignment(platform::HorizontalAlignment alignment) {
    switch (alignment) {
    case platform::HorizontalAlignment::leading:
        return CrossAlignment::start;
    case platform::HorizontalAlignment::center:
        return CrossAlignment::center;
    case platform::HorizontalAlignment::trailing:
        return CrossAlignment::end;
    }
    return CrossAlignment::center;
}

CrossAlignment crossAlignment(platform::VerticalAlignment alignment) {
    switch (alignment) {
    case platform::VerticalAlignment::top:
        return CrossAlignment::start;
    case platform::VerticalAlignment::center:
        return CrossAlignment::center;
    case platform::VerticalAlignment::bottom:
        return CrossAlignment::end;
    case platform::VerticalAlignment::firstTextBaseline:
        return CrossAlignment::firstTextBaseline;
    }
    return CrossAlignment::center;
}

/// Builds the box of a view, with what it inherits.
struct Builder {
    TextMeasurer& texts;
    ImageMeasurer& images;
    InheritedStyle style;
    Axis axis = Axis::vertical;
    int depth = 0;

    ElementPtr build(const platform::View& view) const {
        if (depth == maxNesting) {
            return emptyElement();
        }
        const platform::Node& node = view.node();
        Builder builder = *this;
        builder.depth += 1;
        builder.style.font = node.font.value_or(style.font);
        builder.style.foreground = node.foreground.value_or(style.foreground);
        return std::visit(builder, node.content);
    }

    ElementPtr operator()(const platform::VStack& stack) const { return buildStack(stack, Axis::vertical); }
    ElementPtr operator()(const platform::HStack& stack) const { return buildStack(stack, Axis::horizontal); }

    template <class Stack>
    ElementPtr buildStack(const Stack& stack, Axis along) const {
        Builder builder = *this;
        builder.axis = along;
        std::vector<ElementPtr> children;
        children.reserve(stack.children.size());
        for (const platform::View& child : stack.children) {
            children.push_back(builder.build(child));
        }
        return stackElement({.axis = along, .alignment = crossAlignment(stack.alignment), .spacing = stack.spacing},
                            std::move(children));
    }

    ElementPtr operator()(const platform::Spacer& spacer) const {
        return spacerElement(axis, spacer.minLength.value_or(defaultSpacerLength));
    }
    ElementPtr operator()(const platform::Divider& /*divider*/) const { return dividerElement(axis, style); }

    ElementPtr operator()(const platform::Text& text) const {
        return textElement({.text = text.text,
                            .lineLimit = text.lineLimit,
                            .alignment = text.textAlignment.value_or(platform::HorizontalAlignment::leading)},
                           style, texts);
    }
    ElementPtr operator()(const platform::Symbol& symbol) const { return symbolElement(symbol.symbol, style); }
    ElementPtr operator()(const platform::Label& label) const {
        std::vector<ElementPtr> children;
        children.push_back(labelSymbolElement(label.symbol, style));
        children.push_back(textElement({.text = label.text}, style, texts));
        return stackElement(
            {.axis = Axis::horizontal, .alignment = CrossAlignment::firstTextBaseline, .spacing = labelSpacing},
            std::move(children));
    }
    ElementPtr operator()(const platform::Image& image) const {
        const std::optional<Size> pixels = images.imageSize(image.data);
        if (pixels && pixels->width > 0 && pixels->height > 0) {
            return imageElement(image.data, *pixels, style);
        }
        return image.fallback ? build(*image.fallback) : emptyElement();
    }
    ElementPtr operator()(const platform::Circle& circle) const { return circleElement(circle.fill, style); }
    ElementPtr operator()(const platform::Clear& /*clear*/) const { return clearElement(); }

    ElementPtr operator()(const platform::Padding& padding) const {
        return paddingElement(padding.insets, build(padding.child));
    }
    ElementPtr operator()(const platform::Frame& frame) const { return frameElement(frame.size, build(frame.child)); }
    ElementPtr operator()(const platform::Background& background) const {
        return capsuleElement(background.fill, style, build(background.child));
    }
    ElementPtr operator()(const platform::Link& link) const { return linkElement(link, build(link.child)); }
    ElementPtr operator()(const platform::Accentable& accentable) const {
        Builder builder = *this;
        builder.style.accented = true;
        return builder.build(accentable.child);
    }
};

} // namespace

ElementPtr buildElement(const platform::View& view, TextMeasurer& texts, ImageMeasurer& images) {
    return Builder{.texts = texts, .images = images}.build(view);
}

} // namespace host
