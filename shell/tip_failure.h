#pragma once

class QWidget;
namespace platform {
class Trap;
}

// Tells in a box over `owner` what failed in the tip's window: the text with this number, with the error and
// the line of the source where it stands.
void tellTipFailure(int textId, const platform::Trap& step, QWidget* owner);
