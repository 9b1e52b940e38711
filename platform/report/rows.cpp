#include "platform/report/rows.h"

#include <QHash>
#include <optional>
#include <unordered_map>

#include "platform/dao/error.h"
#include "platform/dao/recordset.h"
#include "platform/dao/value.h"
#include "platform/system/trap.h"

namespace report {
namespace {

// A long report takes its time, and the colleagues go on working meanwhile: a row that somebody deletes under
// it is left out.
class RecordsetRows : public RowSource {
 public:
    RecordsetRows(const dao::Recordset& rows, const RowsTaken& taken) : rows_(rows), taken_(taken) {}

    void rewind() override {
        begun_ = false;
        if (taken_.failure) {
            taken_.failure->clear();
        }
    }
    bool next() override {
        return noted<bool>([this] { return stepToRow(); });
    }
    dao::Value value(const QString& field) override {
        return noted<dao::Value>([&] { return rows_ ? valueOf(field) : dao::Value(); });
    }
    qint64 count() override {
        return noted<qint64>([this] { return rows_ ? rows_.RecordCount() : 0; });
    }

 private:
    template <typename Result, typename Step>
    Result noted(Step&& step) {
        if (!taken_.failure) {
            return step();
        }
        Result result{};
        (*taken_.failure)([&] { result = step(); });
        return result;
    }
    bool stepToRow() {
        do {
            if (!step()) {
                return false;
            }
        } while (isGone());
        return true;
    }
    bool step() {
        if (begun_) {
            rows_.MoveNext();
        } else if (!rows_ || (rows_.BOF() && rows_.EOF())) {
            return false;
        } else {
            rows_.MoveFirst();
        }
        begun_ = true;
        return !rows_.EOF();
    }
    bool isGone() const {
        try {
            rows_.Fields(0).Value();
        } catch (const dao::Error& error) {
            if (error.Number() != dao::errRecordDeleted) {
                throw;
            }
            return true;
        }
        return false;
    }
    dao::Value valueOf(const QString& name) {
        auto known = fields_.find(name);
        if (known == fields_.end()) {
            known = fields_.emplace(name, fieldOf(name)).first;
        }
        const std::optional<dao::Field>& field = known->second;
        return field.has_value() ? field->Value() : dao::Value();
    }
    std::optional<dao::Field> fieldOf(const QString& name) const {
        try {
            return rows_.Fields(name.toStdString());
        } catch (const dao::Error& error) {
            if (!taken_.lacking || error.Number() != dao::errItemNotFound) {
                throw;
            }
            return std::nullopt;
        }
    }

    dao::Recordset rows_;
    RowsTaken taken_;
    std::unordered_map<QString, std::optional<dao::Field>> fields_;
    bool begun_ = false;
};

}  // namespace

std::unique_ptr<RowSource> rowsOf(const dao::Recordset& rows, const RowsTaken& taken) {
    return std::make_unique<RecordsetRows>(rows, taken);
}

}  // namespace report
