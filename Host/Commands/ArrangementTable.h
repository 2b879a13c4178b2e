// The arrangement as a table of text:
//
//     ID  KIND               FAMILY  SETTINGS           PLACE
//     1   FavoritesWidget    medium  group=Work         DP-1 at 40,60
//     3   ReadingListWidget  large
#pragma once

#include "Host/Arrangement/Arrangement.h"

#include <string>

namespace host {

std::string arrangementTable(const Arrangement& arrangement);

} // namespace host
