#include "Host/Layout/Elements.h"
#include "Host/Layout/Measures.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

namespace host {
namespace {

/// Sums of the same lengths in another order must not cut a text that fits.
constexpr double tolerance = 1e-6;
constexpr int unlimited = std::numeric_limits<int>::max();

double longestLine(const MeasuredText& text) {
    double longest = 0;
    for (const TextLine& line : text.lines) {
        longest = std::max(longest, line.width);
    }
    return longest;
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
        // The smallest is one line, whatever it says: no need to have the text cut.
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
        double longest = 0;
        MeasuredText text;
    };

    Size sizeOf(const MeasuredText& text) const {
        return {longestLine(text), static_cast<double>(text.lines.size()) * lineHeight_};
    }

    int lineLimit(double height) const {
        const double wholeLines = std::floor((height + tolerance) / lineHeight_);
        return static_cast<int>(
            std::clamp(wholeLines, 1.0, std::max(1.0, static_cast<double>(options_.lineLimit.value_or(unlimited)))));
    }

    // The references that these return are valid until one of them is called again.

    const MeasuredText& fitted(Size proposal) {
        // A text that is narrower than its ellipsis is not cut.
        const double least = texts_.ellipsisWidth(style_.font);
        return proposal.width + tolerance < least ? shaped(least, 1)
                                                  : shaped(proposal.width, lineLimit(proposal.height));
    }

    const MeasuredText& shaped(double width, int limit) {
        const auto known = std::find_if(shaped_.begin(), shaped_.end(), [&](const Shaped& candidate) {
            // Lines that were broken at a greater width and fit this one are the ones that it would be broken into.
            return (candidate.longest <= width + tolerance || candidate.width == width) &&
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
        const double longest = longestLine(text);
        return shaped_.emplace_back(Shaped{width, limit, longest, std::move(text)}).text;
    }

    /// Surely not cut.
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
