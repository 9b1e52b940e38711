#pragma once

#include <cstdint>

#include "platform/dao/database.h"

namespace data {

// How large a shop to invent. All people and firms in it are invented, and nobody can be reached: addresses
// end in
// ".example", telephone numbers begin with 555. The same plan gives the same rows on every machine.
struct DemoPlan {
    int clients = 60;
    int computers = 90;  // at least as many as clients gives everybody one
    int services = 300;
    // One computer owns exactly that many of the services, and the others share the rest evenly. 0: no such
    // computer, and the services fall as they do in a small shop, a few machines coming back again and again.
    int busiest = 0;
    std::uint32_t seed = 17;
    double baseDate = 46203;  // the shop's today, days since 30 December 1899: 30 June 2026. The year before
                              // it is told; nothing lies behind it but due dates.
};

// Fills the three tables of the chain, and InvoiceData for some jobs, in a database that has kinds of service
// and a catalogue and no clients. One transaction. Throws dao::Error, and std::invalid_argument for a plan
// that cannot be: negative numbers, computers without clients, services without computers, `busiest` above
// `services`. The stock of the catalogue is left alone: it is what is on the shelf after that year.
void fillDemoShop(dao::Database& database, const DemoPlan& plan);

}  // namespace data
