#pragma once

#include <QDialog>

#include "platform/report/document.h"

class QAction;
class QToolBar;

namespace report {

class FindBar;
class PageField;
class PageView;
class ZoomField;

// What F1 in a preview does. Nothing where none is set.
using PreviewHelp = void (*)();
void setPreviewHelp(PreviewHelp help);

// A document on the screen: its pages, a contents pane where it has contents, search, print, PDF.
//
// Keys: Ctrl+P print, Ctrl+S PDF, Ctrl+F search, F3 and Shift+F3 the next and the previous place, Ctrl with
// plus, minus and 0 zoom, Home and End the first and the last page, PgUp and PgDn a screenful, Ctrl+PgUp and
// Ctrl+PgDn a page, Ctrl+G the page field, F1 help, Esc closes.
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

 protected:
    void keyPressEvent(QKeyEvent* event) override;

 private:
    struct Command;
    void addCommands();
    QAction* addCommand(const Command& command);
    void addContentsButton(QWidget& contents);
    void goToPage(int step);
    void tellFailure(const QString& text, const QString& detail);

    const Document document_;
    QToolBar* bar_;
    PageView* view_;
    PageField* page_ = nullptr;
    ZoomField* zoom_ = nullptr;
    FindBar* find_ = nullptr;
};

}  // namespace report
