#include "catalogue/list_facts.h"

const ListFacts& groupFacts() {
    static constexpr ListFacts kGroups{
        .index = 0,
        .table = "Grupe",
        .field = "Grupa",
        .title = "&Grupe:",
        .accessible = "Grupe",
        .search = "Trazi grupu",
        .isShownWithProducts = false,
        .words = {
            "GRUPE", "Grupa proizvoda",
            "Neocekivana greska prilikom popunjavanja liste grupa kompjuterske opreme:", "FillListBox"}};
    return kGroups;
}

const ListFacts& manufacturerFacts() {
    static constexpr ListFacts kManufacturers{
        .index = 1,
        .table = "Proizvodjaci",
        .field = "Proizvodjac",
        .title = "P&roizvodjaci:",
        .accessible = "Proizvodjaci",
        .search = "Trazi proizvodjaca",
        .isShownWithProducts = true,
        .words = {"PROIZVODJACI", "Proizvodjaca proizvoda",
                  "Neocekivana greska prilikom popunjavanja liste proizvodjaca kompjuterske opreme:",
                  "FillListBox"}};
    return kManufacturers;
}
