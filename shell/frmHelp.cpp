#include "shell/frmHelp.h"

#include <QAction>
#include <QApplication>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QScreen>
#include <QSplitter>
#include <QStyle>
#include <QTabWidget>
#include <QToolBar>
#include <QTreeWidget>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>

#include "common/help.h"
#include "common/modMain.h"
#include "platform/controls/boxes.h"
#include "shell/frmHelp_text.h"

namespace {

constexpr int kAddressRole = Qt::UserRole;

template <typename Widget>
Widget* named(Widget* widget, const char* name, const QString& accessibleName) {
    widget->setObjectName(QString::fromLatin1(name));
    widget->setAccessibleName(accessibleName);
    return widget;
}

QString addressOf(const QString& page, const QString& anchor) {
    return anchor.isEmpty() ? page : page + QLatin1Char('#') + anchor;
}

QListWidgetItem* listItem(QListWidget* list, const QString& text, const QString& address) {
    auto* item = new QListWidgetItem(text, list);
    item->setData(kAddressRole, address);
    return item;
}

}  // namespace

frmHelp::frmHelp(QWidget* parent) : QWidget(parent, Qt::Window) {
    setObjectName(QStringLiteral("frmHelp"));
    setWindowTitle(GetResString(1) + QStringLiteral(" - Help"));
    setAttribute(Qt::WA_QuitOnClose, false);
    // As wide as a page reads well in the user's font, and never larger than the screen.
    const int letter = fontMetrics().averageCharWidth();
    resize(QSize(130 * letter, 90 * letter).boundedTo(screen()->availableSize() * 0.9));

    text_ = named(new HelpText(this), "Text", QStringLiteral("Help page"));
    connect(text_, &HelpText::anchorClicked, this, [this](const QUrl& url) { showPage(url.toString()); });

    splitter_ = new QSplitter(this);
    splitter_->addWidget(buildSidePane());
    splitter_->addWidget(text_);
    splitter_->setStretchFactor(1, 1);
    splitter_->setChildrenCollapsible(false);

    status_ = named(new QLabel(this), "Status", QStringLiteral("Status"));
    status_->setContentsMargins(8, 3, 8, 5);

    buildActions();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(buildToolbar());
    layout->addWidget(splitter_, 1);
    layout->addWidget(status_);
    setStatus({});
}

void frmHelp::buildActions() {
    const auto action = [this](const char* name, const QString& text, QStyle::StandardPixmap picture,
                               const QKeySequence& keys, auto&& run) {
        auto* made = new QAction(style()->standardIcon(picture), text, this);
        made->setObjectName(QString::fromLatin1(name));
        made->setShortcut(keys);
        made->setToolTip(text + QStringLiteral(" (%1)").arg(keys.toString(QKeySequence::NativeText)));
        connect(made, &QAction::triggered, this, run);
        addAction(made);
        return made;
    };
    back_ = action("Back", QStringLiteral("Back"), QStyle::SP_ArrowBack, QKeySequence(Qt::ALT | Qt::Key_Left),
                   [this] { step(-1); });
    forward_ = action("Forward", QStringLiteral("Forward"), QStyle::SP_ArrowForward,
                      QKeySequence(Qt::ALT | Qt::Key_Right), [this] { step(1); });
    back_->setEnabled(false);
    forward_->setEnabled(false);
}

QWidget* frmHelp::buildToolbar() {
    auto* bar = named(new QToolBar(this), "Toolbar", QStringLiteral("Help toolbar"));
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    bar->addAction(back_);
    bar->addAction(forward_);
    auto* space = new QWidget(bar);
    space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    bar->addWidget(space);
    searchField_ = named(new QLineEdit(bar), "SearchField", QStringLiteral("Search in the help"));
    searchField_->setPlaceholderText(QStringLiteral("Search in the help (Ctrl+F)"));
    searchField_->setClearButtonEnabled(true);
    searchField_->setMaximumWidth(fontMetrics().averageCharWidth() * 40);
    connect(searchField_, &QLineEdit::textChanged, this, &frmHelp::search);
    connect(searchField_, &QLineEdit::returnPressed, this, [this] {
        hits_->setCurrentRow(0);
        followListItem(hits_->currentItem());
    });
    bar->addWidget(searchField_);

    auto* find = new QAction(this);
    find->setShortcut(QKeySequence::Find);
    connect(find, &QAction::triggered, searchField_,
            [this] { searchField_->setFocus(Qt::ShortcutFocusReason); });
    addAction(find);
    return bar;
}

