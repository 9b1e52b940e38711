#pragma once

// The rows of the table of settings (common/settings.h): ROW(section, key, kind, default as the store would
// hold it). Each group becomes a structure of named rows, and a part of the table that is walked as a whole.

// The widths and places of the services list start as the table of its columns says: no default here.
#define GENERAL_SETTINGS(ROW)                                \
    ROW(Settings, DatabasePath, Text, "")                    \
    ROW(Settings, HelpFilePath, Text, "")                    \
    ROW(Settings, ProperlyClosed, Boolean, "")               \
    ROW(Settings, CeneDinarske, Boolean, "True")             \
    ROW(Settings, AskBeforeDelete, Boolean, "True")          \
    ROW(Settings, MakeProperCase, Boolean, "True")           \
    ROW(Settings, ShowTipsAtStartup, Boolean, "1")           \
    ROW(Settings, ShowTipsAtRandom, Boolean, "0")            \
    ROW(Settings, KursKupovni, Number, "80")                 \
    ROW(Settings, MainPosition, Place, "500;500")            \
    ROW(Settings, ToolbarVisible, Boolean, "True")           \
    ROW(Settings, StatusbarVisible, Boolean, "True")         \
    ROW(Settings, LVWSorted, Boolean, "False")               \
    ROW(Settings, LVWSortField, Text, "ServiceStarted")      \
    ROW(Settings, LVWSortOrder, Text, "ASC")                 \
    ROW(Settings, LVWColumnWidths, List, "")                 \
    ROW(Settings, LVWColumnPositions, List, "")              \
    ROW(Settings, IncludeClients, Boolean, "True")           \
    ROW(Settings, IncludeComputers, Boolean, "True")         \
    ROW(Settings, IncludeServices, Boolean, "True")          \
    ROW(Settings, ShowOnlySelectedClient, Boolean, "True")   \
    ROW(Settings, ShowOnlySelectedComputer, Boolean, "True") \
    ROW(Settings, ShowOnlySelectedService, Boolean, "True")  \
    ROW(Settings, PrintBirthDetails, Boolean, "True")        \
    ROW(Settings, PrintPIDCardDetails, Boolean, "True")      \
    ROW(Settings, PrintAddressDetails, Boolean, "True")      \
    ROW(Settings, PrintContactDetails, Boolean, "True")      \
    ROW(Settings, PrintClientComments, Boolean, "True")      \
    ROW(Settings, PrintMemoryDetails, Boolean, "True")       \
    ROW(Settings, PrintStorageDetails, Boolean, "True")      \
    ROW(Settings, PrintPheriperalDetails, Boolean, "True")   \
    ROW(Settings, PrintOSDetails, Boolean, "True")           \
    ROW(Settings, PrintComputerComments, Boolean, "True")    \
    ROW(Settings, AlwaysCreateBackupDB, Boolean, "True")     \
    ROW(Settings, ShowFilterStatistics, Boolean, "True")     \
    ROW(Settings, DefaultGST, Integer, "0")                  \
    ROW(Settings, DueDateDiff, Integer, "5")                 \
    ROW(Settings, DetailsPosition, Place, "500;500")         \
    ROW(Settings, ReportOptionsPosition, Place, "500;500")   \
    ROW(Settings, LegendPosition, Place, "1500;1500")        \
    ROW(Settings, OptionsPosition, Place, "500;500")         \
    ROW(Settings, KonfigInputWindowData, Place, "800;800")

#define FIRM_SETTINGS(ROW)                      \
    ROW(Settings, frmSettAdresa, Scrambled, "") \
    ROW(Settings, frmSettGrad, Scrambled, "")   \
    ROW(Settings, frmSettZip, Scrambled, "")    \
    ROW(Settings, frmSettTel, Scrambled, "")    \
    ROW(Settings, frmSettFax, Scrambled, "")    \
    ROW(Settings, frmSettEmail, Scrambled, "")  \
    ROW(Settings, frmSettWWW, Scrambled, "")    \
    ROW(Settings, frmSettMatBr, Scrambled, "")  \
    ROW(Settings, frmSettRegBr, Scrambled, "")  \
    ROW(Settings, frmSettSifDel, Scrambled, "") \
    ROW(Settings, frmSettPIB, Scrambled, "")    \
    ROW(Settings, frmSettPDV, Scrambled, "")    \
    ROW(Settings, frmSettRnBr, Scrambled, "")

#define CATALOGUE_SETTINGS(ROW)                                               \
    ROW(frmKonfiguratorEx, WindowData, PlaceAndSize, "800;800;12000;8000")    \
    ROW(frmKonfiguratorEx, PrikaziStanjaVecaOdNule, Boolean, "False")         \
    ROW(frmKonfiguratorEx, PrikaziSveProizvodjace, Boolean, "False")          \
    ROW(frmKonfiguratorEx, VerticalSplitPosition, Integer, "50")              \
    ROW(frmKonfiguratorEx, HorisontalSplitPosition, Integer, "50")            \
    ROW(frmKonfiguratorEx, GRPSort, SortState, "0Grupa0")                     \
    ROW(frmKonfiguratorEx, MFTSort, SortState, "0Proizvodjac0")               \
    ROW(frmKonfiguratorEx, PRDSort, SortState, "0Naziv0")                     \
    ROW(frmKonfiguratorEx, LVWColumnWidths, List, "1440;1440;1440;1440;1440") \
    ROW(frmKonfiguratorEx, LVWColumnPositions, List, "1;2;3;4;5")

