#pragma once

class ProgramWindows;
class QWidget;
class ShopFilter;
struct MainChoices;

// The options window over the main one. Other windows read the program's switches when they open; what stands
// in this one follows at once.
void OpenOptions(QWidget& window, ProgramWindows& windows, MainChoices& choices, ShopFilter& filter);
