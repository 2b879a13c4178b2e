// How one declared parameter is chosen: an enumeration from its few cases, an entity from a list that is searched.
//
// What is chosen may have gone since; it is listed as such, and stays chosen until another is. On the main thread.
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

    /// `current` is what is chosen; `choose` is called with every other choice. `host` must outlive this.
    static std::unique_ptr<ParameterField> make(HostApplication& host, const Instance& instance,
                                                const ParameterInfo& parameter, const std::string& current,
                                                Choose choose);
    virtual ~ParameterField() = default;

    /// With its title.
    GtkWidget* widget() { return box_.get(); }

  protected:
    ParameterField(GtkOrientation orientation, int spacing, Choose choose)
        : choose_(std::move(choose)), box_(GTK_WIDGET(g_object_ref_sink(gtk_box_new(orientation, spacing)))) {}
    void addLabel(const std::string& title, GtkWidget* named);

    Choose choose_;
    ObjectHandle<GtkWidget> box_;
};

} // namespace host
