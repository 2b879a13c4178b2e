#include "Host/Commands/TerminalText.h"

#include <algorithm>

namespace host {

std::string printable(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }, ' ');
    return text;
}

} // namespace host
