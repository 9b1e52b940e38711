#pragma once

class QComboBox;
class QString;
class QWidget;
namespace dao {
class Recordset;
}
namespace platform {
class Trap;
}

// The units of measure to choose from for a product, with their numbers behind them.
class ProductUnits {
 public:
    explicit ProductUnits(QWidget* window);
    QComboBox* box() const { return box_; }
    // Reads the table of units; a failure is told in a box. `withNone`: an empty one (-1) before them, where
    // there are any.
    void fill(bool withNone);
    // The first whose text begins so, in any case; nothing is chosen where there is none.
    void choose(const QString& beginning);
    bool isChosen() const;

 private:
    void addRows(dao::Recordset& rows, bool withNone, platform::Trap& step);

    QWidget* window_;
    QComboBox* box_;  // a child of the window
};
