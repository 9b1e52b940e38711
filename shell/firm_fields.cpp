#include "shell/firm_fields.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "common/settings.h"
#include "common/window_helpers.h"
#include "platform/system/trap.h"
#include "shell/option_controls.h"

namespace {

struct Row {
    const char* label;
    const settings::Setting& setting;
};
constexpr Row kRows[] = {
    {"Adresa:", settings::firm.frmSettAdresa},   {"Grad:", settings::firm.frmSettGrad},
    {"Post. broj:", settings::firm.frmSettZip},  {"Telefon:", settings::firm.frmSettTel},
    {"Fax:", settings::firm.frmSettFax},         {"E-mail:", settings::firm.frmSettEmail},
    {"Sajt:", settings::firm.frmSettWWW},        {"Mat. broj:", settings::firm.frmSettMatBr},
    {"Reg. broj:", settings::firm.frmSettRegBr}, {"Sifra del.:", settings::firm.frmSettSifDel},
    {"PIB:", settings::firm.frmSettPIB},         {"PDV:", settings::firm.frmSettPDV},
    {"Racun br.:", settings::firm.frmSettRnBr},
};
constexpr std::size_t kFirstFiscal = 7;  // the numbers that the tax office wants on a document

QLabel* makeLabel(std::size_t index, QLineEdit* field, QWidget* frame) {
    auto* label = new QLabel(QString::fromLatin1(kRows[index].label), frame);
    label->setObjectName(arrayName("Label2", static_cast<int>(index)));
    label->setBuddy(field);
    return label;
}

}  // namespace

QWidget* FirmFields::build(QWidget* window) {
    auto* panel = new QWidget(window);
    panel->setObjectName(arrayName("Picture1", 1));
    auto* column = new QVBoxLayout(panel);
    column->addWidget(buildFrame(QStringLiteral("Opsti podaci:"), 0, kFirstFiscal, window));
    column->addWidget(buildFrame(QStringLiteral("Fiskalni podaci:"), kFirstFiscal, kCount, window));
    column->addStretch(1);
    return panel;
}

// The fields from `from` until before `to`.
QGroupBox* FirmFields::buildFrame(const QString& title, std::size_t from, std::size_t to, QWidget* window) {
    auto* frame = new QGroupBox(title, window);
    auto* grid = new QGridLayout(frame);
    for (std::size_t i = from; i < to; ++i) {
        QLineEdit* field = makeField(i, frame);
        QLabel* label = makeLabel(i, field, frame);
        field->setAccessibleName(spokenCaption(title) + QLatin1Char(' ') + spokenCaption(label->text()));
        const int row = static_cast<int>(i - from);
        grid->addWidget(label, row, 0);
        grid->addWidget(field, row, 1);
    }
    grid->setHorizontalSpacing(10);
    // The same first column in both frames, so that the fields stand under each other.
    grid->setColumnMinimumWidth(0, window->fontMetrics().horizontalAdvance(QStringLiteral("Sifra del.:   ")));
    return frame;
}

QLineEdit* FirmFields::makeField(std::size_t index, QWidget* frame) {
    auto* field = new QLineEdit(frame);
    field->setObjectName(arrayName("Text2", static_cast<int>(index)));
    fields_[index] = field;
    return field;
}

void FirmFields::load() {
    for (std::size_t i = 0; i < kCount; ++i) {
        fields_[i]->setText(settings::scrambled(kRows[i].setting));
    }
}

void FirmFields::keep(platform::Trap& step) const {
    for (std::size_t i = 0; i < kCount; ++i) {
        step([&] { settings::setScrambled(kRows[i].setting, fields_[i]->text().trimmed()); });
    }
}
