// A part of a widget's picture: an immutable value that describes what to draw, not how.
//
// Make a `View` with the function of its kind (`vStack`, `text`, `symbol`, …, one small header each). The modifiers
// below return a new view. Copying is cheap, since trees share their parts. Views are equal if their descriptions are.
// Lengths are points. Any thread.
//
//     vStack({.spacing = 8}, {symbol("star").font(largeTitle), text("No Favorites").foreground(secondary)})
//
// A host reads the description by Node.h.
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

/// Longer texts are cut at a character's boundary. A control character counts as the six bytes in which it is written.
inline constexpr std::size_t maxTextLength = std::size_t{16} << 10U;
/// Views do not link to longer addresses, so that a response with many links is no longer than a host takes.
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

    /// Set a text's maximum number of lines, and the alignment of its lines. No effect on other kinds.
    View lineLimit(int lines) const;
    View textAlignment(HorizontalAlignment alignment) const;

    View padding(Insets insets) const;
    /// Proposes and returns the given lengths, with the view centred in them.
    View frame(FixedSize size) const;
    View capsuleBackground(Color fill) const;
    /// Puts the view into the host's accent group, for modes other than full colour.
    View accentable() const;
    /// Opens `url` when clicked, unless it is longer than `maxLinkLength`. `id` identifies the view's item.
    View link(std::string_view url, std::optional<std::string> id = std::nullopt) const;

    friend bool operator==(const View& a, const View& b);

  private:
    std::shared_ptr<const Node> node_;
};

} // namespace platform
