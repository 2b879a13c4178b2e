#include "Host/Desktop/WaitingView.h"

#include "Platform/Views/Spacer.h"
#include "Platform/Views/Stack.h"
#include "Platform/Views/Symbol.h"
#include "Platform/Views/Text.h"

#include <array>
#include <cstddef>

namespace host {
namespace {

using platform::hStack;
using platform::symbol;
using platform::text;
using platform::vStack;

/// Blocks of different widths look like text.
constexpr std::array rowTexts{"A reading list's title", "Another one", "Something of more words", "The next",
                              "A row in the middle"};

std::size_t rowCount(std::string_view family) {
    constexpr std::size_t mediumCount = 5;
    constexpr std::size_t largeCount = 13;
    return family == "large" || family == "extraLarge" ? largeCount : mediumCount;
}

} // namespace

platform::View waitingView(std::string_view family) {
    platform::Views rows{
        hStack({.spacing = 6}, {symbol("unknown"), text("Heading"), platform::spacer()}).font(platform::headline)};
    for (std::size_t row = 0; row < rowCount(family); ++row) {
        rows.push_back(hStack({.spacing = 8}, {symbol("unknown"), text(rowTexts[row % rowTexts.size()]).lineLimit(1),
                                               platform::spacer()}));
    }
    rows.push_back(platform::spacer());
    return vStack({.alignment = platform::HorizontalAlignment::leading, .spacing = 8}, std::move(rows));
}

} // namespace host
