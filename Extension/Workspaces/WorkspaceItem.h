// One workspace: a saved arrangement of databases and windows, known by its name.
//
// A value; workspaces are equal when all their fields are.
#pragma once

#include "Extension/Shared/DeepLink.h"
#include "Platform/Foundation/EncodedData.h"
#include "Platform/Foundation/Localization.h"
#include "Platform/Views/Style.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace foliovault {

struct WorkspaceItem {
    /// The symbol that stands for workspaces.
    static constexpr std::string_view icon = "rectangle.stack";

    /// The name.
    std::string id;
    /// The numbers of databases and windows that it opens.
    std::int64_t databaseCount = 0;
    std::int64_t windowCount = 0;

    /// Return the counts in words, in the user's language: "3 databases" and "2 windows". English has one form for
    /// every count.
    std::string databases() const { return platform::localizedCount("%lld databases", databaseCount); }
    std::string windows() const { return platform::localizedCount("%lld windows", windowCount); }

    const std::string& displayTitle() const { return id; }
    /// Returns "3 databases · 2 windows".
    std::optional<std::string> displaySubtitle() const { return databases() + " · " + windows(); }
    std::string_view displayIcon() const { return icon; }
    std::optional<platform::EncodedData> displayIconData() const { return std::nullopt; }
    /// Returns the link that opens the workspace by its name, tagged for this widget.
    std::optional<platform::URL> displayURL() const {
        const auto url = commandURL("open-workspace", "name", id);
        return url ? std::optional(taggedForWidget(*url, "workspaces")) : std::nullopt;
    }
    std::optional<platform::Color> dotColor() const { return std::nullopt; }

    /// Four workspaces for placeholders and previews, made at first use.
    static const std::vector<WorkspaceItem>& sampleItems() {
        static const std::vector<WorkspaceItem> items{
            {.id = "Research", .databaseCount = 3, .windowCount = 2},
            {.id = "Writing", .databaseCount = 1, .windowCount = 1},
            {.id = "Archive", .databaseCount = 5, .windowCount = 1},
            {.id = "Inbox Review", .databaseCount = 2, .windowCount = 3},
        };
        return items;
    }

    friend bool operator==(const WorkspaceItem&, const WorkspaceItem&) = default;
};

} // namespace foliovault
