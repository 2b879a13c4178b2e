// Owning handles of the drawing libraries' C objects.
#pragma once

#include "Platform/Foundation/Releaser.h"

#include <cairo.h>
#include <memory>
#include <pango/pango.h>

namespace host {

using platform::Releaser;

using CairoHandle = std::unique_ptr<cairo_t, Releaser<cairo_destroy>>;
using RegionHandle = std::unique_ptr<cairo_region_t, Releaser<cairo_region_destroy>>;
using SurfaceHandle = std::unique_ptr<cairo_surface_t, Releaser<cairo_surface_destroy>>;
using FontOptionsHandle = std::unique_ptr<cairo_font_options_t, Releaser<cairo_font_options_destroy>>;
using FontDescriptionHandle = std::unique_ptr<PangoFontDescription, Releaser<pango_font_description_free>>;

/// For any GObject.
template <class Object>
using ObjectHandle = std::unique_ptr<Object, Releaser<g_object_unref>>;

} // namespace host
