#include "platform/report/preview.h"

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QFrame>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPrinter>
#include <QScreen>
#include <QSpinBox>
#include <QSplitter>
#include <QStandardPaths>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <cmath>
#include <utility>

#include "platform/controls/boxes.h"
#include "platform/controls/pictures.h"
#include "platform/controls/wait_pointer.h"
#include "platform/controls/wheel.h"
#include "platform/report/page_view.h"
#include "platform/report/print_dialog.h"
#include "platform/system/trap.h"

namespace report {
namespace {

constexpr int kPageRole = Qt::UserRole;
constexpr int kTopRole = Qt::UserRole + 1;
constexpr double kZooms[] = {0.5, 0.75, 1.0, 1.25, 1.5, 2.0, 4.0};

// A file name made of the title: what a file system does not take becomes a dash ("Racun 17/2026").
QString fileNameOf(const QString& title) {
    QString name = title.trimmed();
    for (QChar& c : name) {
        if (c < u' ' || QStringLiteral("\\/:*?\"<>|").contains(c)) {
            c = u'-';
        }
    }
    while (name.startsWith(u'.')) {
        name.remove(0, 1);
    }
    return name.isEmpty() ? QStringLiteral("Dokument") : name;
}

}  // namespace

struct ReportPreview::Command {
    const char* name;
    const char* text;
    const char* icon;  // empty: not on the bar
    QList<QKeySequence> keys;
    std::function<void()> act;
    bool wordy = false;  // its text stands beside the icon
    bool gapBehind = false;
};

ReportPreview::ReportPreview(Document document, QWidget* parent)
    : QDialog(parent),
      document_(std::move(document)),
      bar_(new QToolBar(this)),
      view_(new PageView(document_, this)) {
    setObjectName(QStringLiteral("Preview"));
    setAccessibleName(QStringLiteral("Pregled dokumenta"));
    setWindowTitle(document_.title.isEmpty() ? QStringLiteral("Pregled dokumenta") : document_.title);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    bar_->setObjectName(QStringLiteral("Toolbar1"));
    bar_->setIconSize(QSize(20, 20));
    addCommands();

    auto* middle = new QSplitter(this);
    middle->setObjectName(QStringLiteral("Splitter1"));
    if (!document_.contents.empty()) {
        middle->addWidget(contentsPane());
    }
    middle->addWidget(view_);
    middle->setStretchFactor(middle->count() - 1, 1);
    middle->setChildrenCollapsible(false);

    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(0);
    all->addWidget(bar_);
    all->addWidget(middle, 1);
    all->addWidget(findBar());

    connect(view_, &PageView::zoomChanged, this, &ReportPreview::showZoom);
    connect(view_, &PageView::pageChanged, page_, [this](int page) {
        const QSignalBlocker quiet(page_);
        page_->setValue(page);
    });
    const QSize room = screen() ? screen()->availableSize() * 0.92 : QSize(940, 700);
    resize(QSize(document_.contents.empty() ? 940 : 1000, 860).boundedTo(room));
    view_->setFit(PageView::Fit::Width);
    view_->setFocus();
}

// --- the bar
// ------------------------------------------------------------------------------------------------

void ReportPreview::addCommands() {
    using Keys = QList<QKeySequence>;
    const auto keys = [](const char* text) { return Keys{QKeySequence(QString::fromLatin1(text))}; };
    const Command commands[] = {
        {"Print", "Stampaj...", "Print", keys("Ctrl+P"), [this] { print(); }, true},
        {"Pdf", "Sacuvaj kao PDF...", "Pdf", keys("Ctrl+S"), [this] { savePdf(); }, true, true},
        {"PageFirst", "Prva strana", "PageFirst", keys("Ctrl+Home"), [this] { view_->showPage(1); }},
        {"PagePrevious", "Prethodna strana", "PagePrevious", keys("Ctrl+PgUp"), [this] { goToPage(-1); }},
        {"PageNext", "Sledeca strana", "PageNext", keys("Ctrl+PgDown"), [this] { goToPage(1); }},
        {"PageLast", "Poslednja strana", "PageLast", keys("Ctrl+End"),
         [this] { view_->showPage(document_.pageCount()); }, false, true},
        {"ZoomOut", "Umanji", "ZoomOut", keys("Ctrl+-"), [this] { view_->zoomOut(); }},
        {"ZoomIn",
         "Uvecaj",
         "ZoomIn",
         {QKeySequence("Ctrl++"), QKeySequence("Ctrl+=")},
         [this] { view_->zoomIn(); }},
        {"FitPage", "Cela strana", "FitPage", {}, [this] { view_->setFit(PageView::Fit::Page); }},
        {"FitWidth",
         "Sirina strane",
         "FitWidth",
         {},
         [this] { view_->setFit(PageView::Fit::Width); },
         false,
         true},
        {"FindText", "Nadji...", "Find", keys("Ctrl+F"), [this] { openFind(); }},
        {"ActualSize", "Stvarna velicina", "", keys("Ctrl+0"), [this] { view_->setZoom(1); }},
        {"FindNext", "Nadji sledece", "", keys("F3"), [this] { findNext(); }},
        {"FindPrevious", "Nadji prethodno", "", keys("Shift+F3"), [this] { findPrevious(); }},
        {"GoToPage", "Idi na stranu", "", keys("Ctrl+G"),
         [this] {
             page_->setFocus();
             page_->selectAll();
         }},
    };
    for (const Command& command : commands) {
        addCommand(command);
        if (qstrcmp(command.name, "PagePrevious") == 0) {
            addPageField();
        } else if (qstrcmp(command.name, "ZoomOut") == 0) {
            addZoomField();
        }
        if (command.gapBehind) {
            bar_->addSeparator();
        }
    }
}

QAction* ReportPreview::addCommand(const Command& command) {
    const QString text = QString::fromUtf8(command.text);
    auto* action = new QAction(platform::icon(QString::fromLatin1(command.icon)), text, this);
    action->setObjectName(QString::fromLatin1(command.name));
    action->setShortcuts(command.keys);
    connect(action, &QAction::triggered, this, command.act);
    addAction(action);
    if (*command.icon == '\0') {
        return action;
    }
    bar_->addAction(action);
    auto* button = qobject_cast<QToolButton*>(bar_->widgetForAction(action));
    button->setObjectName(QStringLiteral("Button(%1)").arg(action->objectName()));
    button->setAccessibleName(text);
    button->setFocusPolicy(Qt::TabFocus);
    if (command.wordy) {
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    }
    QString tip = text;
    tip.remove(QStringLiteral("..."));
    if (!command.keys.isEmpty()) {
        tip += QStringLiteral(" (%1)").arg(command.keys.first().toString(QKeySequence::NativeText));
    }
    action->setToolTip(tip);
    return action;
}

void ReportPreview::addPageField() {
    page_ = new QSpinBox(bar_);
    page_->setObjectName(QStringLiteral("Page"));
    page_->setAccessibleName(QStringLiteral("Strana"));
    page_->setToolTip(QStringLiteral("Strana (Ctrl+G)"));
    page_->setRange(1, std::max(1, document_.pageCount()));
    page_->setSuffix(QStringLiteral(" / %1").arg(document_.pageCount()));
    page_->setAlignment(Qt::AlignCenter);
    page_->setButtonSymbols(QAbstractSpinBox::NoButtons);
    page_->setKeyboardTracking(false);
    connect(page_, &QSpinBox::valueChanged, this, [this](int page) { view_->showPage(page); });
    platform::wheelNeedsFocus(page_);
    bar_->addWidget(page_);
}

void ReportPreview::addZoomField() {
    zoom_ = new QComboBox(bar_);
    zoom_->setObjectName(QStringLiteral("Zoom"));
    zoom_->setAccessibleName(QStringLiteral("Uvecanje"));
    zoom_->setToolTip(QStringLiteral("Uvecanje"));
    zoom_->setEditable(true);
    zoom_->setInsertPolicy(QComboBox::NoInsert);
    zoom_->setCompleter(nullptr);
    for (const double zoom : kZooms) {
        zoom_->addItem(QStringLiteral("%1%").arg(std::lround(zoom * 100)), zoom);
    }
    zoom_->setMinimumContentsLength(5);
    connect(zoom_, &QComboBox::activated, this, &ReportPreview::takeZoom);
    connect(zoom_->lineEdit(), &QLineEdit::returnPressed, this, &ReportPreview::readZoom);
    platform::wheelNeedsFocus(zoom_);
    bar_->addWidget(zoom_);
}

void ReportPreview::showZoom(double zoom) {
    zoom_->setEditText(QStringLiteral("%1%").arg(std::lround(zoom * 100)));
}

void ReportPreview::takeZoom(int index) {
    view_->setZoom(zoom_->itemData(index).toDouble());
    view_->setFocus();
}

void ReportPreview::readZoom() {
    QString text = zoom_->currentText();
    bool isNumber = false;
    const double percent = text.remove(u'%').trimmed().toDouble(&isNumber);
    if (isNumber && percent > 0) {
        view_->setZoom(percent / 100);
    }
    showZoom(view_->zoom());
    view_->setFocus();
}

void ReportPreview::goToPage(int step) {
    view_->showPage(view_->page() + step);
}

// --- contents
// -----------------------------------------------------------------------------------------------

QWidget* ReportPreview::contentsPane() {
    contents_ = new QTreeWidget(this);
    contents_->setObjectName(QStringLiteral("Contents"));
    contents_->setAccessibleName(QStringLiteral("Sadrzaj"));
    contents_->setHeaderLabel(QStringLiteral("Sadrzaj"));
    contents_->setMinimumWidth(140);
    QList<QTreeWidgetItem*> open;  // the last entry of each level
    for (const ContentsEntry& entry : document_.contents) {
        const qsizetype level = std::clamp<qsizetype>(entry.level, 0, open.size());
        open.resize(level);
        auto* item = open.isEmpty() ? new QTreeWidgetItem(contents_) : new QTreeWidgetItem(open.last());
        item->setText(0, entry.text);
        item->setToolTip(0, entry.text);
        item->setData(0, kPageRole, entry.page);
        item->setData(0, kTopRole, entry.top);
        open.append(item);
    }
    contents_->expandAll();
    contents_->setRootIsDecorated(open.size() > 1 || contents_->topLevelItemCount() <
                                                         static_cast<int>(document_.contents.size()));
    connect(contents_, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
        if (item) {
            view_->showPlace(item->data(0, kPageRole).toInt(), item->data(0, kTopRole).toDouble());
        }
    });
    auto* action = new QAction(platform::icon(QStringLiteral("Contents")), QStringLiteral("Sadrzaj"), this);
    action->setObjectName(QStringLiteral("ShowContents"));
    action->setCheckable(true);
    action->setChecked(true);
    connect(action, &QAction::toggled, contents_, &QWidget::setVisible);
    bar_->addAction(action);
    bar_->widgetForAction(action)->setAccessibleName(action->text());
    bar_->widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
    return contents_;
}

