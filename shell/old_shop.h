#pragma once

// What the start does with a file of the old database format in the place of the shop's: it is taken over
// where the person wants that. From here on; before the database is looked at.
void offerToTakeOldShops();
