#include "documents/document_sum_fields.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <optional>

#include "common/modMain.h"
#include "common/window_helpers.h"
#include "documents/ActiveReport2.h"
#include "documents/frmPrintInvoiceEx_error.h"
#include "platform/controls/keys.h"
#include "platform/system/numbers.h"

using print_invoice::guarded;

namespace {

constexpr const char* kDecimals[] = {"Ceo broj", "Jedna decimala", "Dve decimale"};
constexpr DocumentChoice::Facts kRounding{2, "Zaokruzivanje brojeva", kDecimals,
                                          settings::document.PriceRoundUp, 2};

}  // namespace

DocumentSumFields::DocumentSumFields(QWidget* window)
    : QObject(window), window_(window), rounding_(kRounding) {}

void DocumentSumFields::build(QWidget* panel, QBoxLayout* row) {
    rounding_.build(panel);
    auto* rounding = new QLabel(QStringLiteral("&Zaokruzivanje brojeva:"), panel);
    rounding->setObjectName(arrayName("Label3", 2));
    rounding->setBuddy(rounding_.box());
    row->addWidget(rounding);
    row->addWidget(rounding_.box());
    row->addSpacing(16);
    costs_ = print_invoice::makeEntry(0, QStringLiteral("Ostali troskovi, procenat"), panel);
    costs_->setAlignment(Qt::AlignRight);
    costs_->setMaximumWidth(window_->fontMetrics().averageCharWidth() * 8);
    costs_->installEventFilter(this);
    auto* label = new QLabel(QStringLiteral("&Ostali troskovi (%):"), panel);
    label->setObjectName(arrayName("Label3", 3));
    label->setBuddy(costs_);
    row->addWidget(label);
    row->addWidget(costs_);
    row->addStretch(1);
    const QString caption = QStringLiteral("&Prikazi total slovima");
    inWords_ = print_invoice::makeCheck(0, caption, spokenCaption(caption), panel);
    row->addWidget(inWords_);
}

QWidget* DocumentSumFields::first() const {
    return rounding_.box();
}

void DocumentSumFields::loadRounding() {
    rounding_.load(window_);
}

void DocumentSumFields::loadWords() {
    guarded(window_, [&] { inWords_->setChecked(settings::integer(settings::document.Slovima) != 0); });
}

void DocumentSumFields::loadCosts() {
    print_invoice::setTag(costs_, QString());
    guarded(window_, [&] { costs_->setText(settings::text(settings::document.OstaliTrosak, QString())); });
    costs_->setCursorPosition(0);
}

void DocumentSumFields::takeDefaults() {
    rounding_.takeUsual();
    print_invoice::takeTag(costs_);
    inWords_->setChecked(false);
}

void DocumentSumFields::save(const print_invoice::Save& save) const {
    save([&] { settings::setText(settings::document.OstaliTrosak, costs_->text()); });
    save([&] { settings::setInteger(settings::document.Slovima, inWords_->isChecked() ? 1 : 0); });
}

void DocumentSumFields::saveRounding(const print_invoice::Save& save) const {
    rounding_.save(save);
}

void DocumentSumFields::fill(ActiveReport2& report) const {
    guarded(window_, [&] { report.Calc.Rest = singleOf(costs_->text()); });
    guarded(window_, [&] { report.Calc.CeneDinarske = CeneDinarske; });
    guarded(window_, [&] { report.Calc.SlovimaTotal = inWords_->isChecked(); });
    guarded(window_, [&] { report.Calc.PriceRoundUp = rounding_.box()->currentIndex(); });
}

void DocumentSumFields::checkCosts() {
    const std::optional<double> percent = platform::readNumber(costs_->text());
    if (!percent || *percent < 0 || *percent >= 100) {
        costs_->setText(QStringLiteral("0"));
    }
}

bool DocumentSumFields::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusOut) {
        checkCosts();
    }
    if (event->type() == QEvent::KeyPress &&
        platform::filterNumberKey(*costs_, *static_cast<QKeyEvent*>(event), {.decimals = false})) {
        return true;
    }
    return QObject::eventFilter(watched, event);
}
