#pragma once

#include <QString>

#include "platform/system/sort_tag.h"

class QWidget;

// What a command does to the order of a list; in numbers as they are told from outside.
enum class SortMode { RefreshOnly = 0, Ascending = 1, Descending = 2, NoSort = 3 };

// A pane's sort tag taken apart and put together. A failure is told in a box over `owner`, and gives: not
// sorted, empty field, "ASC"; and "0Naziv0".
platform::SortTag readSortTag(const QString& tag, QWidget* owner);
QString writeSortTag(const platform::SortTag& sort, QWidget* owner);
