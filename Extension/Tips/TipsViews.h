// The views of the Tips widget. Larger families show more of the tip.
#pragma once

#include "Extension/Tips/TipsProvider.h"
#include "Platform/Views/View.h"
#include "Platform/Widgets/Environment.h"

namespace foliovault {

/// The view of the family, `TipsMediumView` for an unknown one; without a tip the empty view.
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
