#include "shell/frmHelp.h"

#include <QApplication>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QScreen>
#include <QSplitter>
#include <QUrl>
#include <QVBoxLayout>

#include "common/help.h"
#include "common/modMain.h"
#include "common/window_help.h"
#include "platform/controls/boxes.h"
#include "platform/report/preview.h"
#include "shell/frmHelp_text.h"
#include "shell/help_contents.h"
#include "shell/help_controls.h"
#include "shell/help_search.h"
#include "shell/help_side_pane.h"
#include "shell/help_toolbar.h"

namespace {

void layOut(QWidget* window, QWidget* toolbar, QWidget* body, QWidget* status) {
    status->setContentsMargins(8, 3, 8, 5);
    auto* layout = new QVBoxLayout(window);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(toolbar);
    layout->addWidget(body, 1);
    layout->addWidget(status);
}

}  // namespace

frmHelp::frmHelp(QWidget* parent)
    : QWidget(parent, Qt::Window),
      splitter_(new QSplitter(this)),
      side_(new HelpSidePane(this)),
      text_(named(new HelpText(this), "Text", QStringLiteral("Help page"))),
      status_(named(new QLabel(this), "Status", QStringLiteral("Status"))),
      toolbar_(new HelpToolbar(this)) {
    setObjectName(QStringLiteral("frmHelp"));
    setWindowTitle(GetResString(1) + QStringLiteral(" - Help"));
    setAttribute(Qt::WA_QuitOnClose, false);
    // As wide as a page reads well in the user's font, and never larger than the screen.
    const int letter = fontMetrics().averageCharWidth();
    resize(QSize(130 * letter, 90 * letter).boundedTo(screen()->availableSize() * 0.9));
    splitter_->addWidget(side_);
    splitter_->addWidget(text_);
    splitter_->setStretchFactor(1, 1);
    splitter_->setChildrenCollapsible(false);
    layOut(this, toolbar_, splitter_, status_);
    connectParts();
    explainByF1(this, HelpTopic);
    setStatus({});
}

void frmHelp::connectParts() {
    connect(text_, &HelpText::anchorClicked, this, [this](const QUrl& url) { showPage(url.toString()); });
    connect(side_, &HelpSidePane::chosen, this, &frmHelp::showPage);
    connect(toolbar_, &HelpToolbar::stepWanted, this, &frmHelp::step);
    connect(toolbar_, &HelpToolbar::searched, this, &frmHelp::search);
    connect(toolbar_, &HelpToolbar::searchEntered, side_, &HelpSidePane::followFirstHit);
}

bool frmHelp::open(const QString& path, QString& errorText) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        errorText =
            QStringLiteral("The help file cannot be opened: ") + file.errorString() + QLatin1Char('.');
        return false;
    }
    if (!book_.fromFile(file.readAll(), errorText)) {
        return false;
    }
    path_ = path;
    history_.clear();
    toolbar_->clearSearch();
    side_->fill(book_);
    const int side = qMin(side_->contents().wantedWidth(), width() * 2 / 5);
    splitter_->setSizes({side, width() - side});
    return true;
}

void frmHelp::showContext(int context) {
    const HelpPlace target = book_.target(context);
    if (target.page.isEmpty()) {
        showContents();
        setStatus(QStringLiteral("There is no page for topic %1 yet. Here are the contents.").arg(context));
        return;
    }
    side_->showContents();
    visit(target);
    text_->setFocus();
}

void frmHelp::showContents() {
    side_->showContents();
    if (!book_.pages().isEmpty()) {
        visit({book_.pages().first().id, {}});
    }
    side_->contents().setFocus();
}

void frmHelp::showIndex() {
    if (currentPage().isEmpty() && !book_.pages().isEmpty()) {
        visit({book_.pages().first().id, {}});
    }
    side_->showIndex();
}

