#include "Host/Layout/Elements.h"

#include <algorithm>
#include <utility>

namespace host {
namespace {

/// Forwards everything to its child.
class WrapperElement : public Element {
  public:
    explicit WrapperElement(ElementPtr child) : child_(std::move(child)) {}

    Measurement measure(Size proposal) override { return child_->measure(proposal); }
    double flexibility(Axis axis, Size proposal) override { return child_->flexibility(axis, proposal); }
    Role role() const override { return child_->role(); }

  protected:
    Element& child() const { return *child_; }

  private:
    ElementPtr child_;
};

/// A wrapper with a size of its own, so that a spacer in it is not one of the stack around it.
Role roleInRoom(Role role) {
    return role == Role::spacer ? Role::content : role;
}

class PaddingElement final : public WrapperElement {
  public:
    PaddingElement(platform::Insets insets, ElementPtr child) : WrapperElement(std::move(child)), insets_(insets) {}

    Measurement measure(Size proposal) override {
        const Measurement inner = child().measure(innerProposal(proposal));
        Measurement measurement{.size = grown(inner.size, 1)};
        if (inner.baseline) {
            measurement.baseline = insets_.top + *inner.baseline;
        }
        return measurement;
    }
    double flexibility(Axis axis, Size proposal) override { return child().flexibility(axis, innerProposal(proposal)); }
    Role role() const override { return roleInRoom(WrapperElement::role()); }
    void place(Point origin, Size proposal, LayoutBuilder& builder) override {
        child().place({origin.x + insets_.leading, origin.y + insets_.top}, innerProposal(proposal), builder);
    }

  private:
    Size innerProposal(Size proposal) const { return grown(proposal, -1); }
    Size grown(Size size, double sign) const {
        return {std::max(0.0, size.width + sign * (insets_.leading + insets_.trailing)),
                std::max(0.0, size.height + sign * (insets_.top + insets_.bottom))};
    }

    platform::Insets insets_;
};

class FrameElement final : public WrapperElement {
  public:
    FrameElement(platform::FixedSize size, ElementPtr child) : WrapperElement(std::move(child)), size_(size) {
        if (size_.width) {
            size_.width = std::max(0.0, *size_.width);
        }
        if (size_.height) {
            size_.height = std::max(0.0, *size_.height);
        }
    }

    Measurement measure(Size proposal) override {
        const Measurement inner = child().measure(fixed(proposal));
        Measurement measurement{.size = fixed(inner.size)};
        if (inner.baseline) {
            measurement.baseline = childOffset(inner.size).y + *inner.baseline;
        }
        return measurement;
    }
    double flexibility(Axis axis, Size proposal) override {
        const bool isFixed = axis == Axis::horizontal ? size_.width.has_value() : size_.height.has_value();
        return isFixed ? 0 : child().flexibility(axis, fixed(proposal));
    }
    Role role() const override { return size_.height ? Role::content : roleInRoom(WrapperElement::role()); }
    void place(Point origin, Size proposal, LayoutBuilder& builder) override {
        const Size inner = fixed(proposal);
        const Point offset = childOffset(child().measure(inner).size);
        child().place({origin.x + offset.x, origin.y + offset.y}, inner, builder);
    }

  private:
    Size fixed(Size size) const { return {size_.width.value_or(size.width), size_.height.value_or(size.height)}; }
    Point childOffset(Size inner) const {
        return {size_.width ? (*size_.width - inner.width) / 2 : 0,
                size_.height ? (*size_.height - inner.height) / 2 : 0};
    }

    platform::FixedSize size_;
};

class CapsuleElement final : public WrapperElement {
  public:
    CapsuleElement(platform::Color fill, InheritedStyle style, ElementPtr child)
        : WrapperElement(std::move(child)), fill_(fill), style_(style) {}

    void place(Point origin, Size proposal, LayoutBuilder& builder) override {
        builder.add(CapsuleItem{.fill = fill_}, origin, measure(proposal).size, style_);
        child().place(origin, proposal, builder);
    }

  private:
    platform::Color fill_;
    InheritedStyle style_;
};

class LinkElement final : public WrapperElement {
  public:
    LinkElement(const platform::Link& link, ElementPtr child) : WrapperElement(std::move(child)), link_(link) {}

    void place(Point origin, Size proposal, LayoutBuilder& builder) override {
        const Size size = measure(proposal).size;
        const auto outer = builder.link;
        builder.link = builder.layout.links.size();
        builder.layout.links.push_back(
            {.url = link_.url, .id = link_.id, .frame = {origin.x, origin.y, size.width, size.height}, .outer = outer});
        child().place(origin, proposal, builder);
        builder.link = outer;
    }

  private:
    const platform::Link& link_;
};

} // namespace

ElementPtr paddingElement(platform::Insets insets, ElementPtr child) {
    return std::make_unique<PaddingElement>(insets, std::move(child));
}
ElementPtr frameElement(platform::FixedSize size, ElementPtr child) {
    return std::make_unique<FrameElement>(size, std::move(child));
}
ElementPtr capsuleElement(platform::Color fill, const InheritedStyle& style, ElementPtr child) {
    return std::make_unique<CapsuleElement>(fill, style, std::move(child));
}
ElementPtr linkElement(const platform::Link& link, ElementPtr child) {
    return std::make_unique<LinkElement>(link, std::move(child));
}

} // namespace host