// --- search
// -------------------------------------------------------------------------------------------------

QWidget* ReportPreview::findBar() {
    findBar_ = new QFrame(this);
    findBar_->setObjectName(QStringLiteral("FindBar"));
    auto* label = new QLabel(QStringLiteral("&Nadji:"), findBar_);
    find_ = new QLineEdit(findBar_);
    find_->setObjectName(QStringLiteral("Find"));
    find_->setAccessibleName(QStringLiteral("Nadji"));
    find_->setClearButtonEnabled(true);
    find_->setMaximumWidth(320);
    label->setBuddy(find_);
    found_ = new QLabel(findBar_);
    found_->setObjectName(QStringLiteral("Found"));
    found_->setAccessibleName(QStringLiteral("Rezultat trazenja"));
    auto* row = new QHBoxLayout(findBar_);
    row->setContentsMargins(8, 4, 8, 4);
    row->addWidget(label);
    row->addWidget(find_, 1);
    const auto addButton = [&](const char* name, const char* text, auto act) {
        auto* button = new QToolButton(findBar_);
        button->setObjectName(QString::fromLatin1(name));
        button->setText(QString::fromUtf8(text));
        button->setAccessibleName(button->text());
        button->setFocusPolicy(Qt::TabFocus);
        connect(button, &QToolButton::clicked, this, act);
        row->addWidget(button);
    };
    addButton("Previous", "Prethodno", [this] { findPrevious(); });
    addButton("Next", "Sledece", [this] { findNext(); });
    row->addWidget(found_, 1);
    addButton("CloseFind", "Zatvori", [this] { closeFind(); });
    findBar_->hide();
    return findBar_;
}

