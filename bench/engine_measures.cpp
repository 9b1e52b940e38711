// The engine by itself: record sets without a window.
#include "our_sides.h"
#include "platform/dao/database_impl.h"
#include "records/quick_filters.h"
#include "shop.h"
#include "stored_texts.h"

namespace {

// --- Opening a dynaset over all services.

// The index over the owners holds the numbers on a twentieth of the pages; they come in another order then.
// The generated shop misses no number, so that three of them tell all.
class OpenPlain : public Side {
 public:
    explicit OpenPlain(Shop& shop)
        : range_(shop.plain(),
                 "SELECT (SELECT min(ID) FROM Services), (SELECT max(ID) FROM Services), (SELECT count(*) "
                 "FROM Services)") {}
    void run() override {
        while (range_.next()) {
            first_ = range_.row().integer(0);
            last_ = range_.row().integer(1);
            count_ = range_.row().integer(2);
        }
    }
    Lines result() override {
        std::vector<std::int64_t> keys;
        for (std::int64_t key = first_; last_ - first_ + 1 == count_ && key <= last_; ++key) {
            keys.push_back(key);
        }
        return linesOf(keys);
    }

 private:
    Statement range_;
    std::int64_t first_ = 0, last_ = -1, count_ = 0;
};

// --- Walking through all services.

class WalkPlain : public Side {
 public:
    explicit WalkPlain(Shop& shop)
        : shop_(shop.plain()),
          rows_(shop.plain(),
                "SELECT each_row(ID, MachineID, ServiceStarted, ServiceFinished, Price, Discount, "
                "ServiceTypes, "
                "Comments) FROM Services NOT INDEXED") {}
    void run() override {
        Sum sum;
        shop_.scan(rows_, [&sum](const Row& row) {
            sum.numbers += static_cast<double>(row.integer(0) + row.integer(1));
            sum.numbers += row.number(2);
            sum.numbers += row.number(3);
            sum.numbers += row.number(4) / 10000;
            sum.numbers += row.number(5);
            sum.letters += row.text(6).size() + row.text(7).size();
        });
        sum_ = sum;
    }
    Lines result() override { return sum_.lines(); }

 private:
    PlainShop& shop_;
    Statement rows_;
    Sum sum_;
};

// --- 10,000 services by number.

constexpr std::size_t kFound = 10000;

class FindPlain : public Side {
 public:
    explicit FindPlain(Shop& shop) : price_(shop.plain(), "SELECT Price FROM Services WHERE ID=?") {}
    void run() override {
        sum_ = 0;
        for (const int number : numbers_) {
            price_.bind(1, number);
            while (price_.next()) {
                sum_ += price_.row().integer(0);
            }
        }
    }
    Lines result() override { return {std::to_string(sum_)}; }

 private:
    const std::vector<int> numbers_ = randomNumbers(kFound);
    Statement price_;
    sqlite3_int64 sum_ = 0;
};

// --- 1,000 services changed.

constexpr int kEdited = 1000;

// One statement does it all: it reads the price under the lock that it writes under.
class EditPlain : public Side {
 public:
    explicit EditPlain(Shop& shop)
        : shop_(shop.plain()), change_(shop.plain(), "UPDATE Services SET Price=Price+1 WHERE ID=?") {}
    void run() override {
        for (int number = 1; number <= kEdited; ++number) {
            change_.bind(1, number).run();
        }
    }
    Lines result() override {
        return {std::to_string(
            shop_.number("SELECT sum(Price) FROM Services WHERE ID<=" + std::to_string(kEdited)))};
    }

 private:
    PlainShop& shop_;
    Statement change_;
};

// --- A stored query narrowed to 100,000 numbers, and the dynaset over it.

constexpr int kNarrowed = 100000;
constexpr const char* kNarrowedName = "QDBench";

int narrowedNumber(int index) {
    return 3 * index + 1;
}

// A blank more or less: a text that stayed the same would not have to be written or understood again.
class ChangedText {
 public:
    ChangedText() {
        text_ = "SELECT * FROM Services WHERE ";
        for (int i = 0; i < kNarrowed; ++i) {
            text_ += (i > 0 ? " OR ID=" : "ID=") + std::to_string(narrowedNumber(i));
        }
        text_ += ';';
        length_ = text_.size();
    }
    const std::string& next() {
        text_.resize(length_);
        text_.append(++turn_ % 7, ' ');
        return text_;
    }

