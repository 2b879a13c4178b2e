#include "Host/Layout/Element.h"

namespace host {

double Element::flexibility(Axis axis, Size proposal) {
    const double across = along(other(axis), proposal);
    const double largest = along(axis, measure(sized(axis, infinity, across)).size);
    const double smallest = along(axis, measure(sized(axis, 0, across)).size);
    return largest - smallest;
}

} // namespace host
