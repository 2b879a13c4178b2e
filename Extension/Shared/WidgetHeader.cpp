#include "Extension/Shared/WidgetHeader.h"

#include "Platform/Foundation/Localization.h"
#include "Platform/Views/Spacer.h"
#include "Platform/Views/Stack.h"
#include "Platform/Views/Text.h"

namespace foliovault {

using namespace platform;

View WidgetHeader::body() const {
    return hStack({.alignment = VerticalAlignment::firstTextBaseline},
                  {
                      text(localized(title)).font(headline),
                      spacer(),
                      text(subtitle).font(caption).foreground(secondary),
                  });
}

} // namespace foliovault
