#include "Host/Layout/Elements.h"
#include "Host/Layout/Measures.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

namespace host {
namespace {

/// For the rounding of sums, which must not cut a text that fits.
constexpr double tolerance = 1e-6;
constexpr int unlimited = std::numeric_limits<int>::max();

double maxWidth(const MeasuredText& text) {
    double widest = 0;
    for (const TextLine& line : text.lines) {
        widest = std::max(widest, line.width);
    }
    return widest;
}

class TextElement final : public Element {
  public:
    TextElement(const TextOptions& options, InheritedStyle style, TextMeasurer& texts)
        : options_(options), style_(style), texts_(texts), lineHeight_(textMeasures(style.font).lineHeight) {}

    Measurement measure(Size proposal) override {
        const MeasuredText& text = fitted(proposal);
        return {.size = sizeOf(text), .baseline = text.baseline};
    }

    double flexibility(Axis axis, Size proposal) override {
        if (axis == Axis::horizontal) {
            return Element::flexibility(axis, proposal);
        }
        // The smallest height is one line; measuring it would cut the text.
        return sizeOf(fitted({proposal.width, infinity})).height - lineHeight_;
    }

    void place(Point origin, Size proposal, LayoutBuilder& builder) override {
        const MeasuredText& text = fitted(proposal);
        builder.add(TextItem{.text = text,
                             .lineHeight = lineHeight_,
                             .alignment = options_.alignment,
                             .whole = std::string(options_.text)},
                    origin, sizeOf(text), style_);
    }

  private:
    struct Shaped {
        double width = 0;
        int lineLimit = unlimited;
        double widest = 0;
        MeasuredText text;
    };

    Size sizeOf(const MeasuredText& text) const {
        return {maxWidth(text), static_cast<double>(text.lines.size()) * lineHeight_};
    }

    int lineLimit(double height) const {
        const double wholeLines = std::floor((height + tolerance) / lineHeight_);
        return static_cast<int>(
            std::clamp(wholeLines, 1.0, std::max(1.0, static_cast<double>(options_.lineLimit.value_or(unlimited)))));
    }

    // The returned references are valid until the next call of one of these.

    const MeasuredText& fitted(Size proposal) {
        // A text that is narrower than its ellipsis is not cut.
        const double minWidth = texts_.ellipsisWidth(style_.font);
        return proposal.width + tolerance < minWidth ? shaped(minWidth, 1)
                                                     : shaped(proposal.width, lineLimit(proposal.height));
    }

    const MeasuredText& shaped(double width, int limit) {
        const auto known = std::find_if(shaped_.begin(), shaped_.end(), [&](const Shaped& candidate) {
            // Lines that were broken at a larger width and fit this one are the same at this one.
            return (candidate.widest <= width + tolerance || candidate.width == width) &&
                   width <= candidate.width + tolerance &&
                   (candidate.lineLimit == limit ||
                    (isWhole(candidate) && candidate.text.lines.size() <= static_cast<std::size_t>(limit)));
        });
        if (known != shaped_.end()) {
            return known->text;
        }
        MeasuredText text = texts_.measure({.text = options_.text,
                                            .font = style_.font,
                                            .width = std::isfinite(width) ? std::optional(width) : std::nullopt,
                                            .lineLimit = limit == unlimited ? std::nullopt : std::optional(limit)});
        const double widest = maxWidth(text);
        return shaped_.emplace_back(Shaped{width, limit, widest, std::move(text)}).text;
    }

    /// Whether the text is certainly not cut.
    bool isWhole(const Shaped& shaped) const {
        const auto& lines = shaped.text.lines;
        return lines.size() < static_cast<std::size_t>(shaped.lineLimit) || lines.front().text == options_.text;
    }

    TextOptions options_;
    InheritedStyle style_;
    TextMeasurer& texts_;
    double lineHeight_;
    std::vector<Shaped> shaped_;
};

} // namespace

ElementPtr textElement(const TextOptions& options, const InheritedStyle& style, TextMeasurer& texts) {
    return std::make_unique<TextElement>(options, style, texts);
}

} // namespace host
