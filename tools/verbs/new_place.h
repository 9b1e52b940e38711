#pragma once

#include <string>

// What a verb makes stands under its name whole, and never in the place of something else: throws with a
// sentence where anything stands at `path` already, a link to nothing as well.
void needNothingAt(const std::string& path);
