#include "documents/frmPrintInvoiceEx.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "documents/ActiveReport2.h"
#include "documents/frmPrintInvoiceEx_tables.h"
#include "platform/controls/date_field.h"
#include "platform/controls/keys.h"
#include "platform/controls/pictures.h"
#include "platform/system/trap.h"
#include "records/link_label.h"
#include "shell/modMain.h"
#include "shell/settings.h"

namespace {

constexpr int kPictureWidth = 40;

QString arrayName(const char* array, int index) {
    return QStringLiteral("%1(%2)").arg(QLatin1String(array)).arg(index);
}

QString spokenOf(QString label) {
    return label.remove(QLatin1Char('&')).remove(QLatin1Char(':'));
}

// What stands in the lists of the first tab. The years are examples, printed on the form long ago.
const QStringList& itemsOf(int combo) {
    static const QStringList kItems[] = {
        {QStringLiteral("/"), QStringLiteral("-"), QStringLiteral("~"), QStringLiteral("*"),
         QStringLiteral("@"), QStringLiteral("#"), QStringLiteral(" (razmak)")},
        {QStringLiteral("YYYY = 2005"), QStringLiteral("YY = 05"), QStringLiteral("MMYYYY = 052005"),
         QStringLiteral("MMYY = 0505")},
        {QStringLiteral("Ceo broj"), QStringLiteral("Jedna decimala"), QStringLiteral("Dve decimale")},
    };
    return kItems[combo];
}
constexpr const char* kComboNames[] = {"Znak izmedju broja i godine", "Godina u broju dokumenta",
                                       "Zaokruzivanje brojeva"};

constexpr const char* kFieldLabels[] = {
    "&Maticni Broj:", "&Registarski Broj:", "S&ifra Delatnosti:", "&PIB:", "P&DV:",   "Racun Bro&j:",
    "Ime/&Naziv:",    "&Adresa:",           "&Grad i Post. Br.:", "PI&B:", "Osta&lo:"};

constexpr const char* kConditionNames[] = {"Nacin placanja", "Rok za uplatu", "Rok isporuke", "Isporuka",
                                           "Napomena"};

}  // namespace

frmPrintInvoiceEx::frmPrintInvoiceEx(const ServiceView& view, QWidget* parent)
    : QDialog(parent), view_(view) {
    setObjectName(QStringLiteral("frmPrintInvoiceEx"));
    onShow = [this](ActiveReport2& report) { report.Show(true, this); };

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(12, 12, 12, 12);
    tabs_ = new QTabWidget(this);
    tabs_->setObjectName(QStringLiteral("TabStrip1"));
    tabs_->setAccessibleName(QStringLiteral("Podesavanja dokumenta"));
    tabs_->addTab(buildGeneral(), QStringLiteral("Opst&e"));
    tabs_->setTabToolTip(0, QStringLiteral("Opsta podesavanja"));
    tabs_->addTab(buildParties(), QStringLiteral("Firma/&Kupac"));
    tabs_->setTabToolTip(1, QStringLiteral("Dodatna podesavanja"));
    column->addWidget(tabs_);
    column->addWidget(buildButtons());
    connectControls();
}

frmPrintInvoiceEx::~frmPrintInvoiceEx() {
    Unload();
}

void frmPrintInvoiceEx::Display() {
    if (!loaded_)
        load();
    setModal(true);
    exec();
}

void frmPrintInvoiceEx::Unload() {
    if (!loaded_)
        return;
    loaded_ = false;
    platform::Trap step;  // a place that cannot be kept must not disturb the end of the program
    step([&] { settings::setInteger(print_invoice::setting("TabIndex"), tabs_->currentIndex() + 1); });
    step([&] {
        if (!isMinimized())
            settings::setText(print_invoice::setting("WindowData"), placeOf(this));
    });
}

void frmPrintInvoiceEx::reject() {
    hide();
}

QLineEdit* frmPrintInvoiceEx::makeEntry(int index, const QString& spoken) {
    auto* entry = new QLineEdit(this);
    entry->setObjectName(arrayName("Text2", index));
    entry->setAccessibleName(spoken);
    text2_[static_cast<std::size_t>(index)] = entry;
    return entry;
}

QCheckBox* frmPrintInvoiceEx::makeCheck(int index, const QString& caption, const QString& spoken) {
    auto* check = new QCheckBox(caption, this);
    check->setObjectName(arrayName("Check1", index));
    check->setAccessibleName(spoken);
    check_[static_cast<std::size_t>(index)] = check;
    return check;
}

QWidget* frmPrintInvoiceEx::buildGeneral() {
    auto* panel = new QWidget(this);
    panel->setObjectName(arrayName("Picture1", 0));
    auto* column = new QVBoxLayout(panel);
    column->addWidget(buildNumberRow());
    column->addWidget(buildSumsRow());
    column->addWidget(buildConditions());
    column->addWidget(buildOther());
    column->addStretch(1);
    return panel;
}

