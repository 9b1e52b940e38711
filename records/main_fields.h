#pragma once

#include <span>

// The entry fields of the main window's panes, as a table: what is shown where, bound to which field of the
// database.

enum class EntryKind { Line, Lines, Date, Check };

struct EntryRow {
    EntryKind kind;
    int index;            // of Text1 (Line, Lines) or of DTPicker1 (Date); not used for Check
    const char* field;    // of the stage's table
    const char* caption;  // with its letter; empty where the block's title says it all
    int block;            // position in the stage's blocks
    int helpContext;      // topic of the help file
    int missingId;        // the message where it is empty: a record is not taken in without it; 0: none
};

// A framed block of fields: its place and span in the grid of its pane.
struct EntryBlock {
    const char* title;
    int row, column, rowSpan, columnSpan;
};

struct EntryPane {
    std::span<const EntryBlock> blocks;
    std::span<const EntryRow> rows;
    int typeAheadContext, selectorContext;
    const char* selectorCaption;
};

// Of stage index 0 (clients) or 1 (computers).
const EntryPane& entryPane(int stageIndex);

// Topics of what is no entry row.
constexpr int kMailHelp = 526;
constexpr int kWebHelp = 527;
constexpr int kClientPaneHelp = 528;
constexpr int kServiceListHelp = 701;
constexpr int kDescriptionHelp = 702;
constexpr int kServiceKindsHelp = 703;

// Fields that the rules speak of by name.
constexpr int kSurname = 0, kGivenName = 1, kNickName = 2, kFirmName = 6, kEMail = 15, kWeb = 16;
constexpr int kMachineName = 19, kDescription = 37, kServiceKinds = 38;