QWidget* frmHelp::buildSidePane() {
    tabs_ = named(new QTabWidget(this), "Tabs", QStringLiteral("Ways to a page"));
    tabs_->setDocumentMode(true);
    tabs_->setMinimumWidth(fontMetrics().averageCharWidth() * 28);

    contents_ = named(new QTreeWidget(tabs_), "Contents", QStringLiteral("Contents"));
    contents_->header()->hide();
    connect(contents_, &QTreeWidget::currentItemChanged, this, [this](const QTreeWidgetItem* item) {
        if (item != nullptr) {
            showPage(item->data(0, kAddressRole).toString());
        }
    });

    auto* indexPane = new QWidget(tabs_);
    indexField_ =
        named(new QLineEdit(indexPane), "IndexField", QStringLiteral("Look up a word in the index"));
    indexField_->setPlaceholderText(QStringLiteral("Type the first letters"));
    index_ = named(new QListWidget(indexPane), "Index", QStringLiteral("Index"));
    hits_ = named(new QListWidget(tabs_), "Hits", QStringLiteral("Places found"));
    hits_->setWordWrap(true);
    auto* layout = new QVBoxLayout(indexPane);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(indexField_);
    layout->addWidget(index_);

    connect(indexField_, &QLineEdit::textChanged, this, &frmHelp::filterIndex);
    connect(indexField_, &QLineEdit::returnPressed, this, [this] { followListItem(index_->currentItem()); });
    for (QListWidget* list : {index_, hits_}) {
        connect(list, &QListWidget::itemActivated, this, &frmHelp::followListItem);
        connect(list, &QListWidget::itemClicked, this, &frmHelp::followListItem);
    }

    tabs_->addTab(contents_, QStringLiteral("&Contents"));
    tabs_->addTab(indexPane, QStringLiteral("&Index"));
    tabs_->addTab(hits_, QStringLiteral("&Found"));
    return tabs_;
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
    historyAt_ = -1;
    currentPage_.clear();
    currentAnchor_.clear();
    searchField_->clear();
    fillContents();
    fillIndex();
    return true;
}

void frmHelp::fillContents() {
    const QSignalBlocker quiet(contents_);
    contents_->clear();
    QHash<QString, QTreeWidgetItem*> items;
    for (const HelpPage& page : book_.pages()) {
        auto* item = new QTreeWidgetItem({page.title});
        item->setData(0, kAddressRole, page.id);
        items.insert(page.id, item);
    }
    for (const HelpPage& page : book_.pages()) {
        QTreeWidgetItem* above = items.value(page.parent);
        above != nullptr ? above->addChild(items.value(page.id))
                         : contents_->addTopLevelItem(items.value(page.id));
    }
    contents_->expandAll();
    const int wide = static_cast<QAbstractItemView*>(contents_)->sizeHintForColumn(0);
    const int side = qMin(wide + 2 * style()->pixelMetric(QStyle::PM_ScrollBarExtent), width() * 2 / 5);
    splitter_->setSizes({side, width() - side});
}

void frmHelp::fillIndex() {
    struct Entry {
        QString word, title, address;
    };
    QList<Entry> entries;
    QHash<QString, int> times;
    for (const HelpPage& page : book_.pages()) {
        for (const HelpPage::Keyword& keyword : page.keywords) {
            entries += {keyword.word, page.title, addressOf(page.id, keyword.anchor)};
            ++times[keyword.word];
        }
    }
    std::stable_sort(entries.begin(), entries.end(), [](const Entry& one, const Entry& other) {
        return one.word.compare(other.word, Qt::CaseInsensitive) < 0;
    });
    index_->clear();
    for (const Entry& entry : entries) {
        const bool alone = times.value(entry.word) == 1;
        listItem(index_, alone ? entry.word : QStringLiteral("%1 (%2)").arg(entry.word, entry.title),
                 entry.address);
    }
    index_->setCurrentRow(0);
}

void frmHelp::filterIndex(const QString& words) {
    int first = -1;
    for (int row = 0; row < index_->count(); ++row) {
        const bool fits = index_->item(row)->text().contains(words.trimmed(), Qt::CaseInsensitive);
        index_->item(row)->setHidden(!fits);
        first = fits && first < 0 ? row : first;
    }
    index_->setCurrentRow(first);
}

void frmHelp::followListItem(const QListWidgetItem* item) {
    if (item != nullptr) {
        showPage(item->data(kAddressRole).toString());
    }
}

