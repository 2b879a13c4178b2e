// One of the application's files: a property list whose root is an array of dictionaries.
#pragma once

#include "Platform/Foundation/FileSystem.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Foundation/URL.h"
#include "Platform/PropertyList/PropertyList.h"

#include <optional>
#include <string>
#include <string_view>

namespace foliovault {

class PropertyListFile {
  public:
    /// `category` is the log category of the store that reads the file. The interfaces must outlive this.
    PropertyListFile(const platform::URL& location, std::string_view category, const platform::FileSystem& files,
                     const platform::Log& log)
        : path_(location.path()), category_(category), files_(files), log_(log) {}

    /// The file as it is now, its root an array of dictionaries; nothing otherwise, which is logged: "Could not read …"
    /// for debugging when there is no such file to be read, "Could not parse …" as an error when it is something else.
    std::optional<platform::PropertyList> load() const;

  private:
    std::string path_;
    std::string_view category_;
    const platform::FileSystem& files_;
    const platform::Log& log_;
};

} // namespace foliovault
