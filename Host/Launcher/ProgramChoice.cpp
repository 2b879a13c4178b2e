#include "Host/Launcher/ProgramChoice.h"

#include <string_view>

namespace host {
namespace {

bool takesValue(std::string_view option) {
    return option == "--extension" || option == "--home";
}

bool asksAboutProgram(std::string_view option) {
    return option == "-h" || option == "--help" || option == "--version";
}

} // namespace

bool asksForDesktop(std::span<const char* const> arguments, bool hasDisplay) {
    bool isValue = false;
    for (const std::string_view word : arguments) {
        if (isValue) {
            isValue = false;
        } else if (asksAboutProgram(word)) {
            return false;
        } else if (!word.starts_with('-')) {
            return word == "desktop";
        } else {
            isValue = takesValue(word);
        }
    }
    return hasDisplay;
}

} // namespace host