// Reads as the line on the document does: number, sign, year, "od", date.
QWidget* frmPrintInvoiceEx::buildNumberRow() {
    auto* panel = new QWidget(this);
    auto* row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 0, 0, 0);
    command_[2] = new QPushButton(panel);
    command_[2]->setObjectName(arrayName("Command1", 2));
    command_[2]->setToolTip(QStringLiteral("Poslednji odstampani broj dokumenta"));
    command_[2]->setAccessibleName(command_[2]->toolTip());
    for (int i = 0; i < 3; ++i) {
        auto* box = new QComboBox(panel);
        box->setObjectName(arrayName("Combo1", i));
        box->setAccessibleName(QLatin1String(kComboNames[i]));
        box->addItems(itemsOf(i));
        combo_[static_cast<std::size_t>(i)] = box;
    }
    auto* label = new QLabel(QStringLiteral("&Broj:"), panel);
    label->setObjectName(arrayName("Label3", 0));
    label->setBuddy(combo_[0]);
    sample_ = new QLabel(QStringLiteral("(npr. ..., od)"), panel);
    sample_->setObjectName(arrayName("Label3", 1));
    date_ = new platform::DateField(false, panel);
    date_->setObjectName(QStringLiteral("DTPicker1"));
    date_->edit()->setAccessibleName(QStringLiteral("Datum dokumenta"));
    for (QWidget* part : {static_cast<QWidget*>(label), static_cast<QWidget*>(command_[2]),
                          static_cast<QWidget*>(combo_[0]), static_cast<QWidget*>(combo_[1])})
        row->addWidget(part);
    row->addSpacing(12);
    row->addWidget(sample_);
    row->addWidget(date_);
    row->addStretch(1);
    auto* picture = new QLabel(panel);
    picture->setObjectName(QStringLiteral("Image1"));
    picture->setPixmap(platform::picture(QStringLiteral("101"), kPictureWidth));
    row->addWidget(picture);
    return panel;
}

QWidget* frmPrintInvoiceEx::buildSumsRow() {
    auto* panel = new QWidget(this);
    auto* row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 0, 0, 0);
    auto* rounding = new QLabel(QStringLiteral("&Zaokruzivanje brojeva:"), panel);
    rounding->setObjectName(arrayName("Label3", 2));
    rounding->setBuddy(combo_[2]);
    row->addWidget(rounding);
    row->addWidget(combo_[2]);
    row->addSpacing(16);
    QLineEdit* costs = makeEntry(0, QStringLiteral("Ostali troskovi, procenat"));
    costs->setAlignment(Qt::AlignRight);
    costs->setMaximumWidth(fontMetrics().averageCharWidth() * 8);
    auto* label = new QLabel(QStringLiteral("&Ostali troskovi (%):"), panel);
    label->setObjectName(arrayName("Label3", 3));
    label->setBuddy(costs);
    row->addWidget(label);
    row->addWidget(costs);
    row->addStretch(1);
    const QString caption = QStringLiteral("&Prikazi total slovima");
    row->addWidget(makeCheck(0, caption, spokenOf(caption)));
    return panel;
}

QWidget* frmPrintInvoiceEx::buildConditions() {
    auto* frame = new QGroupBox(QStringLiteral("Uslovi:"), this);
    auto* grid = new QGridLayout(frame);
    for (int i = 1; i <= kNote; ++i) {
        const QString name = QLatin1String(kConditionNames[i - 1]);
        grid->addWidget(makeCheck(i, QString(), name), i, 0);
        grid->addWidget(makeEntry(2 * i - 1, name + QStringLiteral(", naslov")), i, 1);
        grid->addWidget(makeEntry(2 * i, name + QStringLiteral(", tekst")), i, 2);
    }
    grid->setColumnStretch(1, 2);
    grid->setColumnStretch(2, 5);
    return frame;
}

QWidget* frmPrintInvoiceEx::buildOther() {
    auto* frame = new QGroupBox(QStringLiteral("Ostalo:"), this);
    auto* grid = new QGridLayout(frame);
    grid->addWidget(makeCheck(kStamp, QString(), QStringLiteral("Pecat i spor")), 0, 0);
    grid->addWidget(makeEntry(kStampText, QStringLiteral("Pecat i spor, tekst")), 0, 1);
    grid->addWidget(makeCheck(kFooter, QString(), QStringLiteral("Footer")), 1, 0);
    grid->addWidget(makeEntry(kFooterText, QStringLiteral("Footer tekst")), 1, 1);
    const QString caption =
        QStringLiteral("&Footer tekst - koristi postojece podatke o firmi (adresa, telefoni i dr.)");
    grid->addWidget(makeCheck(kFirmsFooter, caption, spokenOf(caption)), 2, 1);
    grid->setColumnStretch(1, 1);
    return frame;
}