void frmHelp::showContext(int context) {
    const HelpBook::Target target = book_.target(context);
    if (target.page.isEmpty()) {
        showContents();
        setStatus(QStringLiteral("There is no page for topic %1 yet. Here are the contents.").arg(context));
        return;
    }
    tabs_->setCurrentWidget(contents_);
    go({target.page, target.anchor}, true);
    text_->setFocus();
}

void frmHelp::showContents() {
    tabs_->setCurrentWidget(contents_);
    if (!book_.pages().isEmpty()) {
        go({book_.pages().first().id, {}}, true);
    }
    contents_->setFocus();
}

void frmHelp::showIndex() {
    if (currentPage_.isEmpty() && !book_.pages().isEmpty()) {
        go({book_.pages().first().id, {}}, true);
    }
    tabs_->setCurrentIndex(tabs_->indexOf(index_->parentWidget()));
    indexField_->setFocus();
    indexField_->selectAll();
}

bool frmHelp::showPage(const QString& address) {
    const QString id = address.section(QLatin1Char('#'), 0, 0);
    const QString anchor = address.section(QLatin1Char('#'), 1);
    const HelpPage* page = book_.page(id.isEmpty() ? currentPage_ : id);
    if (page == nullptr || !page->hasAnchor(anchor)) {
        setStatus(QStringLiteral("There is no such page: %1").arg(address));
        return false;
    }
    go({page->id, anchor}, true);
    return true;
}

void frmHelp::go(const Place& place, bool remember) {
    const HelpPage* page = book_.page(place.page);
    if (page == nullptr) {
        return;
    }
    setStatus({});
    const bool isNew = place.page != currentPage_ || place.anchor != currentAnchor_;
    if (place.page != currentPage_) {
        text_->showPage(book_, *page);
        setWindowTitle(GetResString(1) + QStringLiteral(" - ") + page->title);
    }
    currentPage_ = place.page;
    currentAnchor_ = place.anchor;
    text_->goTo(place.anchor);
    if (remember && isNew) {
        history_ = history_.mid(0, historyAt_ + 1);
        history_ += place;
        historyAt_ = history_.size() - 1;
    }
    back_->setEnabled(historyAt_ > 0);
    forward_->setEnabled(historyAt_ + 1 < history_.size());
    markCurrent();
}

void frmHelp::step(int direction) {
    const qsizetype at = historyAt_ + direction;
    if (at >= 0 && at < history_.size()) {
        historyAt_ = at;
        go(history_[at], false);
    }
}

void frmHelp::markCurrent() {
    const QSignalBlocker quiet(contents_);
    for (QTreeWidgetItemIterator item(contents_); *item != nullptr; ++item) {
        if ((*item)->data(0, kAddressRole).toString() == currentPage_) {
            contents_->setCurrentItem(*item);
        }
    }
}

namespace {

// A page falls into the pieces under its headings, so that a search leads to the paragraph and not just to
// the page.
struct Section {
    QString heading, anchor, text;
};

QList<Section> sectionsOf(const HelpPage& page) {
    QList<Section> sections = {{page.title, {}, page.title}};
    const QStringList anchors = page.headingAnchors();
    const QStringList lines = page.plainMarkdown().split(QLatin1Char('\n'));
    qsizetype heading = 0;
    for (const QString& line : lines) {
        if (line.startsWith(QLatin1Char('#'))) {
            const QString text = line.mid(line.indexOf(QLatin1Char(' ')) + 1);
            sections += {text, anchors.value(heading++), text};
        } else {
            sections.last().text += QLatin1Char(' ') + line;
        }
    }
    return sections;
}

bool holdsAll(const QString& text, const QStringList& words) {
    return std::all_of(words.begin(), words.end(),
                       [&](const QString& word) { return text.contains(word, Qt::CaseInsensitive); });
}

}  // namespace

void frmHelp::search(const QString& words) {
    hits_->clear();
    const QStringList wanted = words.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (wanted.isEmpty()) {
        setStatus({});
        return;
    }
    for (const HelpPage& page : book_.pages()) {
        for (const Section& section : sectionsOf(page)) {
            if (holdsAll(section.text, wanted)) {
                const bool isHead = section.heading == page.title;
                listItem(hits_, isHead ? page.title : page.title + QStringLiteral(": ") + section.heading,
                         addressOf(page.id, section.anchor));
            }
        }
    }
    tabs_->setCurrentWidget(hits_);
    setStatus(hits_->count() == 0 ? QStringLiteral("Nothing found for: %1").arg(words)
                                  : QStringLiteral("Places found: %1").arg(hits_->count()));
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
    searchField_->clear();
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
}
