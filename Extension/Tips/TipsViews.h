// The Tips widget's pictures: one tip, with more of it the larger the family.
#pragma once

#include "Extension/Tips/TipsProvider.h"
#include "Platform/Views/View.h"
#include "Platform/Widgets/Environment.h"

namespace foliovault {

/// The tip as the family has room for it, a family that is not known as in medium; without a tip the empty view.
struct TipsEntryView {
    const TipsEntry& entry;
    platform::View body(const platform::Environment& environment) const;
};

struct TipsSmallView {
    const TipItem& tip;
    platform::View body() const;
};

struct TipsMediumView {
    const TipItem& tip;
    TipsMode mode;
    platform::View body() const;
};

struct TipsLargeView {
    const TipItem& tip;
    TipsMode mode;
    platform::View body() const;
};

struct TipsExtraLargeView {
    const TipItem& tip;
    TipsMode mode;
    platform::View body() const;
};

struct TipsEmptyView {
    platform::View body() const;
};

} // namespace foliovault
