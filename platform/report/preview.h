#pragma once

#include <QDialog>
#include <QList>
#include <functional>

#include "platform/report/document.h"

class QAction;
class QComboBox;
class QFrame;
class QLabel;
class QLineEdit;
class QSpinBox;
class QToolBar;
class QTreeWidget;

namespace report {

class PageView;

// A document on the screen: its pages, a contents pane where it has contents, search, print, PDF.
//
// Keys: Ctrl+P print, Ctrl+S PDF, Ctrl+F search, F3 and Shift+F3 the next and the previous place, Ctrl with
// plus, minus and 0 zoom, Home and End the first and the last page, PgUp and PgDn a screenful, Ctrl+PgUp and
// Ctrl+PgDn a page, Ctrl+G the page field, Esc closes.
class ReportPreview : public QDialog {
    Q_OBJECT
 public:
    explicit ReportPreview(Document document, QWidget* parent = nullptr);
    const Document& document() const { return document_; }
    PageView& pages() { return *view_; }

 public slots:
    void print();
    // Failures of both are told in a box.
    void savePdf();
    void openFind();
    void findNext();
    void findPrevious();

 protected:
    void keyPressEvent(QKeyEvent* event) override;

 private:
    struct Command;
    void addCommands();
    QAction* addCommand(const Command& command);
    void addPageField();
    void addZoomField();
    QWidget* contentsPane();
    QWidget* findBar();
    void showZoom(double zoom);
    void takeZoom(int index);
    void readZoom();
    void goOn(int step);
    void search();
    void closeFind();
    void tell(const QString& text);
    void goToPage(int step);
    void tellFailure(const QString& text, const QString& detail);

    const Document document_;
    QToolBar* bar_;
    PageView* view_;
    QSpinBox* page_ = nullptr;
    QComboBox* zoom_ = nullptr;
    QTreeWidget* contents_ = nullptr;
    QFrame* findBar_ = nullptr;
    QLineEdit* find_ = nullptr;
    QLabel* found_ = nullptr;
    QList<Hit> hits_;
    QString searched_;
    int hit_ = -1;
};

}  // namespace report
