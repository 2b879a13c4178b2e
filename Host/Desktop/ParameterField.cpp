#include "Host/Desktop/ParameterField.h"

#include "Host/Desktop/CaseField.h"
#include "Host/Desktop/EntityField.h"

namespace host {

std::unique_ptr<ParameterField> ParameterField::make(HostApplication& host, const Instance& instance,
                                                     const ParameterInfo& parameter, const std::string& current,
                                                     Choose choose) {
    if (parameter.type == "entity") {
        return std::make_unique<EntityField>(host, instance, parameter, current, std::move(choose));
    }
    return std::make_unique<CaseField>(parameter, current, std::move(choose));
}

} // namespace host
