#pragma once

class QWidget;
struct MainChoices;
namespace platform {
class ListView;
}

// The main window's choices, out of the settings and into them. A failure is told in a box over the window.

// With the window's place. A setting that cannot be read keeps none of the others from being read.
void LoadSettings(QWidget& window, MainChoices& choices);
// With the window's place, unless it is minimized, and the columns of the list. All in one write of the file:
// the closing window waits for the disk once.
void SaveSettings(QWidget& window, MainChoices& choices, const platform::ListView& list);
