// How one declared parameter is chosen: an enumeration from its few cases, an entity from a list that is searched.
#pragma once

#include "Host/Arrangement/Arrangement.h"
#include "Host/Connection/Messages.h"
#include "Host/Desktop/Objects.h"
#include "Host/Session/HostApplication.h"

#include <functional>
#include <memory>
#include <string>

namespace host {

class ParameterField {
  public:
    using Choose = std::function<void(const std::string& id)>;

    /// `current` is what is chosen; `choose` is told when that is something else. `host` must outlive this.
    static std::unique_ptr<ParameterField> make(HostApplication& host, const Instance& instance,
                                                const ParameterInfo& parameter, const std::string& current,
                                                Choose choose);
    virtual ~ParameterField() = default;

    /// With its title.
    virtual GtkWidget* widget() = 0;
};

} // namespace host
