#include "Host/Layout/Elements.h"
#include "Host/Layout/Measures.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <optional>
#include <utility>

namespace host {
namespace {

/// Returns `a - b`; 0 if both are infinite.
double difference(double a, double b) {
    return a == b ? 0 : a - b;
}

class StackElement final : public Element {
  public:
    StackElement(const StackOptions& options, std::vector<ElementPtr> children);

    Measurement measure(Size proposal) override;
    double flexibility(Axis axis, Size proposal) override;
    void place(Point origin, Size proposal, LayoutBuilder& builder) override;

  private:
    struct Child {
        ElementPtr element;
        /// The gap to the child before.
        double gap = 0;
        /// Whether it is a divider that is as long as the other children are across the stack.
        bool stretched = false;
    };
    struct Part {
        Size proposal;
        Measurement measurement;
        /// Its position along the stack, and across it.
        double start = 0;
        double side = 0;
    };
    struct Arrangement {
        std::vector<Part> parts;
        Measurement measurement;
    };

    Arrangement arrange(Size proposal);
    /// Divides the proposal among all children; what is left among those in `order`.
    void distribute(std::vector<Part>& parts, Size proposal);
    void distribute(const std::vector<std::size_t>& order, double& left, double across, std::vector<Part>& parts);
    std::vector<std::size_t> contentsByFlexibility(Size proposal);
    /// Aligns the parts across the stack. Returns its size there.
    double align(std::vector<Part>& parts);
    /// Returns the distance from a part's near edge across the stack to the line of the alignment.
    double guide(const Measurement& measurement) const;

