#include "Host/Layout/Elements.h"
#include "Host/Layout/Measures.h"

#include <algorithm>

namespace host {
namespace {

class EmptyElement final : public Element {
  public:
    Measurement measure(Size /*proposal*/) override { return {}; }
    void place(Point /*origin*/, Size /*proposal*/, LayoutBuilder& /*builder*/) override {}
};

class SpacerElement final : public Element {
  public:
    SpacerElement(Axis axis, double minLength) : axis_(axis), minLength_(minLength) {}

    Measurement measure(Size proposal) override {
        return {.size = sized(axis_, std::max(minLength_, along(axis_, proposal)), 0)};
    }
    Role role() const override { return Role::spacer; }
    void place(Point /*origin*/, Size /*proposal*/, LayoutBuilder& /*builder*/) override {}

  private:
    Axis axis_;
    double minLength_;
};

class DividerElement final : public Element {
  public:
    DividerElement(Axis axis, InheritedStyle style) : axis_(axis), style_(style) {}

    Measurement measure(Size proposal) override {
        return {.size = sized(axis_, dividerThickness, along(other(axis_), proposal))};
    }
    Role role() const override { return Role::divider; }
    void place(Point origin, Size proposal, LayoutBuilder& builder) override {
        builder.add(DividerItem{}, origin, measure(proposal).size, style_);
    }

  private:
    Axis axis_;
    InheritedStyle style_;
};

class ClearElement final : public Element {
  public:
    Measurement measure(Size proposal) override { return {.size = proposal}; }
    void place(Point /*origin*/, Size /*proposal*/, LayoutBuilder& /*builder*/) override {}
};

class CircleElement final : public Element {
  public:
    CircleElement(platform::Color fill, InheritedStyle style) : fill_(fill), style_(style) {}

    Measurement measure(Size proposal) override { return {.size = proposal}; }
    void place(Point origin, Size proposal, LayoutBuilder& builder) override {
        const double diameter = std::min(proposal.width, proposal.height);
        const Point corner{origin.x + (proposal.width - diameter) / 2, origin.y + (proposal.height - diameter) / 2};
        builder.add(CircleItem{.fill = fill_}, corner, {diameter, diameter}, style_);
    }

  private:
    platform::Color fill_;
    InheritedStyle style_;
};

class SymbolElement final : public Element {
  public:
    /// `descent` is the part of its size below its baseline; nothing if it has no baseline.
    SymbolElement(const std::string& symbol, InheritedStyle style, std::optional<double> descent)
        : symbol_(symbol), style_(style), length_(textMeasures(style.font).size) {
        if (descent) {
            baseline_ = length_ * (1 - *descent);
        }
    }

    Measurement measure(Size /*proposal*/) override { return {.size = {length_, length_}, .baseline = baseline_}; }
    void place(Point origin, Size proposal, LayoutBuilder& builder) override {
        builder.add(SymbolItem{.symbol = symbol_}, origin, measure(proposal).size, style_);
    }

  private:
    const std::string& symbol_;
    InheritedStyle style_;
    double length_;
    std::optional<double> baseline_;
};

class ImageElement final : public Element {
  public:
    ImageElement(const platform::EncodedData& data, Size pixels, InheritedStyle style)
        : data_(data), ratio_(pixels.width / pixels.height), style_(style) {}

    Measurement measure(Size proposal) override {
        return {.size = {std::min(proposal.width, proposal.height * ratio_),
                         std::min(proposal.height, proposal.width / ratio_)}};
    }
    void place(Point origin, Size proposal, LayoutBuilder& builder) override {
        builder.add(ImageItem{.data = data_}, origin, measure(proposal).size, style_);
    }

  private:
    const platform::EncodedData& data_;
    double ratio_;
    InheritedStyle style_;
};

} // namespace

ElementPtr emptyElement() {
    return std::make_unique<EmptyElement>();
}
ElementPtr spacerElement(Axis axis, double minLength) {
    return std::make_unique<SpacerElement>(axis, minLength);
}
ElementPtr dividerElement(Axis axis, const InheritedStyle& style) {
    return std::make_unique<DividerElement>(axis, style);
}
ElementPtr clearElement() {
    return std::make_unique<ClearElement>();
}
ElementPtr circleElement(platform::Color fill, const InheritedStyle& style) {
    return std::make_unique<CircleElement>(fill, style);
}
ElementPtr symbolElement(const std::string& symbol, const InheritedStyle& style) {
    return std::make_unique<SymbolElement>(symbol, style, std::nullopt);
}
ElementPtr labelSymbolElement(const std::string& symbol, const InheritedStyle& style) {
    return std::make_unique<SymbolElement>(symbol, style, labelSymbolDescent);
}
ElementPtr imageElement(const platform::EncodedData& data, Size pixels, const InheritedStyle& style) {
    return std::make_unique<ImageElement>(data, pixels, style);
}

} // namespace host
