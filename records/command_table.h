#pragma once

#include <functional>
#include <span>

#include "records/commands.h"

class FilterMenu;
class ListSorting;
class MainShape;
class ProgramWindows;
class QWidget;
class RecordEditing;
class RecordRemoval;
class ReportRun;
class ServiceCommands;
class ShopFilter;
class ShopSession;
class Stages;
struct MainChoices;

// Who does what a person tells the main window to do.
struct CommandTargets {
    QWidget& window;  // boxes and windows stand over it
    ProgramWindows& windows;
    MainChoices& choices;
    Stages& stages;
    RecordEditing& editing;
    RecordRemoval& removal;
    ServiceCommands& services;
    ListSorting& sorting;
    ShopFilter& filter;
    FilterMenu& filters;
    ShopSession& session;
    ReportRun& report;
    MainShape& shape;
    std::function<void()> unload;  // closes the window and with it the program
};

// The commands of the main window.
std::span<const CommandRow> commandTable();
