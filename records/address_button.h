#pragma once

#include <QToolButton>

class EntryFields;

// The small button behind an address of a client: opens what stands in the field, with the desktop's own
// programs.
class AddressButton : public QToolButton {
 public:
    enum class Kind { Mail, Web };

    // `fields` outlive it.
    AddressButton(Kind kind, const EntryFields& fields, QWidget* parent);
    // Nothing where no address is given; one that cannot be right is told in a box.
    void OpenWebOrMail(const QString& address);

 private:
    Kind kind_;
    const EntryFields& fields_;
};
