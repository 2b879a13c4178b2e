// The Tips widget, as it is declared to the host.
#pragma once

#include "Extension/Tips/TipsProvider.h"
#include "Platform/Widgets/Widget.h"

#include <memory>

namespace foliovault {

struct TipsWidget {
    static constexpr const char* kind = "TipsWidget";

    TipsProvider provider;

    std::unique_ptr<platform::Widget> body() const;
};

} // namespace foliovault
