// The kinds of boxes, and how each measures a proposal.
//
// Arguments that are references must outlive the element.
#pragma once

#include "Host/Layout/Element.h"
#include "Host/Layout/TextMeasurer.h"
#include "Platform/Views/Node.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host {

using ElementPtr = std::unique_ptr<Element>;

/// Takes no room, draws nothing.
ElementPtr emptyElement();

/// Takes the proposal along `axis`, at least `minLength`, and nothing across it.
ElementPtr spacerElement(Axis axis, double minLength);

/// A line across a stack along `axis`: 1 point thick, as long as proposed.
ElementPtr dividerElement(Axis axis, const InheritedStyle& style);

/// Takes the proposal, draws nothing.
ElementPtr clearElement();

/// Takes the proposal; the circle is in its middle, as large as fits.
ElementPtr circleElement(platform::Color fill, const InheritedStyle& style);

/// A square of the font's size for any proposal. The symbol of a label stands on the label's baseline.
ElementPtr symbolElement(const std::string& symbol, const InheritedStyle& style);
ElementPtr labelSymbolElement(const std::string& symbol, const InheritedStyle& style);

/// The largest size inside the proposal with the aspect ratio of `pixels`. Requires positive, finite `pixels`.
ElementPtr imageElement(const platform::EncodedData& data, Size pixels, const InheritedStyle& style);

struct TextOptions {
    std::string_view text;
    std::optional<int> lineLimit;
    platform::HorizontalAlignment alignment = platform::HorizontalAlignment::leading;
};

/// As wide as its longest line. The number of lines is limited by the text's own limit and by the whole lines that fit
/// the proposed height, but there is at least one. A text that is cut ends in an ellipsis. It is at least an ellipsis
/// wide (or whole, if that is narrower), even if less is proposed.
ElementPtr textElement(const TextOptions& options, const InheritedStyle& style, TextMeasurer& texts);

/// The alignment of children across a stack. `firstTextBaseline` is for horizontal stacks; the lower edge of a child
/// without text is on the baseline.
enum class CrossAlignment { start, center, end, firstTextBaseline };

struct StackOptions {
    Axis axis = Axis::vertical;
    CrossAlignment alignment = CrossAlignment::center;
    /// Between all neighbours. The default is `defaultSpacing`, but 0 beside a spacer.
    std::optional<double> spacing;
};

/// Children in a row. The proposal, less the gaps and the minimum lengths of spacers, is divided among the other
/// children: in order of their flexibility, the lowest first, each is proposed an equal share of what is left. Spacers
/// divide the remainder. Across its axis a stack is as large as its aligned children.
///
/// A divider in a horizontal stack would make the stack as high as its proposal. So it is proposed the height of the
/// other children, unless they are all spacers, and extends from their upper to their lower edge.
ElementPtr stackElement(const StackOptions& options, std::vector<ElementPtr> children);

/// Adds the insets to the child's size, and proposes that much less to it.
ElementPtr paddingElement(platform::Insets insets, ElementPtr child);

/// Has the lengths that `size` fixes, and those of the child otherwise; centres the child.
ElementPtr frameElement(platform::FixedSize size, ElementPtr child);

/// A capsule as large as the child, drawn before it.
ElementPtr capsuleElement(platform::Color fill, const InheritedStyle& style, ElementPtr child);

/// As large as the child; adds its frame as a link.
ElementPtr linkElement(const platform::Link& link, ElementPtr child);

} // namespace host
