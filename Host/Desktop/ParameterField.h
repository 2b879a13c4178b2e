// The field of a declared parameter: a menu of an enumeration's cases, or a list of entities with a search field.
//
// A chosen value that no longer exists is listed as such, and stays chosen until the user chooses another. Called on the
// main thread.
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

    /// `current` is the chosen id. Calls `choose` with every other choice. Requires that `host` outlives this.
    static std::unique_ptr<ParameterField> make(HostApplication& host, const Instance& instance,
                                                const ParameterInfo& parameter, const std::string& current,
                                                Choose choose);
    virtual ~ParameterField() = default;

    /// Returns the field with its title.
    GtkWidget* widget() { return box_.get(); }

  protected:
    ParameterField(GtkOrientation orientation, int spacing, Choose choose)
        : choose_(std::move(choose)), box_(GTK_WIDGET(g_object_ref_sink(gtk_box_new(orientation, spacing)))) {}
    void addLabel(const std::string& title, GtkWidget* named);

    Choose choose_;
    ObjectHandle<GtkWidget> box_;
};

} // namespace host
