#include "support/places.h"

namespace tests {

const char* const kSourceFolder = TESTS_SOURCE_DIR;
const char* const kDeliveredFolder = DELIVERED_DIR;

}  // namespace tests
