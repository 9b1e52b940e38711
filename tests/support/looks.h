#pragma once

#include <QString>
#include <QStringList>

class QTextDocument;
class QWidget;
namespace report {
class Document;
class Report;
}  // namespace report

// What a person sees of a window or of a printed page, written down: words, hover texts, letters, colours,
// order and grid, but no pixels, which differ with the letters of the machine. The looks that were once
// looked at and found good lie in tests/looks; whatever changes them, wanted or not, is told line by line.
//
// After a change that was wanted: run the test with TARVELLO_WRITE_LOOKS=1, look at the window, read the
// difference.

// Compares with tests/looks/NAME.txt, and asks what is said of the window aloud. `window` is on show.
void expectLooks(const QWidget& window, const QString& name);
void expectLooks(const report::Document& document, const QString& name);
// The design of a report before it runs, twip by twip: `sections` by their names.
void expectDesign(report::Report& report, const QStringList& sections, const QString& name);
// Headings, tables and pictures of a text with its margins, in points of the page.
void expectLooks(const QTextDocument& text, const QString& name);
// Any text that was read once and found good.
void expectText(const QString& found, const QString& name);
