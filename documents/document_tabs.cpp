#include "documents/document_tabs.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "common/settings.h"
#include "common/window_helpers.h"
#include "documents/ActiveReport2.h"
#include "documents/document_conditions.h"
#include "documents/document_number_fields.h"
#include "documents/document_parties.h"
#include "documents/document_sum_fields.h"
#include "documents/frmPrintInvoiceEx_error.h"
#include "documents/service_view.h"
#include "platform/controls/dressing.h"
#include "platform/controls/pictures.h"
#include "platform/system/trap.h"

using print_invoice::guarded;

namespace {

constexpr int kPictureWidth = 40;
constexpr int kPartiesTab = 1;
constexpr char kImageProperty[] = "image";  // of a tab: "warning" or "normal"

}  // namespace

DocumentTabs::DocumentTabs(const int& openType, QWidget* window)
    : QTabWidget(window),
      number_(new DocumentNumberFields(openType, window)),
      sums_(new DocumentSumFields(window)),
      conditions_(new DocumentConditions(openType, window)) {
    setObjectName(QStringLiteral("TabStrip1"));
    setAccessibleName(QStringLiteral("Podesavanja dokumenta"));
    addTab(buildGeneral(), QStringLiteral("Opst&e"));
    setTabToolTip(0, QStringLiteral("Opsta podesavanja"));
    parties_ = new DocumentParties(this);
    connect(parties_, &DocumentParties::differenceChanged, this, &DocumentTabs::markParties);
    addTab(parties_, QStringLiteral("Firma/&Kupac"));
    setTabToolTip(kPartiesTab, QStringLiteral("Dodatna podesavanja"));
    // The date is rarely another one than today's: the list of decimals comes before it.
    setTabOrder(number_->last(), sums_->first());
}

QWidget* DocumentTabs::buildGeneral() {
    auto* panel = new QWidget(this);
    panel->setObjectName(arrayName("Picture1", 0));
    auto* column = new QVBoxLayout(panel);
    column->addWidget(buildNumberRow());
    column->addWidget(buildSumsRow());
    column->addWidget(conditions_->buildConditions(panel));
    column->addWidget(conditions_->buildOther(panel));
    column->addStretch(1);
    return panel;
}

QWidget* DocumentTabs::buildNumberRow() {
    auto* panel = new QWidget(this);
    auto* row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 0, 0, 0);
    number_->build(panel, row);
    row->addStretch(1);
    auto* picture = new QLabel(panel);
    picture->setObjectName(QStringLiteral("Image1"));
    platform::keepDressed(
        *picture, [picture] { picture->setPixmap(platform::picture(QStringLiteral("101"), kPictureWidth)); });
    row->addWidget(picture);
    return panel;
}

QWidget* DocumentTabs::buildSumsRow() {
    auto* panel = new QWidget(this);
    auto* row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 0, 0, 0);
    sums_->build(panel, row);
    return panel;
}

void DocumentTabs::loadPage() {
    guarded(window(), [&] {
        const int index = settings::integer(settings::document.TabIndex);
        if (index < 1 || index > count()) {
            throw platform::RunError(35600, QStringLiteral("Index out of bounds"));
        }
        setCurrentIndex(index - 1);
    });
}

void DocumentTabs::load(const ServiceView& view) {
    number_->loadNumber();
    parties_->takeClient(view);
    number_->loadForm();
    sums_->loadRounding();
    number_->loadDate();
    sums_->loadWords();
    conditions_->loadChecks();
    sums_->loadCosts();
    conditions_->loadTexts();
    parties_->load();
    number_->showSample();
}

void DocumentTabs::takeDefaults() {
    if (currentIndex() == kPartiesTab) {
        parties_->takeDefaults();
        return;
    }
    number_->takeDefaults();
    sums_->takeDefaults();
    conditions_->takeDefaults();
}

// All of them are tried, and the first failure is told: a full disk is one message, not forty.
void DocumentTabs::save() {
    sums_->checkCosts();  // an access key prints without leaving the field that is being typed in
    guarded(window(), [&] {
        platform::Trap first;
        const print_invoice::Save save = [&](const std::function<void()>& step) {
            platform::Trap one;
            one(step);
            if (one.failed() && !first.failed()) {
                first = one;
            }
        };
        parties_->save(save);
        sums_->saveRounding(save);
        number_->save(save);
        sums_->save(save);
        conditions_->saveChecks(save);
        conditions_->saveTexts(save);
        if (first.failed()) {
            throw platform::RunError(first.number(), first.description());
        }
    });
}

void DocumentTabs::fill(ActiveReport2& report, const ServiceView& view) const {
    parties_->fill(report);
    number_->fill(report);
    guarded(window(), [&] { report.Calc.PDV = singleOf(view.serviceTax()); });
    guarded(window(), [&] { report.Calc.Rabat = singleOf(view.serviceDiscount()); });
    sums_->fill(report);
    conditions_->fill(report);
}

void DocumentTabs::markParties(bool differ) {
    setTabIcon(kPartiesTab, differ ? platform::icon(QStringLiteral("Warning")) : QIcon());
    parties_->setProperty(kImageProperty, differ ? QStringLiteral("warning") : QStringLiteral("normal"));
}
