#include "records/address_button.h"

#include "common/modMain.h"
#include "common/window_helpers.h"
#include "platform/controls/pictures.h"
#include "platform/system/trap.h"
#include "records/entry_fields.h"
#include "records/main_fields.h"

namespace {

// What the two kinds of address differ in.
struct AddressFacts {
    int field;  // of Text1
    const char* picture;
    const char* toolTip;
    const char* scheme;
    char mark;      // an address of this kind has one
    int missingId;  // the message where it has none
};
constexpr AddressFacts kMailFacts = {kEMail, "Mail", "Write an e-mail", "mailto:", '@', 131};
constexpr AddressFacts kWebFacts = {kWeb, "Web", "Open the web page", "http://", '.', 130};

const AddressFacts& factsOf(AddressButton::Kind kind) {
    return kind == AddressButton::Kind::Web ? kWebFacts : kMailFacts;
}

}  // namespace

AddressButton::AddressButton(Kind kind, const EntryFields& fields, QWidget* parent)
    : QToolButton(parent), kind_(kind), fields_(fields) {
    const AddressFacts& facts = factsOf(kind);
    setIcon(platform::icon(QLatin1String(facts.picture)));
    setToolTip(QLatin1String(facts.toolTip));
    setAutoRaise(true);
    connect(this, &QToolButton::clicked, this, [this] { OpenWebOrMail(fields_.text(factsOf(kind_).field)); });
}

void AddressButton::OpenWebOrMail(const QString& address) {
    const AddressFacts& facts = factsOf(kind_);
    QString target = address.trimmed();
    if (target.isEmpty()) {
        return;
    }
    if (!target.contains(QLatin1Char(facts.mark))) {
        box(window(), GetResString(facts.missingId), platform::BoxIcon::Exclamation);
        fields_.focus(facts.field);
        return;
    }
    const QString scheme = QLatin1String(facts.scheme);
    if (!target.contains(scheme, Qt::CaseInsensitive)) {
        target.prepend(scheme);
    }
    platform::Trap step;
    step([&] { LaunchAssociated(window(), target); });
    step.clear();
}
