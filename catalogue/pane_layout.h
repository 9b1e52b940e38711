#pragma once

class QVBoxLayout;
class QWidget;

// A pane's controls stand one under the other, its title first; the title's letter leads to `buddy`.
QVBoxLayout* paneLayout(QWidget* surface, int pane, const char* title, QWidget* buddy);