 private:
    std::string text_;
    std::size_t length_ = 0, turn_ = 0;
};

class NarrowOurs : public Side {
 public:
    explicit NarrowOurs(Shop& shop)
        : shop_(shop), query_(shop.ours().CreateQueryDef(kNarrowedName, "SELECT * FROM Services")) {}
    ~NarrowOurs() override { shop_.ours().QueryDefs().Delete(kNarrowedName); }
    void run() override {
        query_.setSQL(text_.next());
        rows_ = shop_.ours().OpenRecordset(std::string("SELECT * FROM ") + kNarrowedName);
    }
    Lines result() override {
        Lines lines = numbersOf(rows_);
        lines.push_back(query_.SQL());
        return lines;
    }

 private:
    Shop& shop_;
    dao::QueryDef query_;
    dao::Recordset rows_;
    ChangedText text_;
};

// The program knows the numbers and need not read them out of its own text again.
class NarrowPlain : public Side {
 public:
    explicit NarrowPlain(Shop& shop)
        : shop_(shop.plain()),
          texts_(shop.plain(), {kNarrowedName}),
          all_(shop.plain(), "SELECT each_row(ID) FROM Services INDEXED BY ix_Services_MachineID") {
        for (int i = 0; i < kNarrowed; ++i) {
            wanted_.push_back(narrowedNumber(i));
        }
    }
    void run() override {
        texts_.write({&text_.next()});
        there_.assign(static_cast<std::size_t>(wanted_.back()) + 1, 0);
        shop_.scan(all_, [this](const Row& row) {
            if (const auto number = static_cast<std::size_t>(row.integer(0)); number < there_.size()) {
                there_[number] = 1;
            }
        });
        keys_.clear();
        for (const sqlite3_int64 number : wanted_) {
            if (there_[static_cast<std::size_t>(number)] != 0) {
                keys_.push_back(number);
            }
        }
    }
    Lines result() override {
        Lines lines = linesOf(keys_);
        lines.push_back(texts_.read().front());
        return lines;
    }

 private:
    PlainShop& shop_;
    StoredTexts<PlainShop> texts_;
    Statement all_;
    ChangedText text_;
    std::vector<std::int64_t> wanted_, keys_;
    std::vector<char> there_;
};

// --- Translating the five filters: read into a tree, looked up in the file's tables, written for the store.

class Translate : public Side {
 public:
    // `anew`: with a number of blanks behind it that no text has had yet, so that nothing has been kept of
    // it.
    Translate(Shop& shop, bool anew) : shop_(shop), anew_(anew) {
        for (int number = 0; number < static_cast<int>(quick_filters::kFilters.size()); ++number) {
            texts_.push_back(quick_filters::statement(number, 5).toStdString());
        }
    }
    void run() override {
        for (std::string& text : texts_) {
            if (anew_) {
                text += ' ';
            }
            shop_.ours().impl()->file().compile(text);
        }
    }

 private:
    Shop& shop_;
    bool anew_;
    std::vector<std::string> texts_;
};

}  // namespace

std::vector<Measure> engineMeasures() {
    return {
        {"open the set of all services", 1.3, side<OpenOurs>(), side<OpenPlain>(), 31},
        {"walk through all services, eight fields", 1.4, side<WalkOurs>(), side<WalkPlain>(), 15},
        {"find 10,000 services by number", 5, side<FindOurs>(kFound), side<FindPlain>(), 15},
        {"edit and update 1,000 services", 1.5, side<EditOurs>(kEdited), side<EditPlain>(), 9},
        {"narrow to 100,000 services, open again", 2, side<NarrowOurs>(), side<NarrowPlain>(), 15},
        {"translate the five filters", 0, side<Translate>(true), {}, 9, 100},
        {"translate the five filters again", 0, side<Translate>(false), {}, 9, 100},
    };
}
