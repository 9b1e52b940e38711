#pragma once

#include <array>
#include <string>
#include <vector>

#include "records/stage.h"

class Stages;

// The stages as they stand before they are read afresh, for a reading that may be left: the record sets with
// the entries of the selectors, and the stored queries that they are of.
class StagesBefore {
 public:
    // Takes the record sets out of the stages. `narrowed`: the stored queries are not those of the whole
    // shop. Throws dao::Error.
    StagesBefore(Stages& stages, bool narrowed);
    ~StagesBefore();  // closes what was not put back
    StagesBefore(const StagesBefore&) = delete;
    StagesBefore& operator=(const StagesBefore&) = delete;

    void putBack();

 private:
    Stages& stages_;
    std::vector<std::string> queries_;  // of each stage; none: those of the whole shop
    std::vector<Stage::Kept> kept_;
};

// The stored query of a stage is set to that statement. Throws dao::Error.
void setWorkQuery(Stages& stages, int stageIndex, const std::string& statement);
std::string wholeTable(const Stage& stage);  // the statement of all its records