bool frmHelp::showPage(const QString& address) {
    const QString id = address.section(QLatin1Char('#'), 0, 0);
    const QString anchor = address.section(QLatin1Char('#'), 1);
    const HelpPage* page = book_.page(id.isEmpty() ? currentPage() : id);
    if (page == nullptr || !page->hasAnchor(anchor)) {
        setStatus(QStringLiteral("There is no such page: %1").arg(address));
        return false;
    }
    visit({page->id, anchor});
    return true;
}

void frmHelp::visit(const HelpPlace& place) {
    const bool isOtherPage = place.page != currentPage();
    history_.visit(place);
    showCurrent(isOtherPage);
}

void frmHelp::step(int direction) {
    if (history_.canStep(direction)) {
        const QString before = currentPage();
        history_.step(direction);
        showCurrent(currentPage() != before);
    }
}

void frmHelp::showCurrent(bool isOtherPage) {
    setStatus({});
    const HelpPage& page = *book_.page(currentPage());
    if (isOtherPage) {
        text_->showPage(book_, page);
        setWindowTitle(GetResString(1) + QStringLiteral(" - ") + page.title);
    }
    text_->goTo(currentAnchor());
    toolbar_->showSteps(history_);
    side_->contents().mark(page.id);
}

void frmHelp::search(const QString& words) {
    side_->clearHits();
    const QStringList wanted = words.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (wanted.isEmpty()) {
        setStatus({});
        return;
    }
    const QList<HelpHit> hits = searchHelp(book_, wanted);
    side_->showHits(hits);
    setStatus(hits.isEmpty() ? QStringLiteral("Nothing found for: %1").arg(words)
                             : QStringLiteral("Places found: %1").arg(hits.size()));
}

void frmHelp::setStatus(const QString& text) {
    status_->setText(text.isEmpty() ? QStringLiteral("Esc closes the help.") : text);
}

void frmHelp::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
        return;
    }
    QWidget::keyPressEvent(event);
}

void frmHelp::closeEvent(QCloseEvent* event) {
    toolbar_->clearSearch();
    QWidget::closeEvent(event);
}

namespace {

// The one help window, while there is one, and the file it shows as that stood when it was read.
QPointer<frmHelp> helpWindow;
QDateTime helpFileTime;

void closeHelpWindow() {
    delete helpWindow.data();
}

// A modal window lets nobody work in another one, except in its own children. So the help becomes its child.
void putAbove(QWidget* modal) {
    if (helpWindow->parentWidget() != modal) {
        const QRect place = helpWindow->geometry();
        helpWindow->setParent(modal, Qt::Window);
        helpWindow->setGeometry(place);
    }
}

bool openHelpWindow(const QString& file) {
    const QDateTime time = QFileInfo(file).lastModified();
    QWidget* modal = QApplication::activeModalWidget();
    if (helpWindow == nullptr) {
        helpWindow = new frmHelp(modal);
    } else if (helpWindow->path() == file && helpFileTime == time) {
        putAbove(modal);
        return true;
    }
    QString errorText;
    if (!helpWindow->open(file, errorText)) {
        closeHelpWindow();
        platform::showBox({.text = errorText + QLatin1Char('\n') + file,
                           .title = GetResString(1),
                           .icon = platform::BoxIcon::Exclamation});
        return false;
    }
    helpFileTime = time;
    putAbove(modal);
    return true;
}

bool view(const QString& file, HelpCommand command, int context) {
    if (command == HELP_QUIT) {
        closeHelpWindow();
        return true;
    }
    if (!openHelpWindow(file)) {
        return false;
    }
    helpWindow->show();
    helpWindow->raise();
    helpWindow->activateWindow();
    switch (command) {
        case HELP_CONTEXT:
            helpWindow->showContext(context);
            return true;
        case HELP_FINDER:
            helpWindow->showContents();
            return true;
        case HELP_KEY:
            helpWindow->showIndex();
            return true;
        case HELP_QUIT:
            break;
    }
    return false;
}

}  // namespace

void installHelpViewer() {
    setHelpViewer(&view);
    report::setPreviewHelp([] { showHelp(PreviewTopic); });
}
