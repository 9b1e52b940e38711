#include "platform/dao/postgres/sendings.h"

#include <libpq-fe.h>

#include <algorithm>
#include <utility>

namespace dao::postgres {
namespace {

constexpr int kBinary = 1;

bool sendPrepare(pg_conn* connection, const std::string& name, const Step& step) {
    const std::vector<unsigned>& types = step.parameters.types();
    return PQsendPrepare(connection, name.c_str(), step.text.c_str(), static_cast<int>(types.size()),
                         types.data()) != 0;
}

bool sendPrepared(pg_conn* connection, const std::string& name, const Step& step) {
    const std::vector<const char*> values = step.parameters.values();
    const std::vector<int> formats(values.size(), kBinary);
    return PQsendQueryPrepared(connection, name.c_str(), static_cast<int>(values.size()), values.data(),
                               step.parameters.lengths().data(), formats.data(), kBinary) != 0;
}

}  // namespace

bool Sendings::sendUnnamed(pg_conn* connection, const Step& step) {
    const std::vector<const char*> values = step.parameters.values();
    const std::vector<int> formats(values.size(), kBinary);
    return PQsendQueryParams(connection, step.text.c_str(), static_cast<int>(values.size()),
                             step.parameters.types().data(), values.data(), step.parameters.lengths().data(),
                             formats.data(), kBinary) != 0;
}

// The same statement twice is prepared once: the first one's name is known when the second is looked at.
Sendings::Sendings(const std::vector<Step>& steps, StatementCache& prepared) : prepared_(prepared) {
    for (const Step& step : steps) {
        Sending made = sendingOf(step);
        for (const Sending& before : all_) {
            if (before.key == made.key && step.isPrepared) {
                made.name = before.name;
                made.isNew = false;
            }
        }
        all_.push_back(std::move(made));
    }
}

Sendings::Sending Sendings::sendingOf(const Step& step) {
    if (!step.isPrepared) {
        return {&step, {}, {}, false};
    }
    std::string key = StatementCache::keyOf(step.text, step.parameters.types());
    std::string name = prepared_.find(key);
    const bool isNew = name.empty();
    return {&step, std::move(key), isNew ? prepared_.newName() : std::move(name), isNew};
}

bool Sendings::hasNew() const {
    return std::any_of(all_.begin(), all_.end(), [](const Sending& each) { return each.isNew; });
}

bool Sendings::send(pg_conn* connection) const {
    return std::all_of(all_.begin(), all_.end(), [&](const Sending& each) {
        if (!each.step->isPrepared) {
            return sendUnnamed(connection, *each.step);
        }
        return (!each.isNew || sendPrepare(connection, each.name, *each.step)) &&
               sendPrepared(connection, each.name, *each.step);
    });
}

std::size_t Sendings::take(std::size_t answered, std::vector<Result>* answers) {
    std::vector<Result> results;
    std::size_t at = 0;
    std::size_t done = 0;
    for (const Sending& each : all_) {
        if (each.isNew && at < answered) {
            prepared_.keep(each.key, each.name);
            ++at;
        }
        if (at == answered) {
            break;
        }
        if (answers != nullptr) {
            results.push_back(std::move((*answers)[at]));
        }
        ++at;
        ++done;
    }
    if (answers != nullptr) {
        *answers = std::move(results);
    }
    return done;
}

}  // namespace dao::postgres
