#include "platform/report/preview.h"

#include <QAction>
#include <QDir>
#include <QKeyEvent>
#include <QPrinter>
#include <QScreen>
#include <QSplitter>
#include <QStandardPaths>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <functional>
#include <utility>

#include "platform/controls/boxes.h"
#include "platform/controls/pictures.h"
#include "platform/controls/wait_pointer.h"
#include "platform/report/contents_pane.h"
#include "platform/report/find_bar.h"
#include "platform/report/page_view.h"
#include "platform/report/preview_fields.h"
#include "platform/report/print_dialog.h"
#include "platform/system/trap.h"

namespace report {
namespace {

PreviewHelp installedHelp = nullptr;

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

void setPreviewHelp(PreviewHelp help) {
    installedHelp = help;
}

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
        auto* contents = new ContentsPane(document_.contents, *view_, this);
        addContentsButton(*contents);
        middle->addWidget(contents);
    }
    middle->addWidget(view_);
    middle->setStretchFactor(middle->count() - 1, 1);
    middle->setChildrenCollapsible(false);

    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(0);
    all->addWidget(bar_);
    all->addWidget(middle, 1);
    find_ = new FindBar(document_, *view_, this);
    all->addWidget(find_);

    connect(&view_->zoom(), &PageZoom::changed, zoom_, &ZoomField::showZoom);
    connect(view_, &PageView::pageChanged, page_, &PageField::showPage);
    const QSize room = screen() ? screen()->availableSize() * 0.92 : QSize(940, 700);
    resize(QSize(document_.contents.empty() ? 940 : 1000, 860).boundedTo(room));
    view_->zoom().setFit(PageZoom::Fit::Width);
    view_->setFocus();
}

// --- the bar
// ------------------------------------------------------------------------------------------------

// What is made first is the first that Tab comes to: the fields stand among the buttons.
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
        {"ZoomOut", "Umanji", "ZoomOut", keys("Ctrl+-"), [this] { view_->zoom().out(); }},
        {"ZoomIn",
         "Uvecaj",
         "ZoomIn",
         {QKeySequence("Ctrl++"), QKeySequence("Ctrl+=")},
         [this] { view_->zoom().in(); }},
        {"FitPage", "Cela strana", "FitPage", {}, [this] { view_->zoom().setFit(PageZoom::Fit::Page); }},
        {"FitWidth",
         "Sirina strane",
         "FitWidth",
         {},
         [this] { view_->zoom().setFit(PageZoom::Fit::Width); },
         false,
         true},
        {"FindText", "Nadji...", "Find", keys("Ctrl+F"), [this] { find_->open(); }},
        {"ActualSize", "Stvarna velicina", "", keys("Ctrl+0"), [this] { view_->zoom().set(1); }},
        {"FindNext", "Nadji sledece", "", keys("F3"), [this] { find_->goOn(1); }},
        {"FindPrevious", "Nadji prethodno", "", keys("Shift+F3"), [this] { find_->goOn(-1); }},
        {"Help", "Pomoc", "", keys("F1"),
         [] {
             if (installedHelp != nullptr) {
                 installedHelp();
             }
         }},
        {"GoToPage", "Idi na stranu", "", keys("Ctrl+G"),
         [this] {
             page_->setFocus();
             page_->selectAll();
         }},
    };
    for (const Command& command : commands) {
        addCommand(command);
        if (qstrcmp(command.name, "PagePrevious") == 0) {
            page_ = new PageField(*view_, document_.pageCount(), bar_);
            bar_->addWidget(page_);
        } else if (qstrcmp(command.name, "ZoomOut") == 0) {
            zoom_ = new ZoomField(*view_, bar_);
            bar_->addWidget(zoom_);
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

void ReportPreview::goToPage(int step) {
    view_->showPage(view_->page() + step);
}

void ReportPreview::addContentsButton(QWidget& contents) {
    auto* action = new QAction(platform::icon(QStringLiteral("Contents")), QStringLiteral("Sadrzaj"), this);
    action->setObjectName(QStringLiteral("ShowContents"));
    action->setCheckable(true);
    action->setChecked(true);
    connect(action, &QAction::toggled, &contents, &QWidget::setVisible);
    bar_->addAction(action);
    bar_->widgetForAction(action)->setAccessibleName(action->text());
    bar_->widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
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
    if (enter) {
        return;  // no button of this window waits for it
    }
    QDialog::keyPressEvent(event);
}

}  // namespace report
