#pragma once

#include <string>
#include <vector>

#include "measure.h"
#include "plain_texts.h"

// Which numbers have been found: one place a number.
using Marks = std::vector<char>;

class PlainShop;
class PlainServer;

// The list of services as a plain program fills it, from a file or a server (`Of`): ten cells a row.
template <class Of>
class PlainServices {
 public:
    // Of one computer. An order may stand behind it.
    static const std::string kStatement;

    void read(typename Of::Statement& services, int computer, const Marks* only);
    Lines result() const { return cells_.lines(10); }

 private:
    void add(const typename Of::Row& row);

    Cells cells_;
};

// What stands on the three stages of the main window: clients, the computers of the chosen client, the
// services of the chosen computer. `only`: the numbers that a filter has found; nullptr: all.
template <class Of>
class PlainStages {
 public:
    explicit PlainStages(Of& shop);

    void readClients(const Marks* only, std::size_t count = 0);
    void readComputers(const Marks* only);
    void readServices(const Marks* only);
    Lines clients() const { return clients_.lines(clients_.entryOf(client_)); }
    Lines result() const;

 private:
    void addClient(const typename Of::Row& row);

    Of& shop_;
    typename Of::Statement allClients_, oneClient_, computersOfClient_, servicesOfComputer_;
    PlainSelector clients_, computers_;
    PlainServices<Of> services_;
    int client_ = -1, computer_ = -1;  // the first of the table, which is the one on show
};
