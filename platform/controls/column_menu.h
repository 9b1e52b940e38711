#pragma once

class QHeaderView;

namespace platform {

class ViewColumns;

// A right click on the header opens a menu of the columns: those that are shown are ticked, and a choice
// hides one or brings it out. The last one on show stays. `columns` are those of the header, and live as long
// as it.
void offerColumns(ViewColumns& columns, QHeaderView& header);

}  // namespace platform
