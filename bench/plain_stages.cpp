#include "plain_stages.h"

#include <cmath>

#include "common/modMain.h"
#include "plain_server.h"
#include "plain_shop.h"

namespace {

constexpr const char* kClientColumns = "CustID, Surname, GivenName, NickName, FirmName, FirmAddress";
constexpr double kFirstRealDate = 32874;  // 1 January 1990: the list shows nothing older

bool isShown(double date) {
    return std::floor(date) >= kFirstRealDate;
}

bool isBlank(std::string_view text) {
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

// In the unit on screen, in ten-thousandths.
std::int64_t shown(std::int64_t stored) {
    return CeneDinarske ? std::llround(static_cast<double>(stored) * KursKupovni) : stored;
}

// In ten-thousandths, each step rounded as amounts are.
bool isPaid(std::int64_t price, double discount, double tax, std::int64_t paid) {
    constexpr std::int64_t kTolerance = 10;  // cents
    const std::int64_t net = price - std::llround(static_cast<double>(price) * discount / 100);
    const std::int64_t gross = std::llround(static_cast<double>(net) * (1 + tax / 100));
    return price > 0 && centsOf(gross - paid) < kTolerance;
}

void addDate(Cells& cells, double date) {
    if (isShown(date)) {
        appendDate(cells.text(), date);
    }
    cells.end();
}

void addAmount(Cells& cells, std::int64_t scaled) {
    appendAmount(cells.text(), centsOf(scaled));
    cells.end();
}

void addPercent(Cells& cells, double percent) {
    appendSingle(cells.text(), static_cast<float>(percent));
    cells.end();
}

// A few rows are quicker looked up one by one than met on the way through the whole table.
constexpr std::size_t kFew = 8;  // one in so many

}  // namespace

// --- Services.

template <class Of>
const std::string PlainServices<Of>::kStatement =
    "SELECT ID, ServiceStarted, ServiceToBeFinished, ServiceFinished, Price, Discount, GST, Paid, "
    "ServiceTypes, "
    "Comments FROM Services WHERE MachineID=?";

template <class Of>
void PlainServices<Of>::read(typename Of::Statement& services, int computer, const Marks* only) {
    cells_.clear();
    services.bind(1, computer);
    while (services.next()) {
        const typename Of::Row row = services.row();
        if (only == nullptr || (*only)[static_cast<std::size_t>(row.integer(0))] != 0) {
            add(row);
        }
    }
}

template <class Of>
void PlainServices<Of>::add(const typename Of::Row& row) {
    const double finished = row.number(3), discount = row.number(5), tax = row.number(6);
    const std::int64_t price = shown(row.integer(4)), paid = shown(row.integer(7));
    appendNumber(cells_.text() += 'K', row.integer(0));
    cells_.end();
    appendDate(cells_.text(), row.number(1));
    cells_.end();
    cells_.text() += isShown(finished) ? "Finished" : "NotFinished";
    cells_.add(isPaid(price, discount, tax, paid) ? "Payed" : "NotPayed");
    addDate(cells_, row.number(2));
    addDate(cells_, finished);
    addAmount(cells_, price);
    addPercent(cells_, discount);
    addPercent(cells_, tax);
    addAmount(cells_, paid);
    cells_.text() += row.text(8);
    cells_.text() += "##";
    cells_.add(row.text(9));
}

// --- The stages.

template <class Of>
PlainStages<Of>::PlainStages(Of& shop)
    : shop_(shop),
      allClients_(shop, "SELECT " + Of::each(kClientColumns) + " FROM Customers" + Of::inOrder("CustID")),
      oneClient_(shop, std::string("SELECT ") + kClientColumns + " FROM Customers WHERE CustID=?"),
      computersOfClient_(shop,
                         "SELECT MachineID, MachineName FROM Computers WHERE CustID=? ORDER BY MachineID"),
      servicesOfComputer_(shop, PlainServices<Of>::kStatement + " ORDER BY ID") {}

template <class Of>
void PlainStages<Of>::addClient(const typename Of::Row& row) {
    const int number = static_cast<int>(row.integer(0));
    if (client_ < 0) {
        client_ = number;
    }
    std::string& text = clients_.text();
    if (const std::string_view firm = row.text(4); row.integer(5) != 0 && !isBlank(firm)) {
        text += firm;
        return clients_.end(number);
    }
    text += row.text(1);
    text += ", ";
    text += row.text(2);
    if (const std::string_view nick = row.text(3); !nick.empty()) {
        text += " - ";
        text += nick;
    }
    clients_.end(number);
}

template <class Of>
void PlainStages<Of>::readClients(const Marks* only, std::size_t count) {
    clients_.clear();
    client_ = -1;
    if (only != nullptr && count < only->size() / kFew) {
        for (std::size_t number = 0; number < only->size(); ++number) {
            if ((*only)[number] == 0) {
                continue;
            }
            oneClient_.bind(1, static_cast<std::int64_t>(number));
            while (oneClient_.next()) {
                addClient(oneClient_.row());
            }
        }
    } else {
        shop_.scan(allClients_, [&](const typename Of::Row& row) {
            if (only == nullptr || (*only)[static_cast<std::size_t>(row.integer(0))] != 0) {
                addClient(row);
            }
        });
    }
    clients_.sort();
}

template <class Of>
void PlainStages<Of>::readComputers(const Marks* only) {
    computers_.clear();
    computer_ = -1;
    computersOfClient_.bind(1, client_);
    while (computersOfClient_.next()) {
        const typename Of::Row row = computersOfClient_.row();
        const int number = static_cast<int>(row.integer(0));
        if (only != nullptr && (*only)[static_cast<std::size_t>(number)] == 0) {
            continue;
        }
        if (computer_ < 0) {
            computer_ = number;
        }
        computers_.text() += row.text(1);
        computers_.end(number);
    }
    computers_.sort();
}

template <class Of>
void PlainStages<Of>::readServices(const Marks* only) {
    services_.read(servicesOfComputer_, computer_, only);
}

template <class Of>
Lines PlainStages<Of>::result() const {
    Lines lines = clients();
    for (const Lines& more : {computers_.lines(computers_.entryOf(computer_)), services_.result()}) {
        lines.insert(lines.end(), more.begin(), more.end());
    }
    return lines;
}

template class PlainServices<PlainShop>;
template class PlainServices<PlainServer>;
template class PlainStages<PlainShop>;
template class PlainStages<PlainServer>;
