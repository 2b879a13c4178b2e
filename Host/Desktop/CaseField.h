// The choice among an enumeration's cases.
#pragma once

#include "Host/Desktop/ParameterField.h"

namespace host {

class CaseField final : public ParameterField {
  public:
    CaseField(const ParameterInfo& parameter, const std::string& current, Choose choose);
    ~CaseField() override { g_signal_handlers_disconnect_by_data(combo_, this); }

    GtkWidget* widget() override { return box_.get(); }

  private:
    void changed();

    Choose choose_;
    ObjectHandle<GtkWidget> box_;
    GtkWidget* combo_;
};

} // namespace host
