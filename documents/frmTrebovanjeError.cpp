#include "documents/frmTrebovanjeError.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QVBoxLayout>
#include <iterator>

#include "common/list_cells.h"
#include "common/list_columns.h"
#include "common/modMain.h"
#include "common/settings.h"
#include "common/window_help.h"
#include "common/window_helpers.h"
#include "common/window_places.h"
#include "platform/controls/pictures.h"
#include "platform/system/files.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"

namespace {

using platform::HeaderAlignment;

// One a row of the table below it, in its order.
enum class CriticalColumn { Manufacturer, Group, Name, Description, Price, Quantity, Count };

constexpr ListColumn kColumns[] = {
    {"Proizvodjac", "Proizvodjac", 0, HeaderAlignment::Left},
    {"Grupa", "Grupa", 0, HeaderAlignment::Left},
    {"Naziv", "Naziv", 0, HeaderAlignment::Left},
    {"Opis", "Opis", 0, HeaderAlignment::Left},
    {"Cena", "Cena", 0, HeaderAlignment::Right, 1440, true},
    {"Kolicina", "Kolicina", 0, HeaderAlignment::Right},
};
static_assert(std::size(kColumns) == static_cast<std::size_t>(CriticalColumn::Count));
constexpr int kExplanation = 10101;
constexpr qint32 kAtTheEnd = 1;
constexpr size_t kClose = 0, kPrint = 1;

// A groove between the list and the buttons: shadow above, light below and a little longer.
class EngravedRule : public QWidget {
 public:
    explicit EngravedRule(QWidget* parent) : QWidget(parent) { setFixedHeight(2); }

 protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(QRect(1, 0, width() - 2, 1), palette().color(QPalette::Dark));
        painter.fillRect(QRect(0, 1, width(), 1), palette().color(QPalette::Light));
    }
};

}  // namespace

frmTrebovanjeError::frmTrebovanjeError(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmTrebovanjeError"));
    setWindowTitle(QStringLiteral(" Kriticni Proizvodi"));
    build();
    explainByF1(this, CriticalTopic);
    moveToPlaceAndSize(this, settings::text(settings::shortage.WindowData));
    Text1->setText(GetResString(kExplanation).replace(QLatin1String("\r\n"), QLatin1String("\n")));
    loaded_ = true;
    QString errorText;
    if (!createListView(*ListView1, kColumns, settings::text(settings::shortage.LVWColumnWidths),
                        settings::text(settings::shortage.LVWColumnPositions), errorText)) {
        box(errorText, platform::BoxIcon::Critical);
    }
}

frmTrebovanjeError::~frmTrebovanjeError() {
    Unload();
}

void frmTrebovanjeError::build() {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(12, 12, 12, 12);
    column->setSpacing(10);

    Text1 = new QLabel(this);
    Text1->setObjectName(QStringLiteral("Text1"));
    Text1->setAccessibleName(QStringLiteral("Objasnjenje"));
    Text1->setTextFormat(Qt::PlainText);
    Text1->setWordWrap(true);
    column->addWidget(Text1);

    ListView1 = new platform::ListView(this);
    ListView1->setObjectName(QStringLiteral("ListView1"));
    ListView1->setAccessibleName(QStringLiteral("Kriticni proizvodi"));
    ListView1->columns().setMenuTitle(QLatin1String(kSerbianColumnMenu));
    ListView1->setSmallIcons({{QStringLiteral("jedan"), platform::icon(QStringLiteral("MarkOne"))},
                              {QStringLiteral("dva"), platform::icon(QStringLiteral("MarkTwo"))}});
    ListView1->installEventFilter(this);
    column->addWidget(ListView1, 1);

    auto* rule = new EngravedRule(this);
    rule->setObjectName(QStringLiteral("Line1"));
    column->addWidget(rule);

    auto* row = new QHBoxLayout;
    row->addStretch(1);
    const char* const captions[] = {"&Zatvori", "&Stampaj..."};
    for (const size_t i : {kPrint, kClose}) {
        Command1[i] = new QPushButton(QString::fromLatin1(captions[i]), this);
        Command1[i]->setObjectName(QStringLiteral("Command1(%1)").arg(i));
        Command1[i]->setAccessibleName(spokenCaption(QString::fromLatin1(captions[i])));
        row->addWidget(Command1[i]);
    }
    Command1[kClose]->setDefault(true);
    column->addLayout(row);
    connect(Command1[kClose], &QPushButton::clicked, this, &QDialog::reject);
    connect(Command1[kPrint], &QPushButton::clicked, this, &frmTrebovanjeError::print);
}

void frmTrebovanjeError::box(const QString& text, platform::BoxIcon icon) {
    platform::showBox({.text = text, .title = GetResString(1), .icon = icon}, this);
}

void frmTrebovanjeError::Display() {
    ListView1->setFocus();
    exec();
}

