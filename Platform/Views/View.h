// A piece of a widget's picture: an immutable value that describes what to draw, not how.
//
// A `View` is made by the function of its kind (`vStack`, `text`, `symbol`, …, one small header each) and changed by
// the modifiers below, each of which returns a new view. Copying is cheap, trees share their parts. Views are equal
// when they describe the same. Lengths are points. Any thread.
//
//     vStack({.spacing = 8}, {symbol("star").font(largeTitle), text("No Favorites").foreground(secondary)})
//
// A host reads the description through Node.h.
#pragma once

#include "Platform/Views/Style.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

struct Node;
class View;
using Views = std::vector<View>;

/// Longer texts are cut at a character's boundary, since a widget shows no more. A control character counts as the six
/// bytes in which it is written.
inline constexpr std::size_t maxTextLength = std::size_t{16} << 10U;
/// A view is not linked to a longer address: as many as an answer has must fit into what a host takes.
inline constexpr std::size_t maxLinkLength = std::size_t{16} << 10U;

struct Insets {
    double top = 0;
    double bottom = 0;
    double leading = 0;
    double trailing = 0;
    friend bool operator==(const Insets&, const Insets&) = default;
};

struct FixedSize {
    std::optional<double> width;
    std::optional<double> height;
    friend bool operator==(const FixedSize&, const FixedSize&) = default;
};

class View {
  public:
    explicit View(Node node);

    const Node& node() const { return *node_; }

    /// Set the font, or the foreground, of everything in this view that sets none of its own.
    View font(Font font) const;
    View foreground(Foreground foreground) const;

    /// A text's maximum number of lines, and how its lines stand inside its own bounds. No effect on other kinds.
    View lineLimit(int lines) const;
    View textAlignment(HorizontalAlignment alignment) const;

    View padding(Insets insets) const;
    /// Offers and reports the given lengths, the view centred in them.
    View frame(FixedSize size) const;
    View capsuleBackground(Color fill) const;
    /// A host's accent group, for modes that are not full colour.
    View accentable() const;
    /// Opens `url` when clicked, if it is no longer than `maxLinkLength`. `id` names the item that the view stands for,
    /// where it stands for one.
    View link(std::string_view url, std::optional<std::string> id = std::nullopt) const;

    friend bool operator==(const View& a, const View& b);

  private:
    std::shared_ptr<const Node> node_;
};

} // namespace platform