    Axis axis_;
    CrossAlignment alignment_;
    std::vector<Child> children_;
    std::vector<std::size_t> contents_;
    /// Sorted by their minimum lengths, the largest first, so that the others divide what remains equally.
    std::vector<std::size_t> spacers_;
    double gaps_ = 0;
    double minOfSpacers_ = 0;
    /// Each stack around this one measures it again; without this cache, deep trees would take exponential time.
    std::vector<std::pair<Size, Measurement>> measurements_;
};

StackElement::StackElement(const StackOptions& options, std::vector<ElementPtr> children)
    : axis_(options.axis), alignment_(options.alignment) {
    std::vector<double> minLengths(children.size());
    std::vector<std::size_t> dividers;
    for (std::size_t i = 0; i < children.size(); ++i) {
        const Role role = children[i]->role();
        if (role == Role::spacer) {
            minLengths[i] = along(axis_, children[i]->measure({}).size);
            minOfSpacers_ += minLengths[i];
            spacers_.push_back(i);
        } else {
            contents_.push_back(i);
        }
        if (role == Role::divider) {
            dividers.push_back(i);
        }
        double gap = 0;
        if (i > 0) {
            const bool besideSpacer = role == Role::spacer || children_[i - 1].element->role() == Role::spacer;
            gap = options.spacing.value_or(besideSpacer ? 0 : defaultSpacing);
        }
        gaps_ += gap;
        children_.push_back({.element = std::move(children[i]), .gap = gap});
    }
    std::ranges::stable_sort(spacers_, std::greater{}, [&](std::size_t i) { return minLengths[i]; });
    if (axis_ == Axis::horizontal && dividers.size() < contents_.size()) {
        for (const std::size_t i : dividers) {
            children_[i].stretched = true;
        }
    }
}

Measurement StackElement::measure(Size proposal) {
    const auto known =
        std::find_if(measurements_.rbegin(), measurements_.rend(), [&](const auto& a) { return a.first == proposal; });
    if (known != measurements_.rend()) {
        return known->second;
    }
    const Measurement measurement = arrange(proposal).measurement;
    measurements_.emplace_back(proposal, measurement);
    return measurement;
}

double StackElement::flexibility(Axis axis, Size proposal) {
    if (axis != axis_) {
        return Element::flexibility(axis, proposal);
    }
    double sum = spacers_.empty() ? 0 : infinity;
    for (const std::size_t i : contents_) {
        sum += children_[i].element->flexibility(axis, proposal);
    }
    return sum;
}

void StackElement::place(Point origin, Size proposal, LayoutBuilder& builder) {
    const Arrangement arrangement = arrange(proposal);
    for (std::size_t i = 0; i < children_.size(); ++i) {
        const Part& part = arrangement.parts[i];
        const Size offset = sized(axis_, part.start, part.side);
        children_[i].element->place({origin.x + offset.width, origin.y + offset.height}, part.proposal, builder);
    }
}

StackElement::Arrangement StackElement::arrange(Size proposal) {
    std::vector<Part> parts(children_.size());
    distribute(parts, proposal);
    const double across = align(parts);
    std::optional<double> baseline;
    double end = 0;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        Part& part = parts[i];
        part.start = end + children_[i].gap;
        end = part.start + along(axis_, part.measurement.size);
        if (part.measurement.baseline) {
            const double top = axis_ == Axis::vertical ? part.start : part.side;
            baseline = std::min(baseline.value_or(infinity), top + *part.measurement.baseline);
        }
    }
    return {.parts = std::move(parts),
            .measurement = {.size = sized(axis_, std::max(0.0, end), across), .baseline = baseline}};
}

void StackElement::distribute(std::vector<Part>& parts, Size proposal) {
    const double across = along(other(axis_), proposal);
    double left = along(axis_, proposal) - gaps_ - minOfSpacers_;
    // With no room, or infinite room, the order does not matter.
    const bool shared = left > 0 && std::isfinite(left) && contents_.size() > 1;
    distribute(shared ? contentsByFlexibility(proposal) : contents_, left, across, parts);
    left += minOfSpacers_;
    distribute(spacers_, left, across, parts);
}

void StackElement::distribute(const std::vector<std::size_t>& order, double& left, double across,
                              std::vector<Part>& parts) {
    auto waiting = static_cast<double>(order.size());
    for (const std::size_t i : order) {
        Part& part = parts[i];
        part.proposal = sized(axis_, std::max(0.0, left / waiting), across);
        part.measurement = children_[i].element->measure(part.proposal);
        if (std::isfinite(left)) {
            left -= along(axis_, part.measurement.size);
        }
        waiting -= 1;
    }
}

std::vector<std::size_t> StackElement::contentsByFlexibility(Size proposal) {
    std::vector<double> flexibility(children_.size());
    for (const std::size_t i : contents_) {
        flexibility[i] = children_[i].element->flexibility(axis_, proposal);
    }
    std::vector<std::size_t> order = contents_;
    std::ranges::stable_sort(order, {}, [&](std::size_t i) { return flexibility[i]; });
    return order;
}

double StackElement::align(std::vector<Part>& parts) {
    const Axis crossAxis = other(axis_);
    double before = 0;
    double after = 0;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (!children_[i].stretched) {
            const double line = guide(parts[i].measurement);
            before = std::max(before, line);
            after = std::max(after, difference(along(crossAxis, parts[i].measurement.size), line));
        }
    }
    const double across = before + after;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        Part& part = parts[i];
        if (children_[i].stretched) {
            part.proposal = sized(axis_, along(axis_, part.proposal), across);
            part.measurement = children_[i].element->measure(part.proposal);
        } else {
            part.side = difference(before, guide(part.measurement));
        }
    }
    return across;
}

double StackElement::guide(const Measurement& measurement) const {
    const double length = along(other(axis_), measurement.size);
    switch (alignment_) {
    case CrossAlignment::start:
        return 0;
    case CrossAlignment::center:
        return length / 2;
    case CrossAlignment::end:
        return length;
    case CrossAlignment::firstTextBaseline:
        return measurement.baseline.value_or(length);
    }
    return 0;
}

} // namespace

ElementPtr stackElement(const StackOptions& options, std::vector<ElementPtr> children) {
    return std::make_unique<StackElement>(options, std::move(children));
}

} // namespace host
