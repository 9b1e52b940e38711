#include "catalogue/catalogue_names.h"

#include "catalogue/catalogue_parts.h"
#include "catalogue/catalogue_switch.h"
#include "catalogue/type_ahead.h"

CatalogueNames::CatalogueNames(QWidget* window, WindowCommands& commands)
    : parts_(std::make_unique<CatalogueParts>(window, commands)),
      Data1{&parts_->groups.data(), &parts_->manufacturers.data(), &parts_->products.data()},
      SortTagOf({&parts_->groups.sortTag, &parts_->manufacturers.sortTag, &parts_->products.sortTag}),
      List1{&parts_->groups.rows(), &parts_->manufacturers.rows()},
      Text1{parts_->groups.search().box(), parts_->manufacturers.search().box()},
      Text1_2(parts_->products.detail().box()),
      ListView1(&parts_->products.rows()),
      Toolbar1(parts_->bars.toolbar()),
      StatusBar1(parts_->status.bar()),
      cP(parts_->menus.popup()),
      ParentForm(parts_->copies.parentForm),
      PrikaziStanjaVecaOdNule(parts_->status.aboveZero().on),
      PrikaziSveProizvodjace(parts_->status.allManufacturers().on),
      Napomena(parts_->products.detail().note),
      JM(parts_->products.detail().unit) {}

CatalogueNames::~CatalogueNames() = default;
