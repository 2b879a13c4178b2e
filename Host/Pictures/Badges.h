// TEMPORARY
#pragma once
#include "Host/Pictures/FaceMaker.h"
#include "Platform/Views/Text.h"
#include "Platform/Views/Stack.h"
namespace host {
enum class Corner { topTrailing, bottomTrailing };
inline platform::View asOfBadge(const std::string& t) { return platform::text(t); }
inline platform::View failureMark() { return platform::text("!"); }
inline platform::View messageView(const std::string& a, const std::string& b, const std::optional<std::string>& c) {
    platform::Views v{platform::text(a), platform::text(b)};
    if (c) v.push_back(platform::text(*c).link("x:undo"));
    return platform::vStack({.spacing = 8}, std::move(v));
}
inline Rect drawBadge(Face&, const platform::View&, Corner, const FaceStyle&, Renderer&) { return {}; }
}
