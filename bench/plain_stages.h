#pragma once

#include "plain_shop.h"
#include "plain_texts.h"

// Which numbers have been found: one place a number.
using Marks = std::vector<char>;

// The list of services as a plain program fills it: ten cells a row.
class PlainServices {
 public:
    // Of one computer. An order may stand behind it.
    static const std::string kStatement;

    void read(Statement& services, int computer, const Marks* only);
    Lines result() const { return cells_.lines(10); }

 private:
    void add(const Row& row);

    Cells cells_;
};

// What stands on the three stages of the main window: clients, the computers of the chosen client, the
// services of the chosen computer. `only`: the numbers that a filter has found; nullptr: all.
class PlainStages {
 public:
    explicit PlainStages(PlainShop& shop);

    void readClients(const Marks* only, std::size_t count = 0);
    void readComputers(const Marks* only);
    void readServices(const Marks* only);
    Lines clients() const { return clients_.lines(clients_.entryOf(client_)); }
    Lines result() const;

 private:
    void addClient(const Row& row);

    PlainShop& shop_;
    Statement allClients_, oneClient_, computersOfClient_, servicesOfComputer_;
    PlainSelector clients_, computers_;
    PlainServices services_;
    int client_ = -1, computer_ = -1;  // the first of the table, which is the one on show
};
