#pragma once

// Where the tests find what they read. Defined in a unit of its own, so that only that one knows the folders
// of this machine, and every other is the same object in every clone.

namespace tests {

// The folder "tests" of the source tree, without a slash at its end.
extern const char* const kSourceFolder;
// The folder with the built database, help file and tips.
extern const char* const kDeliveredFolder;

}  // namespace tests
