#pragma once

class QWidget;
struct MainChoices;
namespace platform {
class ListView;
}

// The main window's choices, out of the settings and into them. A failure is told in a box over the window,
// and the settings behind it are read or written all the same.

// With the window's place.
void LoadSettings(QWidget& window, MainChoices& choices);
// With the window's place, unless it is minimized, and the columns of the list.
void SaveSettings(QWidget& window, MainChoices& choices, const platform::ListView& list);
