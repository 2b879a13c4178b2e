#include "Host/Layout/Elements.h"
#include "Host/Layout/Measures.h"

#include <algorithm>

namespace host {
namespace {

class EmptyElement final : public Element {
  public:
    Answer measure(Size /*offer*/) override { return {}; }
    void place(Point /*origin*/, Size /*offer*/, Placement& /*placement*/) override {}
};

class SpacerElement final : public Element {
  public:
    SpacerElement(Axis axis, double minLength) : axis_(axis), minLength_(minLength) {}

    Answer measure(Size offer) override { return {.size = sized(axis_, std::max(minLength_, along(axis_, offer)), 0)}; }
    Role role() const override { return Role::spacer; }
    void place(Point /*origin*/, Size /*offer*/, Placement& /*placement*/) override {}

  private:
    Axis axis_;
    double minLength_;
};

class DividerElement final : public Element {
  public:
    DividerElement(Axis axis, Look look) : axis_(axis), look_(look) {}

    Answer measure(Size offer) override { return {.size = sized(axis_, dividerThickness, along(other(axis_), offer))}; }
    Role role() const override { return Role::divider; }
    void place(Point origin, Size offer, Placement& placement) override {
        placement.add(DividerItem{}, origin, measure(offer).size, look_);
    }

  private:
    Axis axis_;
    Look look_;
};

class ClearElement final : public Element {
  public:
    Answer measure(Size offer) override { return {.size = offer}; }
    void place(Point /*origin*/, Size /*offer*/, Placement& /*placement*/) override {}
};

class CircleElement final : public Element {
  public:
    CircleElement(platform::Color fill, Look look) : fill_(fill), look_(look) {}

    Answer measure(Size offer) override { return {.size = offer}; }
    void place(Point origin, Size offer, Placement& placement) override {
        const double diameter = std::min(offer.width, offer.height);
        const Point corner{origin.x + (offer.width - diameter) / 2, origin.y + (offer.height - diameter) / 2};
        placement.add(CircleItem{.fill = fill_}, corner, {diameter, diameter}, look_);
    }

  private:
    platform::Color fill_;
    Look look_;
};

class SymbolElement final : public Element {
  public:
    /// `descent` is the part of its size below a baseline, where it has one.
    SymbolElement(const std::string& symbol, Look look, std::optional<double> descent)
        : symbol_(symbol), look_(look), length_(textMeasures(look.font).size) {
        if (descent) {
            baseline_ = length_ * (1 - *descent);
        }
    }

    Answer measure(Size /*offer*/) override { return {.size = {length_, length_}, .baseline = baseline_}; }
    void place(Point origin, Size offer, Placement& placement) override {
        placement.add(SymbolItem{.symbol = symbol_}, origin, measure(offer).size, look_);
    }

  private:
    const std::string& symbol_;
    Look look_;
    double length_;
    std::optional<double> baseline_;
};

class ImageElement final : public Element {
  public:
    ImageElement(const platform::EncodedData& data, Size pixels, Look look)
        : data_(data), ratio_(pixels.width / pixels.height), look_(look) {}

    Answer measure(Size offer) override {
        return {.size = {std::min(offer.width, offer.height * ratio_), std::min(offer.height, offer.width / ratio_)}};
    }
    void place(Point origin, Size offer, Placement& placement) override {
        placement.add(ImageItem{.data = data_}, origin, measure(offer).size, look_);
    }

  private:
    const platform::EncodedData& data_;
    double ratio_;
    Look look_;
};

} // namespace

ElementPtr emptyElement() {
    return std::make_unique<EmptyElement>();
}
ElementPtr spacerElement(Axis axis, double minLength) {
    return std::make_unique<SpacerElement>(axis, minLength);
}
ElementPtr dividerElement(Axis axis, const Look& look) {
    return std::make_unique<DividerElement>(axis, look);
}
ElementPtr clearElement() {
    return std::make_unique<ClearElement>();
}
ElementPtr circleElement(platform::Color fill, const Look& look) {
    return std::make_unique<CircleElement>(fill, look);
}
ElementPtr symbolElement(const std::string& symbol, const Look& look) {
    return std::make_unique<SymbolElement>(symbol, look, std::nullopt);
}
ElementPtr labelSymbolElement(const std::string& symbol, const Look& look) {
    return std::make_unique<SymbolElement>(symbol, look, labelSymbolDescent);
}
ElementPtr imageElement(const platform::EncodedData& data, Size pixels, const Look& look) {
    return std::make_unique<ImageElement>(data, pixels, look);
}

} // namespace host