void ReportPreview::openFind() {
    findBar_->show();
    find_->setFocus();
    find_->selectAll();
}

void ReportPreview::closeFind() {
    findBar_->hide();
    hits_.clear();
    searched_.clear();
    hit_ = -1;
    view_->showHits({}, -1);
    view_->setFocus();
}

void ReportPreview::search() {
    searched_ = find_->text();
    hits_ = document_.find(searched_);
    hit_ = -1;
}

void ReportPreview::findNext() {
    goOn(1);
}

void ReportPreview::findPrevious() {
    goOn(-1);
}

void ReportPreview::goOn(int step) {
    if (find_->text().isEmpty()) {
        openFind();
        return;
    }
    findBar_->show();
    if (searched_ != find_->text()) {
        search();
    }
    if (hits_.isEmpty()) {
        view_->showHits({}, -1);
        tell(QStringLiteral("Tekst nije nadjen."));
        return;
    }
    const int count = static_cast<int>(hits_.size());
    if (hit_ >= 0) {
        hit_ = (hit_ + step + count) % count;
    } else {
        // A search begins at the page that is looked at, not at the top of two hundred others.
        const int page = view_->page();
        hit_ = 0;
        while (hit_ + 1 < count && hits_.at(hit_).page < page) {
            ++hit_;
        }
        if (hits_.at(hit_).page < page) {
            hit_ = 0;
        }
        if (step < 0) {
            hit_ = (hit_ + count - 1) % count;
        }
    }
    view_->showHits(hits_, hit_);
    tell(QStringLiteral("%1 od %2").arg(hit_ + 1).arg(count));
}

