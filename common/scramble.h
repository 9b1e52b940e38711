#pragma once

#include <QString>

// How the firm's data lie in the settings, so that nobody reads them by chance.
// Scrambled: ScrambleChars(ScrambleOrder(plain, false)); plain again: ScrambleOrder(ScrambleChars(scrambled),
// true).
QString ScrambleOrder(const QString& text, bool flag);
QString ScrambleChars(const QString& text);
