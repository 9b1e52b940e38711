#include "records/kept_rows.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

using dao::Value;

// A row of its own.
class OneRow final : public ReportRows {
 public:
    explicit OneRow(std::vector<Value> values) : values_(std::move(values)) {}
    std::int64_t count() const override { return 1; }
    void goTo(std::int64_t) override {}
    void next() override {}
    bool has(int) const override { return true; }
    const Value* value(int field) const override {
        const Value& value = values_[static_cast<std::size_t>(field)];
        return value.isNull() ? nullptr : &value;
    }

 private:
    std::vector<Value> values_;
};

KeptRows kept(const std::vector<std::vector<Value>>& rows, int order = -1) {
    std::string bytes;
    for (const std::vector<Value>& row : rows) {
        KeptRows::keep(OneRow(row), row.size(), bytes);
    }
    return {bytes, std::vector<bool>(rows.empty() ? 1 : rows.front().size(), true), 0, order};
}

std::vector<std::string> second(KeptRows rows) {
    std::vector<std::string> texts;
    for (std::int64_t place = 0; place < rows.count(); ++place) {
        rows.goTo(place);
        const Value* value = rows.value(1);
        texts.push_back(value == nullptr ? "Null" : value->asText());
    }
    return texts;
}

using Texts = std::vector<std::string>;

TEST(KeptRows, HoldEveryKindOfValueAsItWas) {
    const std::vector<Value> values{Value(7),
                                    Value(),
                                    Value(true),
                                    Value(2.5F),
                                    Value(-0.125),
                                    Value(dao::Currency::fromScaled(123456789012)),
                                    Value(dao::Date{46090.75}),
                                    Value(""),
                                    Value("Šarić\nof Niš"),
                                    Value(std::string(70000, 'x'))};
    const KeptRows rows = kept({values});
    ASSERT_EQ(rows.count(), 1);
    for (std::size_t field = 0; field < values.size(); ++field) {
        const Value* value = rows.value(static_cast<int>(field));
        EXPECT_EQ(value == nullptr ? Value() : *value, values[field]) << field;
    }
}

TEST(KeptRows, GoFromOneToTheNext) {
    KeptRows rows = kept({{Value(1), Value("a")}, {Value(1), Value()}, {Value(1), Value("c")}});
    EXPECT_EQ(rows.text(1), "a");
    rows.next();
    EXPECT_EQ(rows.text(1), "");
    rows.next();
    EXPECT_EQ(rows.text(1), "c");
    rows.goTo(0);
    EXPECT_EQ(rows.text(1), "a");
}

TEST(KeptRows, StandByTheirOwnersAndThenAsTheyWereKept) {
    EXPECT_EQ(second(kept({{Value(20), Value("first")},
                           {Value(3), Value("second")},
                           {Value(20), Value("a third")},
                           {Value(3), Value("a fourth")}})),
              (Texts{"second", "a fourth", "first", "a third"}));
}

TEST(KeptRows, StandInTheAlphabetOfTheShopNullFirst) {
    EXPECT_EQ(second(kept({{Value(1), Value("zebra")},
                           {Value(1), Value("Čačak")},
                           {Value(1), Value("cup")},
                           {Value(1), Value()},
                           {Value(1), Value("")}},
                          1)),
              (Texts{"Null", "", "cup", "Čačak", "zebra"}));
}

TEST(KeptRows, StandByTheirDates) {
    EXPECT_EQ(second(kept({{Value(1), Value(dao::Date{46000})},
                           {Value(1), Value(dao::Date{9000.5})},
                           {Value(1), Value()},
                           {Value(1), Value(dao::Date{9000.25})}},
                          1)),
              (Texts{"Null", Value(dao::Date{9000.25}).asText(), Value(dao::Date{9000.5}).asText(),
                     Value(dao::Date{46000}).asText()}));
}

TEST(KeptRows, ThatAreNoneHaveNone) {
    EXPECT_EQ(kept({}).count(), 0);
}

}  // namespace
