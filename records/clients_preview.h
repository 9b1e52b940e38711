#pragma once

class QWidget;
class Stages;

// All clients of the filter in force, as a banded report before the person's eyes. A failure is told in a
// box.
void previewClients(QWidget& window, Stages& stages);
