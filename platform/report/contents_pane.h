#pragma once

#include <QTreeWidget>
#include <vector>

#include "platform/report/document.h"

namespace report {

class PageView;

// What a document contains, as a tree; an entry that somebody comes to brings its place into sight.
class ContentsPane : public QTreeWidget {
    Q_OBJECT
 public:
    // The view must live as long as this.
    ContentsPane(const std::vector<ContentsEntry>& contents, PageView& view, QWidget* parent);

 private:
    void fill(const std::vector<ContentsEntry>& contents);
};

}  // namespace report