void frmTrebovanjeError::Unload() {
    if (!loaded_) {
        return;
    }
    loaded_ = false;
    platform::Trap step;  // columns that cannot be kept must not hold up the requisition
    step([&] { settings::setText(settings::shortage.LVWColumnWidths, columnWidths(*ListView1)); });
    step([&] { settings::setText(settings::shortage.LVWColumnPositions, columnPositions(*ListView1)); });
    if (!isMinimized()) {
        step([&] { settings::setText(settings::shortage.WindowData, placeAndSizeOf(this)); });
    }
}

void frmTrebovanjeError::AddListItem(const QString& key, const QString& manufacturer, const QString& group,
                                     const QString& name, const QString& description, float price,
                                     float quantity, qint32 code) {
    platform::Trap step;
    step([&] { showUnit(*ListView1, kColumns); });
    step([&] {
        platform::ListItem added;
        added.Key = key;
        added.SmallIcon = code == kAtTheEnd ? QStringLiteral("dva") : QStringLiteral("jedan");
        setCell(added, CriticalColumn::Manufacturer, manufacturer);
        setCell(added, CriticalColumn::Group, group);
        setCell(added, CriticalColumn::Name, name);
        setCell(added, CriticalColumn::Description, description);
        setCell(added, CriticalColumn::Price, platform::formatGrouped(price));
        setCell(added, CriticalColumn::Quantity, platform::textOfSingle(quantity));
        ListView1->addItem(added);  // refuses a key twice, before any row is moved
        if (code == kAtTheEnd) {
            return;
        }
        QList<platform::ListItem> rows{added};
        for (int i = 1; i < ListView1->count(); ++i) {
            rows.append(ListView1->item(i));
        }
        ListView1->clearItems();
        for (const platform::ListItem& row : rows) {
            ListView1->addItem(row);
        }
    });
    if (step.failed()) {
        box(step.line() + QStringLiteral("\nOccured in procedure AddListItem of Form frmTrebovanjeError"),
            platform::BoxIcon::Exclamation);
    }
}

QString frmTrebovanjeError::report() const {
    QString text = QStringLiteral(
        "Proizvodi koji nisu mogli da budu trebovani jer\n"
        "nisu pronadjeni u bazi podataka (najverovatnije\n"
        "zato sto su izbrisani od strane drugih korisnika):\n\n\n");
    for (int i = 1; i <= ListView1->count(); ++i) {
        const platform::ListItem& row = ListView1->item(i);
        const std::optional<double> price = platform::readNumber(cellOf(row, CriticalColumn::Price));
        text += cellOf(row, CriticalColumn::Manufacturer) + QStringLiteral(" - ") +
                cellOf(row, CriticalColumn::Group);
        text += row.SmallIcon == QLatin1String("jedan")
                    ? QStringLiteral("     (Nije pronadjen u tabeli trebovanja)\n")
                    : QStringLiteral("     (Nije pronadjen u tabeli proizvoda)\n");
        text += cellOf(row, CriticalColumn::Name) + QStringLiteral(" - ") +
                cellOf(row, CriticalColumn::Description) + QLatin1Char('\n');
        text += ListView1->columns().text(columnNumber(CriticalColumn::Price)) + QStringLiteral(": ");
        text += price ? platform::formatGrouped(*price) : cellOf(row, CriticalColumn::Price);
        text += QStringLiteral("  x  ") + cellOf(row, CriticalColumn::Quantity) + QStringLiteral(" kom.\n\n");
    }
    return text;
}

bool frmTrebovanjeError::PrintReport(QString& errorText) {
    errorText.clear();
    if (ListView1->count() == 0) {
        box(QStringLiteral("Nema podataka koji bi mogli da se stampaju."), platform::BoxIcon::Information);
        return true;
    }
    const QString file = platform::programFolder() + QStringLiteral("/TError.txt");
    platform::Trap step;
    step([&] { platform::writeTextFile(file, report()); });
    if (!step.failed()) {
        step([&] { LaunchAssociated(this, file); });  // never an older list in the place of this one
    }
    if (!step.failed()) {
        return true;
    }
    errorText = step.line() + QStringLiteral("\nOccured in procedure PrintReport of Form frmTrebovanjeError");
    return false;
}

void frmTrebovanjeError::print() {
    QString errorText;
    if (!PrintReport(errorText) && !errorText.isEmpty()) {
        box(QStringLiteral("Neocekivana greska prilikom generisanja izvestaja:\n\n") + errorText,
            platform::BoxIcon::Exclamation);
    }
}

void frmTrebovanjeError::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_P && event->modifiers() == Qt::ControlModifier) {
        print();
        return;
    }
    QDialog::keyPressEvent(event);
}

// The list would look for a product that begins with the letter, and keep the key.
bool frmTrebovanjeError::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_P && key->modifiers() == Qt::ControlModifier) {
            print();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}
