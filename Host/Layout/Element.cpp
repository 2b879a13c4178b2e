#include "Host/Layout/Element.h"

namespace host {

double Element::flexibility(Axis axis, Size offer) {
    const double across = along(other(axis), offer);
    const double largest = along(axis, measure(sized(axis, infinity, across)).size);
    const double smallest = along(axis, measure(sized(axis, 0, across)).size);
    return largest - smallest;
}

} // namespace host
