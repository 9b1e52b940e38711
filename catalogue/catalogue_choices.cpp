#include "catalogue/catalogue_choices.h"

#include "catalogue/catalogue_parts.h"
#include "catalogue/catalogue_switch.h"
#include "common/list_columns.h"
#include "common/settings.h"
#include "platform/controls/list_view.h"
#include "platform/system/trap.h"

namespace {

constexpr const settings::Setting* kSortSettings[] = {
    &settings::catalogue.GRPSort, &settings::catalogue.MFTSort, &settings::catalogue.PRDSort};

}  // namespace

void CatalogueChoices::loadSwitches() {
    parts_.status.aboveZero().on = settings::boolean(settings::catalogue.PrikaziStanjaVecaOdNule);
    parts_.status.allManufacturers().on = settings::boolean(settings::catalogue.PrikaziSveProizvodjace);
    for (CatalogueSwitch* each : parts_.status.switches()) {
        each->refresh();
    }
}

void CatalogueChoices::loadOrders() {
    for (int i = 0; i < CatalogueBars::kPanes; ++i) {
        parts_.pane(i).sortTag = settings::text(*kSortSettings[i]);
    }
}

void CatalogueChoices::loadColumns(platform::Trap& step) {
    step([&] { showUnit(parts_.products.rows(), productColumns()); });
    placeColumns(parts_.products.rows(), settings::text(settings::catalogue.LVWColumnWidths),
                 settings::text(settings::catalogue.LVWColumnPositions), step);
}

void CatalogueChoices::save(platform::Trap& step) const {
    const auto keep = [&](const settings::Setting& setting, auto store, const auto& value) {
        step([&] { store(setting, value); });
    };
    keep(settings::catalogue.PrikaziStanjaVecaOdNule, settings::setBoolean, parts_.status.aboveZero().on);
    keep(settings::catalogue.PrikaziSveProizvodjace, settings::setBoolean,
         parts_.status.allManufacturers().on);
    for (int i = 0; i < CatalogueBars::kPanes; ++i) {
        keep(*kSortSettings[i], settings::setText, parts_.pane(i).sortTag);
    }
    keep(settings::catalogue.LVWColumnWidths, settings::setText, columnWidths(parts_.products.rows()));
    keep(settings::catalogue.LVWColumnPositions, settings::setText, columnPositions(parts_.products.rows()));
}
