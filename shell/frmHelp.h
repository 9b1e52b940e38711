#pragma once

#include <QWidget>

#include "shell/help_file.h"

class HelpText;
class QAction;
class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QSplitter;
class QTabWidget;
class QTreeWidget;

// The help viewer: contents, index and search on the left, the page on the right. One window for the whole
// program, opened by WinHelp; it lies above the modal window that asked for it, and Escape closes it.
class frmHelp : public QWidget {
    Q_OBJECT

 public:
    explicit frmHelp(QWidget* parent = nullptr);

    // Reads a help file; on failure the window keeps what it had, and errorText says what is wrong.
    bool open(const QString& path, QString& errorText);
    QString path() const { return path_; }

    void showContext(int context);  // an unknown number opens the contents and says so in the status line
    void showContents();
    void showIndex();
    // "page", "page#anchor" or "#anchor"; false where there is no such place.
    bool showPage(const QString& address);
    void search(const QString& words);

    QString currentPage() const { return currentPage_; }      // its id; empty before the first
    QString currentAnchor() const { return currentAnchor_; }  // empty: the page's head

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

 private:
    struct Place {
        QString page, anchor;
    };
    QWidget* buildToolbar();
    QWidget* buildSidePane();
    void buildActions();
    void fillContents();
    void fillIndex();
    void filterIndex(const QString& words);
    void go(const Place& place, bool remember);
    void step(int direction);
    void markCurrent();
    void setStatus(const QString& text);
    void followListItem(const QListWidgetItem* item);

    HelpBook book_;
    QString path_;
    QString currentPage_, currentAnchor_;
    QList<Place> history_;
    qsizetype historyAt_ = -1;

    QSplitter* splitter_ = nullptr;
    QTabWidget* tabs_ = nullptr;
    QTreeWidget* contents_ = nullptr;
    QLineEdit* indexField_ = nullptr;
    QListWidget* index_ = nullptr;
    QLineEdit* searchField_ = nullptr;
    QListWidget* hits_ = nullptr;
    HelpText* text_ = nullptr;
    QLabel* status_ = nullptr;
    QAction* back_ = nullptr;
    QAction* forward_ = nullptr;
};

// Puts the window in as the program's help viewer. What WinHelp is asked then returns whether it could be
// shown; a file that cannot be read is reported in a box.
void installHelpViewer();
