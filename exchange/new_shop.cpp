#include "exchange/new_shop.h"

#include <algorithm>
#include <bit>

#include "data/schema.h"
#include "data/session.h"
#include "platform/dao/breaking_off.h"
#include "platform/dao/failure.h"
#include "platform/dao/file_catalog.h"
#include "platform/dao/names.h"

namespace exchange {
namespace {

using dao::FieldDef;
using dao::TableDef;
using dao::Value;

std::uint64_t mixed(std::uint64_t digest, std::uint64_t word) {
    digest ^= word + 0x9e3779b97f4a7c15ULL + (digest << 6) + (digest >> 2);
    digest *= 0xff51afd7ed558ccdULL;
    return digest ^ (digest >> 32);
}

std::uint64_t bitsOf(const Value& value) {
    struct Bits {
        std::uint64_t operator()(std::monostate) const { return 0; }
        std::uint64_t operator()(bool v) const { return v ? 1 : 0; }
        std::uint64_t operator()(std::int32_t v) const { return static_cast<std::uint32_t>(v); }
        std::uint64_t operator()(float v) const { return std::bit_cast<std::uint64_t>(double{v} + 0.0); }
        std::uint64_t operator()(double v) const { return std::bit_cast<std::uint64_t>(v + 0.0); }
        std::uint64_t operator()(dao::Currency v) const { return static_cast<std::uint64_t>(v.scaled()); }
        std::uint64_t operator()(dao::Date v) const { return std::bit_cast<std::uint64_t>(v.days + 0.0); }
        std::uint64_t operator()(const std::string& v) const { return std::hash<std::string>()(v); }
    };
    return mixed(value.store().index(), std::visit(Bits{}, value.store()));
}

}  // namespace

NewShop::NewShop(const std::string& target) : filling_(target, connectText().toStdString()) {
    createTables();
}

std::vector<TableDef> NewShop::tables() {
    std::vector<TableDef> all = data::shopSchema().tables;
    all.push_back(data::documentNumbers());
    return all;
}

const TableDef* NewShop::table(std::string_view name) {
    static const std::vector<TableDef> all = tables();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const TableDef& one) { return dao::sameName(one.Name(), name); });
    return found == all.end() ? nullptr : &*found;
}

dao::Type NewShop::typeOf(const FieldDef& field) {
    switch (field.Type) {
        case dao::dbBoolean:
            return dao::Type::YesNo;
        case dao::dbLong:
            return dao::Type::Long;
        case dao::dbCurrency:
            return dao::Type::Currency;
        case dao::dbSingle:
            return dao::Type::Single;
        case dao::dbDate:
            return dao::Type::Date;
        case dao::dbText:
        case dao::dbMemo:
            break;
    }
    return dao::Type::Text;
}

void NewShop::createTables() {
    const data::Schema& schema = data::shopSchema();
    dao::driver::Store& store = filling_.store();
    for (const TableDef& table : schema.tables) {
        store.definitions().createTable(table);
    }
    for (const dao::Relation& relation : schema.relations) {
        store.definitions().createRelation(relation);
    }
    for (const auto& [name, statement] : schema.queries) {
        store.storedQueries().writeQuery(name, statement);
    }
    store.definitions().setForm(data::kShopForm);
}

void NewShop::watch(std::int64_t allRows, dao::RowWatch watch) {
    state_.all = allRows;
    watch_ = std::move(watch);
}

void NewShop::tell(const std::string& table, std::size_t rows) {
    state_.table = table;
    state_.done += static_cast<std::int64_t>(rows);
    if (watch_) {
        watch_(state_);
    }
}

void NewShop::addTo(Sum& sum, const dao::RowBlock& rows, std::span<const std::size_t> places) {
    Value value;
    for (std::size_t row = 0; row < rows.rows(); ++row) {
        std::uint64_t digest = 1;
        for (const std::size_t place : places) {
            if (place < rows.columns()) {
                rows.get(row, place, value);
            } else {
                value = Value();
            }
            digest = mixed(digest, bitsOf(value));
        }
        sum.digest += digest;
    }
    sum.rows += rows.rows();
}

void NewShop::add(const std::string& name, std::span<const std::string_view> fields,
                  const dao::RowBlock& rows) {
    const TableDef* definition = table(name);
    if (definition == nullptr) {
        dao::fail(dao::errUnknownObject);
    }
    if (dao::sameName(name, data::documentNumbers().Name()) && added_.count(definition->Name()) == 0) {
        filling_.store().definitions().createTable(*definition);
    }
    dao::needGoingOn();
    std::vector<std::size_t> places;
    for (const FieldDef& field : definition->Fields()) {
        const auto found = std::find_if(fields.begin(), fields.end(),
                                        [&](std::string_view one) { return dao::sameName(one, field.Name); });
        places.push_back(static_cast<std::size_t>(found - fields.begin()));
        if (field.counter && found != fields.end()) {
            Value number;
            std::int64_t& highest = highest_[definition->Name()];
            for (std::size_t row = 0; row < rows.rows(); ++row) {
                rows.get(row, places.back(), number);
                highest = std::max<std::int64_t>(highest, number.asLong());
            }
        }
    }
    filling_.store().rows().insertRows(definition->Name(), fields, rows);
    addTo(added_[definition->Name()], rows, places);
    tell(definition->Name(), rows.rows());
}

void NewShop::countFrom(const std::string& name, std::int64_t highest) {
    std::int64_t& now = highest_[name];
    now = std::max(now, highest);
}

void NewShop::keep() {
    for (const auto& [name, highest] : highest_) {
        if (highest > 0) {
            filling_.store().counters().setHighestNumber(name, highest);
        }
    }
    filling_.keep();
    state_.comparing = true;
    state_.done = 0;
    for (const TableDef& table : tables()) {
        compare(table);
    }
}

void NewShop::compare(const TableDef& table) {
    Sum kept;
    std::vector<std::size_t> places(table.Fields().size());
    for (std::size_t i = 0; i < places.size(); ++i) {
        places[i] = i;
    }
    read(table.Name(), [&](const dao::RowBlock& rows) {
        addTo(kept, rows, places);
        tell(table.Name(), rows.rows());
    });
    if (kept != added_[table.Name()]) {
        dao::fail(dao::errDiskIo,
                  "The new shop does not hold what was put into it: the table '" + table.Name() + "'.");
    }
    const auto highest = highest_.find(table.Name());
    if (highest != highest_.end() &&
        filling_.store().counters().highestNumber(table.Name()) < highest->second) {
        dao::fail(dao::errDiskIo, "The new shop would give numbers of '" + table.Name() + "' twice.");
    }
}

void NewShop::read(const std::string& name, const RowReader& reader) {
    dao::FileCatalog catalog(filling_.store());
    catalog.refresh();
    const sql::TableInfo* found = catalog.findTable(name);
    if (found == nullptr) {
        return;
    }
    dao::TableReader rows(filling_.store(), catalog, *found);
    while (rows.next()) {
        reader(rows.block());
    }
}

}  // namespace exchange
