#include "Host/Desktop/WidgetSymbol.h"

#include "Platform/Views/Node.h"

namespace host {
namespace {

struct SymbolFinder {
    using Found = std::optional<std::string>;

    template <class Content>
    Found operator()(const Content& content) const {
        if constexpr (requires { content.children; }) {
            for (const platform::View& child : content.children) {
                if (Found found = widgetSymbolIn(child)) {
                    return found;
                }
            }
        } else if constexpr (requires { content.symbol; }) {
            return content.symbol;
        } else if constexpr (requires { content.child; }) {
            return widgetSymbolIn(content.child);
        }
        return std::nullopt;
    }
    Found operator()(const platform::Link& /*link*/) const { return std::nullopt; }
    Found operator()(const platform::Frame& /*frame*/) const { return std::nullopt; }
};

} // namespace

std::optional<std::string> widgetSymbolIn(const platform::View& view) {
    return std::visit(SymbolFinder(), view.node().content);
}

} // namespace host
