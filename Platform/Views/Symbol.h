// A symbol by its name, as large as the font; and a label, a symbol with a text beside it.
#pragma once

#include "Platform/Views/View.h"

namespace platform {

struct Symbol {
    std::string symbol;
    friend bool operator==(const Symbol&, const Symbol&) = default;
};

struct Label {
    std::string symbol;
    std::string text;
    friend bool operator==(const Label&, const Label&) = default;
};

View symbol(std::string_view name);
View label(std::string_view symbolName, std::string text);

} // namespace platform