// The gap between the sixth and the seventh width of the requisition's columns has always been there: that
// column starts with no width.
#define REQUISITION_SETTINGS(ROW)                                                        \
    ROW(frmInvoiceEx, WindowData, PlaceAndSize, "800;800;12000;8000")                    \
    ROW(frmInvoiceEx, LVWColumnSort, SortState, "0Proizvodjac0")                         \
    ROW(frmInvoiceEx, LVWColumnWidths, List, "1440;1440;1440;1440;1440;1440;;1440;1440") \
    ROW(frmInvoiceEx, LVWColumnPositions, List, "1;2;3;4;5;6;7;8")

#define SHORTAGE_SETTINGS(ROW)                                                      \
    ROW(frmTrebovanjeError, WindowData, PlaceAndSize, "800;800;12000;8000")         \
    ROW(frmTrebovanjeError, LVWColumnWidths, List, "1440;1440;1440;1440;1440;1440") \
    ROW(frmTrebovanjeError, LVWColumnPositions, List, "1;2;3;4;5;6")

#define PRICE_LIST_SETTINGS(ROW)                        \
    ROW(frmKonfigPrint, WindowData, Place, "1800;1800") \
    ROW(frmKonfigPrint, PageHeader, Text, "")           \
    ROW(frmKonfigPrint, PageFooter, Text, "")           \
    ROW(frmKonfigPrint, UseFirmsData, Integer, "1")     \
    ROW(frmKonfigPrint, TOCVisible, Integer, "1")       \
    ROW(frmKonfigPrint, OptionRangeIndex, Integer, "0") \
    ROW(frmKonfigPrint, OptionStateIndex, Integer, "0") \
    ROW(frmKonfigPrint, PriceRoundUp, Integer, "0")

#define DOCUMENT_SETTINGS(ROW)                              \
    ROW(frmPrintInvoiceEx, WindowData, Place, "1800;1800")  \
    ROW(frmPrintInvoiceEx, TabIndex, Integer, "1")          \
    ROW(frmPrintInvoiceEx, PriceRoundUp, Integer, "2")      \
    ROW(frmPrintInvoiceEx, NumberDelimiter, Integer, "0")   \
    ROW(frmPrintInvoiceEx, NumberSuffix, Integer, "0")      \
    ROW(frmPrintInvoiceEx, Slovima, Integer, "0")           \
    ROW(frmPrintInvoiceEx, OstaliTrosak, Text, "")          \
    ROW(frmPrintInvoiceEx, ChkNacinPlacanja, Integer, "1")  \
    ROW(frmPrintInvoiceEx, ChkRokPlacanja, Integer, "1")    \
    ROW(frmPrintInvoiceEx, ChkRokIsporuke, Integer, "1")    \
    ROW(frmPrintInvoiceEx, ChkIsporuka, Integer, "1")       \
    ROW(frmPrintInvoiceEx, ChkNapomena, Integer, "1")       \
    ROW(frmPrintInvoiceEx, ChkPecatPotpis, Integer, "1")    \
    ROW(frmPrintInvoiceEx, ChkFooter, Integer, "1")         \
    ROW(frmPrintInvoiceEx, ChkFooterFromSett, Integer, "1") \
    ROW(frmPrintInvoiceEx, txtNacinPlacanja1, Text, "")     \
    ROW(frmPrintInvoiceEx, txtNacinPlacanja2, Text, "")     \
    ROW(frmPrintInvoiceEx, txtRokPlacanja1, Text, "")       \
    ROW(frmPrintInvoiceEx, txtRokPlacanja2, Text, "")       \
    ROW(frmPrintInvoiceEx, txtRokIsporuke1, Text, "")       \
    ROW(frmPrintInvoiceEx, txtRokIsporuke2, Text, "")       \
    ROW(frmPrintInvoiceEx, txtIsporuka1, Text, "")          \
    ROW(frmPrintInvoiceEx, txtIsporuka2, Text, "")          \
    ROW(frmPrintInvoiceEx, txtNapomena1, Text, "")          \
    ROW(frmPrintInvoiceEx, txtNapomena2, Text, "")          \
    ROW(frmPrintInvoiceEx, txtPecatPotpis, Text, "")        \
    ROW(frmPrintInvoiceEx, txtFooter, Text, "")             \
    ROW(frmPrintInvoiceEx, frmSettMatBr, Scrambled, "")     \
    ROW(frmPrintInvoiceEx, frmSettRegBr, Scrambled, "")     \
    ROW(frmPrintInvoiceEx, frmSettSifDel, Scrambled, "")    \
    ROW(frmPrintInvoiceEx, frmSettPIB, Scrambled, "")       \
    ROW(frmPrintInvoiceEx, frmSettPDV, Scrambled, "")       \
    ROW(frmPrintInvoiceEx, frmSettRnBr, Scrambled, "")      \
    ROW(frmPrintInvoiceEx, frmSettKupacOstalo, Text, "")

#define UNITS_SETTINGS(ROW)                  \
    ROW(frmJM, WindowData, Place, "500;500") \
    ROW(frmJM, Sorted, Integer, "0")         \
    ROW(frmJM, SortedHow, Text, "ASC")

#define DRAW_INPUT_SETTINGS(ROW)                   \
    ROW(frmInputBox, WindowData, Place, "500;500") \
    ROW(frmInputBox, MakeProperCase, Boolean, "1") \
    ROW(frmInputBox, AppendSerialNumber, Boolean, "0")
