// The Reading List widget, as it is declared to the host.
#pragma once

#include "Extension/ReadingList/ReadingListProvider.h"
#include "Platform/Widgets/Widget.h"

#include <memory>

namespace foliovault {

struct ReadingListWidget {
    static constexpr const char* kind = "ReadingListWidget";

    ReadingListProvider provider;

    std::unique_ptr<platform::Widget> body() const;
};

} // namespace foliovault
