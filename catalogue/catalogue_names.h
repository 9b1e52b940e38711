#pragma once

#include <QString>
#include <array>
#include <memory>

#include "common/array_view.h"

class CatalogueParent;
class QLineEdit;
class QTextEdit;
class QToolBar;
class QWidget;
class WindowCommands;
struct CatalogueParts;
namespace platform {
class DataControl;
class ListBox;
class ListView;
class PopupMenu;
class StatusBar;
}  // namespace platform

// The parts of the catalogue, and their controls and state under the names by which the shop's other windows
// know them: views of what the parts own.
class CatalogueNames {
 public:
    CatalogueNames(const CatalogueNames&) = delete;
    CatalogueNames& operator=(const CatalogueNames&) = delete;

 protected:
    CatalogueNames(QWidget* window, WindowCommands& commands);
    ~CatalogueNames();

    const std::unique_ptr<CatalogueParts> parts_;

 public:
    static constexpr int kGroups = 0, kManufacturers = 1, kProducts = 2;
    static constexpr int kPanes = 3, kListPanes = 2;

    const std::array<platform::DataControl*, kPanes> Data1;
    // Data1(i).Tag: how a pane is sorted.
    const ArrayView<QString, kPanes> SortTagOf;
    const std::array<platform::ListBox*, kListPanes> List1;
    const std::array<QLineEdit*, kListPanes> Text1;  // search boxes; the detail box is Text1(2)
    QTextEdit* const Text1_2;                        // object name "Text1(2)", read-only
    platform::ListView* const ListView1;
    QToolBar* const Toolbar1;
    platform::StatusBar* const StatusBar1;
    platform::PopupMenu* const& cP;  // nullptr once the window has been unloaded
    CatalogueParent*& ParentForm;
    bool &PrikaziStanjaVecaOdNule, &PrikaziSveProizvodjace;
    const QString &Napomena, &JM;  // of the selected product
};
