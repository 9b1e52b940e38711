#pragma once

#include <QString>

#include "shell/settings.h"

// The entries of the document window that are kept from one document to the next, and what each starts with.
namespace print_invoice {

inline const QString kSection = QStringLiteral("frmPrintInvoiceEx");

inline const settings::Setting& setting(const char* key) {
    return settings::find(kSection, QLatin1String(key));
}

// Where a colleague has chosen nothing yet, the shop's usual wording stands.
struct TextRow {
    int index;  // of Text2
    const char* key;
    const char* tag;
};
constexpr TextRow kTexts[] = {
    {0, "OstaliTrosak", ""},
    {1, "txtNacinPlacanja1", "Nacin placanja:"},
    {2, "txtNacinPlacanja2", "100% avans."},
    {3, "txtRokPlacanja1", "Rok za uplatu:"},
    {4, "txtRokPlacanja2", "Tri dana od datuma dokumenta."},
    {5, "txtRokIsporuke1", "Rok isporuke:"},
    {6, "txtRokIsporuke2", "Odmah nakon uplate."},
    {7, "txtIsporuka1", "Isporuka:"},
    {8, "txtIsporuka2", "FCO prostorije firme."},
    {9, "txtNapomena1", "Napomena:"},
    {10, "txtNapomena2", ""},
    {11, "txtPecatPotpis",
     "Dokument je uradjen na racunaru i vazi bez pecata i potpisa. U slucaju spora, nadlezan je privredni "
     "sud "
     "u Smederevu."},
    {12, "txtFooter", ""},
};

struct CheckRow {
    int index;  // of Check1
    const char* key;
};
constexpr CheckRow kChecked[] = {
    {1, "ChkNacinPlacanja"}, {2, "ChkRokPlacanja"}, {3, "ChkRokIsporuke"}, {4, "ChkIsporuka"},
    {5, "ChkNapomena"},      {6, "ChkPecatPotpis"}, {7, "ChkFooter"},      {8, "ChkFooterFromSett"},
};

// Text1, from 0: the same keys here and in the options, both veiled.
constexpr const char* kFirm[] = {"frmSettMatBr", "frmSettRegBr", "frmSettSifDel",
                                 "frmSettPIB",   "frmSettPDV",   "frmSettRnBr"};

constexpr char kOstalo[] = "frmSettKupacOstalo";

struct ComboRow {
    int index;  // of Combo1
    const char* key;
    int usual;
};
constexpr ComboRow kCombos[] = {{0, "NumberDelimiter", 0}, {1, "NumberSuffix", 0}, {2, "PriceRoundUp", 2}};

}  // namespace print_invoice
