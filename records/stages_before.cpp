#include "records/stages_before.h"

#include <utility>

#include "platform/controls/long_wait.h"
#include "platform/system/trap.h"
#include "records/stages.h"

using platform::LongWait;
using platform::Trap;

StagesBefore::StagesBefore(Stages& stages, bool narrowed) : stages_(stages) {
    if (narrowed) {
        LongWait::run([this] {
            for (const Stage& stage : stages_) {
                const std::string name = stages_.query(stage.index()).toStdString();
                queries_.push_back(stages_.database().QueryDefs()[name].SQL());
            }
        });
    }
    for (Stage& stage : stages_) {
        kept_.push_back(stage.keep());
    }
}

StagesBefore::~StagesBefore() {
    for (Stage::Kept& kept : kept_) {
        kept.reading.rows.Close();
    }
}

void StagesBefore::putBack() {
    const bool loading = std::exchange(stages_.LoadingList, true);
    for (Stage& stage : stages_) {
        const auto index = static_cast<std::size_t>(stage.index());
        Trap step;
        step([&] {
            LongWait::finish([&] {
                setWorkQuery(stages_, stage.index(),
                             queries_.empty() ? wholeTable(stage) : std::move(queries_[index]));
            });
        });
        stage.putBack(std::move(kept_[index]));
    }
    kept_.clear();
    stages_.LoadingList = loading;
}

void setWorkQuery(Stages& stages, int stageIndex, const std::string& statement) {
    stages.database().QueryDefs()[stages.query(stageIndex).toStdString()].setSQL(statement);
}

std::string wholeTable(const Stage& stage) {
    return std::string("SELECT * FROM ") + stage.facts().table;
}
