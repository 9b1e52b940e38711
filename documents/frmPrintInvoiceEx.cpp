#include "documents/frmPrintInvoiceEx.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QVBoxLayout>

#include "common/settings.h"
#include "common/window_help.h"
#include "common/window_helpers.h"
#include "common/window_places.h"
#include "data/session.h"
#include "documents/ActiveReport2.h"
#include "documents/document_conditions.h"
#include "documents/document_number_fields.h"
#include "documents/document_query.h"
#include "documents/document_tabs.h"
#include "documents/frmPrintInvoiceEx_error.h"
#include "platform/controls/data_control.h"
#include "platform/controls/keys.h"
#include "platform/controls/link_label.h"
#include "platform/controls/pictures.h"
#include "platform/controls/wait_pointer.h"
#include "platform/system/trap.h"

using print_invoice::guarded;

// Building
// ----------------------------------------------------------------------------------------------------------

frmPrintInvoiceEx::frmPrintInvoiceEx(const ServiceView& view, QWidget* parent)
    : QDialog(parent), view_(view), tabs_(new DocumentTabs(OpenType, this)) {
    setObjectName(QStringLiteral("frmPrintInvoiceEx"));
    onShow = [this](ActiveReport2& report) { report.Show(true, this); };

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(12, 12, 12, 12);
    column->addWidget(tabs_);
    column->addWidget(buildButtons());
    for (QWidget* widget : findChildren<QWidget*>()) {
        widget->installEventFilter(this);
    }
    platform::enterPressesButtons(this);  // before the window takes Enter for its fields
    platform::keysTurnPages(tabs_);
    explainByF1(this, DocumentTopic);
}

frmPrintInvoiceEx::~frmPrintInvoiceEx() {
    Unload();
}

QWidget* frmPrintInvoiceEx::buildButtons() {
    auto* panel = new QWidget(this);
    auto* row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 4, 0, 0);
    auto* defaults = new platform::LinkLabel(
        QStringLiteral("Popuni sva polja na izabranom tab-u podrazumevanim vrednostima"), panel);
    defaults->setObjectName(QStringLiteral("Label2"));
    connect(defaults, &platform::LinkLabel::clicked, tabs_, &DocumentTabs::takeDefaults);
    row->addWidget(defaults);
    row->addSpacing(24);
    row->addStretch(1);
    const auto addButton = [&](int index, const char* caption, auto action) {
        auto* button = new QPushButton(QLatin1String(caption), panel);
        button->setObjectName(arrayName("Command1", index));
        button->setAccessibleName(spokenCaption(button->text()));
        button->setAutoDefault(false);  // a number must not be taken by an Enter meant for a field
        connect(button, &QPushButton::clicked, this, action);
        row->addWidget(button);
        return button;
    };
    QPushButton* print = addButton(0, "&Stampaj...", &frmPrintInvoiceEx::print);
    platform::keyPressesButton(QKeySequence(Qt::CTRL | Qt::Key_P), print);
    print->setIcon(platform::icon(QStringLiteral("Print")));
    print->setToolTip(QStringLiteral("Pregled dokumenta pre stampe"));
    addButton(1, "Za&tvori", &frmPrintInvoiceEx::reject);
    return panel;
}

bool frmPrintInvoiceEx::eventFilter(QObject* watched, QEvent* event) {
    auto* field = qobject_cast<QWidget*>(watched);
    if (event->type() == QEvent::KeyPress && field && platform::isEnter(*static_cast<QKeyEvent*>(event)) &&
        field->hasFocus() && !qobject_cast<platform::LinkLabel*>(field)) {
        platform::pressTab(field);
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

// Opening and closing
// ----------------------------------------------------------------------------------------------------------

void frmPrintInvoiceEx::Display() {
    if (!loaded_) {
        load();
    }
    setModal(true);
    exec();
}

void frmPrintInvoiceEx::load() {
    loaded_ = true;
    guarded(this, [&] {
        adjustSize();
        moveToPlace(this, settings::text(settings::document.WindowData));
    });
    tabs_->loadPage();
    setWindowTitle(OpenType == Invoice ? QStringLiteral("Stampanje Racuna")
                                       : QStringLiteral("Stampanje Predracuna"));
    tabs_->load(view_);
}

void frmPrintInvoiceEx::Unload() {
    if (!loaded_) {
        return;
    }
    loaded_ = false;
    platform::Trap step;  // a place that cannot be kept must not disturb the end of the program
    step([&] { settings::setInteger(settings::document.TabIndex, tabs_->currentIndex() + 1); });
    step([&] {
        if (!isMinimized()) {
            settings::setText(settings::document.WindowData, placeOf(this));
        }
    });
}

void frmPrintInvoiceEx::reject() {
    hide();
}

// Printing
// ----------------------------------------------------------------------------------------------------------

void frmPrintInvoiceEx::print() {
    tabs_->save();
    tabs_->number().takeNext();
    ActiveReport2& report = ActiveReport2::instance();
    tabs_->fill(report, view_);
    showRows(report);
}

void frmPrintInvoiceEx::showRows(ActiveReport2& report) {
    platform::DataControl source;
    {
        const platform::WaitPointer wait;
        guarded(this, [&] { source.DatabaseName = databasePath(); });
        guarded(this, [&] { source.Connect = connectText(); });
        guarded(this, [&] { source.selection = platform::Selection::statement(documentQuery(view_)); });
        guarded(this, [&] { source.Refresh(); });
    }
    guarded(this, [&] { report.setRecordset(source.isOpen() ? source.Recordset() : dao::Recordset()); });
    guarded(this, [&] { onShow(report); });
    // The report lives on; the colleagues' exclusive use of the file must not wait for its next document.
    report.setRecordset({});
    source.Close();
}

QString frmPrintInvoiceEx::BuildFooterText() const {
    return tabs_->conditions().footerText();
}
