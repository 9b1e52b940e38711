#pragma once

#include <memory>

#include "platform/dao/place.h"

namespace dao {

class OpenFile;

// The connection of this process to the place, made if there is none. 3049 for records that cannot be read.
std::shared_ptr<OpenFile> openPlace(const PlacePtr& place, bool writable, std::shared_ptr<Presence> presence);

}  // namespace dao