QWidget* frmPrintInvoiceEx::buildParties() {
    auto* panel = new QWidget(this);
    panel->setObjectName(arrayName("Picture1", 1));
    auto* column = new QVBoxLayout(panel);
    column->addWidget(buildFields(QStringLiteral("Fiskalni podaci firme:"), 0, kFirmFields - 1));
    column->addWidget(buildFields(QStringLiteral("Podaci Kupca/Klijenta:"), kFirmFields, kOther));
    column->addStretch(1);
    return panel;
}

QWidget* frmPrintInvoiceEx::buildFields(const QString& title, int from, int to) {
    auto* frame = new QGroupBox(title, this);
    auto* grid = new QGridLayout(frame);
    for (int i = from; i <= to; ++i) {
        const auto place = static_cast<std::size_t>(i);
        const QString text = QLatin1String(kFieldLabels[i]);
        text1_[place] = new QLineEdit(frame);
        text1_[place]->setObjectName(arrayName("Text1", i));
        text1_[place]->setAccessibleName(title + QLatin1Char(' ') + spokenOf(text));
        label1_[place] = new QLabel(text, frame);
        label1_[place]->setObjectName(arrayName("Label1", i));
        label1_[place]->setBuddy(text1_[place]);
        grid->addWidget(label1_[place], i, 0);
        grid->addWidget(text1_[place], i, 1);
    }
    // The same first column in both frames, so that the fields stand under each other.
    grid->setColumnMinimumWidth(0, fontMetrics().horizontalAdvance(QStringLiteral("Sifra Delatnosti:  ")));
    return frame;
}

QWidget* frmPrintInvoiceEx::buildButtons() {
    auto* panel = new QWidget(this);
    auto* row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 4, 0, 0);
    auto* defaults = new LinkLabel(
        QStringLiteral("Popuni sva polja na izabranom tab-u podrazumevanim vrednostima"), panel);
    defaults->setObjectName(QStringLiteral("Label2"));
    connect(defaults, &LinkLabel::clicked, this, &frmPrintInvoiceEx::setDefaults);
    row->addWidget(defaults);
    row->addSpacing(24);
    row->addStretch(1);
    const char* const captions[] = {"&Stampaj...", "Za&tvori"};
    for (int i = 0; i < 2; ++i) {
        auto* button = new QPushButton(QLatin1String(captions[i]), panel);
        button->setObjectName(arrayName("Command1", i));
        button->setAccessibleName(spokenOf(button->text()));
        command_[static_cast<std::size_t>(i)] = button;
        row->addWidget(button);
    }
    command_[0]->setIcon(platform::icon(QStringLiteral("Print")));
    command_[0]->setToolTip(QStringLiteral("Pregled dokumenta pre stampe"));
    return panel;
}

void frmPrintInvoiceEx::connectControls() {
    for (QPushButton* button : command_)
        button->setAutoDefault(false);  // a number must not be taken by an Enter meant for a field
    connect(command_[0], &QPushButton::clicked, this, &frmPrintInvoiceEx::print);
    connect(command_[1], &QPushButton::clicked, this, &frmPrintInvoiceEx::reject);
    connect(command_[2], &QPushButton::clicked, this, &frmPrintInvoiceEx::changeNumberByHand);
    for (int i = 0; i < kFields; ++i)
        connect(text1_[static_cast<std::size_t>(i)], &QLineEdit::textChanged, this,
                [this, i] { fieldChanged(i); });
    for (int i = 1; i < kChecks; ++i)
        connect(check_[static_cast<std::size_t>(i)], &QCheckBox::toggled, this,
                [this, i] { checkClicked(i); });
    for (QComboBox* box : {combo_[0], combo_[1]})
        connect(box, &QComboBox::currentIndexChanged, this, [this] { numberFormChanged(); });
    for (QWidget* widget : findChildren<QWidget*>())
        widget->installEventFilter(this);
    platform::enterPressesButtons(this);  // before the window takes Enter for its fields
}

bool frmPrintInvoiceEx::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusOut && watched == text2_[0])
        checkCosts();
    if (event->type() == QEvent::KeyPress) {
        auto* widget = qobject_cast<QWidget*>(watched);
        if (widget && filterKey(widget, *static_cast<QKeyEvent*>(event)))
            return true;
    }
    return QDialog::eventFilter(watched, event);
}

bool frmPrintInvoiceEx::filterKey(QWidget* field, const QKeyEvent& key) {
    if (platform::isEnter(key)) {
        if (qobject_cast<LinkLabel*>(field) || !field->hasFocus())
            return false;
        platform::pressTab(field);
        return true;
    }
    return field == text2_[0] && platform::filterNumberKey(*text2_[0], key, {.decimals = false});
}
