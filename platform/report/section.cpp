#include "platform/report/section.h"

#include "platform/report/element_error.h"

namespace report {

Control& Section::add(Control control) {
    for (const auto& known : controls_) {
        if (!control.name.isEmpty() && known->name == control.name) {
            throw elementNotUnique(control.name);
        }
    }
    controls_.push_back(std::make_unique<Control>(std::move(control)));
    return *controls_.back();
}

Control& Section::Controls(const QString& name) {
    for (const auto& control : controls_) {
        if (!name.isEmpty() && control->name == name) {
            return *control;
        }
    }
    throw elementNotFound(name);
}

}  // namespace report