void ReportPreview::tell(const QString& text) {
    found_->setText(text);
}

// --- paper and file
// -----------------------------------------------------------------------------------------

void ReportPreview::print() {
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(windowTitle());
    printer.setPageSize(QPageSize(QSizeF(document_.width / 20.0, document_.height / 20.0), QPageSize::Point,
                                  QString(), QPageSize::FuzzyOrientationMatch));
    if (!askForPrinter(printer, document_.pageCount(), this)) {
        return;
    }
    const QList<int> wanted = pagesToPrint(printer, document_.pageCount(), view_->page());
    bool printed = false;
    {
        const platform::WaitPointer wait;
        printed = document_.print(printer, wanted);
    }
    if (!printed) {
        tellFailure(QStringLiteral("Dokument nije odstampan."), printer.printerName());
    }
}

void ReportPreview::savePdf() {
    platform::FileQuestion question;
    question.title = QStringLiteral("Sacuvaj kao PDF");
    question.filter = QStringLiteral("PDF (*.pdf)|*.pdf");
    question.folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    question.extension = QStringLiteral(".pdf");
    question.name = fileNameOf(document_.title) + question.extension;
    question.replaceText = QStringLiteral("Datoteka %1 vec postoji. Zameniti je?");
    const std::optional<QString> path = platform::saveFileDialog(question, this);
    if (!path) {
        return;
    }
    platform::Trap step;
    {
        const platform::WaitPointer wait;
        step([&] { document_.savePdf(*path); });
    }
    if (step.failed()) {
        tellFailure(QStringLiteral("PDF datoteka nije sacuvana."), step.line());
    }
}

void ReportPreview::tellFailure(const QString& text, const QString& detail) {
    platform::Box box;
    box.text = detail.isEmpty() ? text : text + u'\n' + detail;
    box.title = windowTitle();
    box.icon = platform::BoxIcon::Exclamation;
    platform::showBox(box, this);
}

void ReportPreview::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && find_->hasFocus()) {
        event->modifiers() & Qt::ShiftModifier ? findPrevious() : findNext();
        return;
    }
    if (event->key() == Qt::Key_Escape && findBar_->isVisible() && findBar_->isAncestorOf(focusWidget())) {
        closeFind();
        return;
    }
    if (enter) {
        return;  // no button of this window waits for it
    }
    QDialog::keyPressEvent(event);
}

}  // namespace report
