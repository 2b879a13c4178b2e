// Any line as a request: has one valid response, or none as a notification.

#include "Platform/Widgets/RequestHandler.h"
#include "Tests/Platform/Widgets/ClockWidget.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static const platform::WidgetBundle bundle = platform::testing::clockBundle();
    const std::string_view line(reinterpret_cast<const char*>(bytes), size);
    int count = 0;
    platform::RequestHandler(bundle).handle(line, [&](const std::string& response) {
        const auto json = nlohmann::json::parse(response, nullptr, false);
        const bool isResponse =
            json.is_object() && json.contains("id") && json.contains("result") != json.contains("error");
        if (!isResponse || response.find('\n') != std::string::npos || ++count > 1) {
            std::abort();
        }
    });
    return 0;
}
