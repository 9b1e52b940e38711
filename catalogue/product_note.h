#pragma once

class QPlainTextEdit;
class QWidget;

// The box for a product's note, a child of the window. Takes no more characters than the products' table
// holds: of a text that is too long the part that was put in last gives way.
QPlainTextEdit* addProductNote(QWidget* window);
