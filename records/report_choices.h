#pragma once

// What goes into the text report: the sixteen choices as the shop set them. The main window keeps them, the
// options window changes them, the report obeys them. IncludeServices is kept and shown and changes nothing:
// services are written whenever computers are.
struct ReportChoices {
    bool IncludeClients = true;
    bool ShowOnlySelectedClient = true;
    bool PrintBirthDetails = true;
    bool PrintPIDCardDetails = true;
    bool PrintAddressDetails = true;
    bool PrintContactDetails = true;
    bool PrintClientComments = true;
    bool IncludeComputers = true;
    bool ShowOnlySelectedComputer = true;
    bool PrintMemoryDetails = true;
    bool PrintStorageDetails = true;
    bool PrintPheriperalDetails = true;
    bool PrintOSDetails = true;
    bool PrintComputerComments = true;
    bool IncludeServices = true;
    bool ShowOnlySelectedService = true;
};
