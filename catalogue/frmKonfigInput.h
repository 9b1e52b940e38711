#pragma once

#include <QDialog>
#include <array>
#include <memory>

#include "catalogue/product_properties.h"

class ProductEntryFields;
class ProductHint;
class QHBoxLayout;
class QPushButton;

// The entry window of a product. It knows nothing of the products' table, only the list of units: its caller
// sets the properties, shows it with Display, reads them back. Prices in euro.
//
// What is typed belongs to the fields (ProductEntryFields); the window opens and closes, and takes what was
// typed over into the properties.
class frmKonfigInput : public QDialog, public ProductProperties {
    Q_OBJECT
 public:
    enum Mode { NewProduct = 0, ExistingProduct = 1, Search = 2 };

    explicit frmKonfigInput(QWidget* parent = nullptr);
    ~frmKonfigInput() override;

    QWidget* ParentForm = nullptr;
    int OpenMode = NewProduct;
    bool Cancelled = false;
    bool ContinueInput = true;

    void Display();  // loads on the first showing; returns when it is hidden. May be shown again, with what
                     // was typed.
    void Unload();   // stores the place; once. The destructor does it otherwise.

 public slots:
    void reject() override;  // Escape, the close box: cancelled

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    enum Button { StoreAndGoOn, Store, Cancel, Count };

    void buildButtons(QHBoxLayout* row);
    void connectParts();
    void load();
    void showProduct();
    void dressForMode();
    void updateButtons();
    void press(Button button);
    void takeProduct();

    std::unique_ptr<ProductEntryFields> fields_;
    std::unique_ptr<ProductHint> hint_;
    std::array<QPushButton*, Count> command_{};
    bool loaded_ = false;
    bool unloaded_ = false;
};
