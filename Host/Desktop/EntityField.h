// The choice among an entity's options, of which there may be many: a list, narrowed down by what is typed above it.
//
// What is chosen may have gone since; it is listed as such, and stays chosen until another is.
#pragma once

#include "Host/Desktop/ParameterField.h"

#include <string>
#include <vector>

namespace host {

class EntityField final : public ParameterField {
  public:
    EntityField(HostApplication& host, Instance instance, const ParameterInfo& parameter, std::string current,
                Choose choose);
    ~EntityField() override;

    GtkWidget* widget() override { return box_.get(); }

  private:
    void searched();
    void ask(const std::string& matching);
    void list(const OptionsInfo& options, bool isWhole);
    void selected(GtkListBoxRow* row);
    void addRow(const ChoiceInfo& choice, bool isThere);

    HostApplication& host_;
    Instance instance_;
    std::string parameter_;
    std::string current_;
    Choose choose_;
    ObjectHandle<GtkWidget> box_;
    GtkWidget* search_;
    GtkWidget* list_;
    /// The ids of the rows.
    std::vector<std::string> ids_;
    /// While rows come and go by themselves.
    bool isListing_ = false;
    /// Counts questions; only the last one's answer matters.
    int questions_ = 0;
    Lifetime lifetime_;
};

} // namespace host
