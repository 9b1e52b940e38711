#pragma once

class QWidget;

// What somebody who does not see the window is told of it. `window` is on show.

// Each control has a name that a screen reader can say, and a label that stands before a field or over it
// belongs to that field.
void expectSpoken(const QWidget& window);

// The Tab key goes as the eye goes: from the left to the right and from above downwards, never back.
void expectTabFollowsTheEye(const QWidget& window);
