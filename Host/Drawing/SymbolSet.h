// The symbols, ready to be drawn: outlines that are parsed once, and pictures of them in the sizes that are in use.
//
// A name without artwork is drawn as a dashed square. One thread at a time.
#pragma once

#include "Host/Drawing/Handles.h"
#include "Host/Drawing/LruCache.h"
#include "Host/Drawing/PathData.h"

#include <string_view>
#include <unordered_map>

namespace host {

class SymbolSet {
  public:
    SymbolSet();

    /// Strokes the symbol in the current source, `size` units of `cairo` square with its upper left corner at the
    /// origin.
    void stroke(cairo_t* cairo, std::string_view name, double size);

    /// The symbol's coverage, alpha only, `size` pixels square and `maskMargin` more on each side. Good until the next
    /// call.
    cairo_surface_t* mask(std::string_view name, int size);
    static constexpr int maskMargin = 1;

  private:
    struct Artwork {
        std::string_view data;
        Path path;
    };
    /// The artwork's name stands for it: the view that the table has, so that it never dangles.
    struct MaskKey {
        std::string_view name;
        int size;
        friend bool operator==(const MaskKey&, const MaskKey&) = default;
    };
    struct MaskHash {
        std::size_t operator()(const MaskKey& key) const {
            return std::hash<std::string_view>()(key.name) + static_cast<std::size_t>(key.size);
        }
    };
    using Table = std::unordered_map<std::string_view, Artwork>;

    Table::value_type& artwork(std::string_view name);

    Table artwork_;
    LruCache<MaskKey, SurfaceHandle, MaskKey, MaskHash> masks_;
};

} // namespace host
