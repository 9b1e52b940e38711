#pragma once

#include <QString>
#include <span>

#include "common/settings.h"
#include "documents/document_controls.h"

class QComboBox;
class QWidget;

// One of the document window's lists to choose from, kept from one document to the next.
class DocumentChoice {
 public:
    struct Facts {
        int index;  // of Combo1
        const char* spoken;
        std::span<const char* const> items;
        const settings::Setting& setting;
        int usual;
    };
    explicit DocumentChoice(const Facts& facts) : facts_(facts) {}  // which outlive this

    QComboBox* build(QWidget* parent);
    QComboBox* box() const { return box_; }  // nullptr before it is built
    // A kept entry that the list does not have is told in a box over `window`; the usual one stands then.
    void load(QWidget* window);
    void takeUsual();
    void save(const print_invoice::Save& save) const;

 private:
    const Facts& facts_;
    QComboBox* box_ = nullptr;
};
