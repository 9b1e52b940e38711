#pragma once

#include "tools/verbs/talk.h"

namespace CLI {
class App;
}

// Each adds a verb of its own to the command: its words, its --help, and what is done when it was the one
// called. A verb throws what is to be told; where it throws, nothing is changed that the sentence does not
// name. `talk` outlives the parsing.
void addMove(CLI::App& app, Talk& talk);
void addTakeOver(CLI::App& app, Talk& talk);
void addCopy(CLI::App& app, Talk& talk);
void addCheck(CLI::App& app, Talk& talk);
void addRepair(CLI::App& app, Talk& talk);
void addCompact(CLI::App& app, Talk& talk);
void addQueries(CLI::App& app, Talk& talk);
void addExport(CLI::App& app, Talk& talk);
void addImport(CLI::App& app, Talk& talk);
void addImportProducts(CLI::App& app, Talk& talk);
