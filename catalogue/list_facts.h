#pragma once

#include "catalogue/catalogue_pane.h"

// What the lists above the products do not share.
struct ListFacts {
    int index;  // of the pane's controls
    const char* table;
    const char* field;
    const char* title;
    const char* accessible;
    const char* search;
    // Its name stands in the rows of the products; and its choice restricts nothing while those of all
    // manufacturers are shown.
    bool isShownWithProducts;
    CataloguePane::Words words;
};
const ListFacts& groupFacts();
const ListFacts& manufacturerFacts();
