// The kinds of boxes, each with what it measures for a proposal.
//
// Parameters that are references to parts of a view, and the measurer, must outlive the element.
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

/// Takes what is proposed along `axis`, at least `minLength`, and nothing across it.
ElementPtr spacerElement(Axis axis, double minLength);

/// A line across a stack along `axis`: 1 point thick, as long as is proposed.
ElementPtr dividerElement(Axis axis, const InheritedStyle& style);

/// Takes what is proposed, draws nothing.
ElementPtr clearElement();

/// Takes what is proposed; the circle stands in its middle, as large as fits.
ElementPtr circleElement(platform::Color fill, const InheritedStyle& style);

/// A square of the font's size, whatever is proposed; that of a label stands on the label's baseline.
ElementPtr symbolElement(const std::string& symbol, const InheritedStyle& style);
ElementPtr labelSymbolElement(const std::string& symbol, const InheritedStyle& style);

/// The largest size of the ratio of `pixels` inside the proposal. `pixels` has positive, finite lengths.
ElementPtr imageElement(const platform::EncodedData& data, Size pixels, const InheritedStyle& style);

struct TextOptions {
    std::string_view text;
    std::optional<int> lineLimit;
    platform::HorizontalAlignment alignment = platform::HorizontalAlignment::leading;
};

/// As wide as the longest of its lines. Their number is limited by the text's own limit and by the whole lines that fit
/// the height proposed, but there is at least one; a text that is cut ends in an ellipsis. The smallest that a text
/// gets is an ellipsis alone (or itself, if that is narrower), even if less is proposed.
ElementPtr textElement(const TextOptions& options, const InheritedStyle& style, TextMeasurer& texts);

/// Where children stand across a stack. The first text baseline is for stacks along the horizontal axis; a child
/// without text stands on the baseline with its lower edge.
enum class CrossAlignment { start, center, end, firstTextBaseline };

struct StackOptions {
    Axis axis = Axis::vertical;
    CrossAlignment alignment = CrossAlignment::center;
    /// Between all neighbours; left out, the default spacing, which is not put beside a spacer.
    std::optional<double> spacing;
};

/// Children in a row. What is proposed, less the gaps and the least that spacers take, is shared by the other children:
/// the least flexible first (in their order where they are equally so), each is proposed an equal share of what those
/// before it left. Spacers share the remainder. Across its axis a stack is as large as its children, aligned.
///
/// A divider in a horizontal stack would make it as high as all the room there is. It is proposed the height of the
/// other children instead (where there are any but spacers) and runs from their upper to their lower edge whatever the
/// alignment.
ElementPtr stackElement(const StackOptions& options, std::vector<ElementPtr> children);

/// Proposes less to the child, takes more.
ElementPtr paddingElement(platform::Insets insets, ElementPtr child);

/// Proposes and takes its own lengths, passes the others on; the child is centred in it.
ElementPtr frameElement(platform::FixedSize size, ElementPtr child);

/// A capsule as large as the child, drawn before it.
ElementPtr capsuleElement(platform::Color fill, const InheritedStyle& style, ElementPtr child);

/// Just as the child; notes the frame that can be clicked.
ElementPtr linkElement(const platform::Link& link, ElementPtr child);

} // namespace host
