#include "plain_server.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr Oid kInteger8 = 20, kText = 25, kReal4 = 700;
constexpr int kBinary = 1;

template <class Integer>
Integer read(const char* bytes) {
    Integer value = 0;
    for (std::size_t at = 0; at < sizeof value; ++at) {
        value = static_cast<Integer>(value << 8 | static_cast<unsigned char>(bytes[at]));
    }
    return value;
}

// "?" as the server counts its values.
std::string counted(const std::string& text) {
    std::string made;
    int number = 0;
    for (const char letter : text) {
        made += letter;
        if (letter == '?') {
            made.back() = '$';
            made += std::to_string(++number);
        }
    }
    return made;
}

}  // namespace

// --- A row.

std::int64_t PlainServer::Row::integer(int column) const {
    const char* const bytes = PQgetvalue(answer_, row_, column);
    switch (PQgetlength(answer_, row_, column)) {
        case 2:
            return static_cast<std::int16_t>(read<std::uint16_t>(bytes));
        case 4:
            return static_cast<std::int32_t>(read<std::uint32_t>(bytes));
        case 8:
            return static_cast<std::int64_t>(read<std::uint64_t>(bytes));
        default:
            return 0;
    }
}

double PlainServer::Row::number(int column) const {
    const char* const bytes = PQgetvalue(answer_, row_, column);
    switch (PQgetlength(answer_, row_, column)) {
        case 4:
            return PQftype(answer_, column) == kReal4
                       ? static_cast<double>(std::bit_cast<float>(read<std::uint32_t>(bytes)))
                       : static_cast<double>(integer(column));
        case 8:
            return PQftype(answer_, column) == kInteger8 ? static_cast<double>(integer(column))
                                                         : std::bit_cast<double>(read<std::uint64_t>(bytes));
        default:
            return 0;
    }
}

// --- A statement.

PlainServer::Statement::Statement(const PlainServer& shop, const std::string& text)
    : shop_(shop), text_(counted(text)), name_("plain_" + std::to_string(++shop.named_)) {}

PlainServer::Statement::Bound& PlainServer::Statement::at(int place) {
    const auto index = static_cast<std::size_t>(place);
    bound_.resize(std::max(bound_.size(), index));
    return bound_[index - 1];
}

PlainServer::Statement& PlainServer::Statement::bind(int place, std::int64_t value) {
    Bound& bound = at(place);
    bound.type = kInteger8;
    bound.bytes.resize(sizeof value);
    for (std::size_t i = 0; i < sizeof value; ++i) {
        bound.bytes[i] = static_cast<char>(value >> (8 * (sizeof value - 1 - i)));
    }
    return *this;
}

PlainServer::Statement& PlainServer::Statement::bind(int place, std::string_view text) {
    Bound& bound = at(place);
    bound.type = kText;
    bound.bytes = text;
    return *this;
}

PlainServer::Statement& PlainServer::Statement::prepare() {
    std::vector<Oid> types;
    for (const Bound& bound : bound_) {
        types.push_back(bound.type);
    }
    PGresult* const made =
        PQprepare(shop_.handle(), name_.c_str(), text_.c_str(), static_cast<int>(types.size()), types.data());
    if (PQresultStatus(made) != PGRES_COMMAND_OK) {
        shop_.die(text_);
    }
    PQclear(made);
    prepared_ = true;
    return *this;
}

template <class Run>
int PlainServer::Statement::with(Run&& run) const {
    const char* values[8] = {};
    int lengths[8] = {}, formats[8] = {};
    for (std::size_t i = 0; i < bound_.size(); ++i) {
        values[i] = bound_[i].bytes.data();
        lengths[i] = static_cast<int>(bound_[i].bytes.size());
        formats[i] = kBinary;
    }
    return run(static_cast<int>(bound_.size()), values, lengths, formats);
}

PGresult* PlainServer::Statement::ask() {
    if (!prepared_) {
        prepare();
    }
    PQclear(answer_);
    with([this](int count, const char* const* values, const int* lengths, const int* formats) {
        answer_ = PQexecPrepared(shop_.handle(), name_.c_str(), count, values, lengths, formats, kBinary);
        return 1;
    });
    const ExecStatusType status = PQresultStatus(answer_);
    if (status != PGRES_TUPLES_OK && status != PGRES_COMMAND_OK) {
        shop_.die(text_);
    }
    row_ = -1;
    return answer_;
}

void PlainServer::Statement::send() {
    const int sent = with([this](int count, const char* const* values, const int* lengths,
                                 const int* formats) {
        return PQsendQueryPrepared(shop_.handle(), name_.c_str(), count, values, lengths, formats, kBinary);
    });
    if (sent == 0) {
        shop_.die(text_);
    }
}

bool PlainServer::Statement::next() {
    if (row_ < 0) {
        ask();
    }
    if (++row_ < PQntuples(answer_)) {
        return true;
    }
    row_ = -1;
    return false;
}

void PlainServer::Statement::run() {
    ask();
}

// --- The server.

PlainServer::PlainServer(const std::string& place) : handle_(PQconnectdb(place.c_str())) {
    if (PQstatus(handle_) != CONNECTION_OK) {
        die(place);
    }
    run("SET search_path = shop, dao, pg_catalog");
}

void PlainServer::die(const std::string& what) const {
    std::fprintf(stderr, "%s: %s\n", what.c_str(), PQerrorMessage(handle_));
    std::exit(1);
}

void PlainServer::run(const std::string& text) const {
    PGresult* const done = PQexec(handle_, text.c_str());
    if (PQresultStatus(done) != PGRES_COMMAND_OK && PQresultStatus(done) != PGRES_TUPLES_OK) {
        die(text);
    }
    PQclear(done);
}

std::int64_t PlainServer::number(const std::string& text) const {
    Statement statement(*this, text);
    return statement.next() ? statement.row().integer(0) : 0;
}

void PlainServer::scan(Statement& statement, const Visit& visit) const {
    const PGresult* const answer = statement.ask();
    const int rows = PQntuples(answer);
    for (int row = 0; row < rows; ++row) {
        visit(Row(answer, row));
    }
}

int PlainServer::finish() const {
    PQpipelineSync(handle_);
    int changed = 0;
    for (bool open = true; open;) {
        PGresult* const answer = PQgetResult(handle_);
        switch (PQresultStatus(answer)) {
            case PGRES_PIPELINE_SYNC:
                open = false;
                break;
            case PGRES_COMMAND_OK:
            case PGRES_TUPLES_OK:
                changed = std::atoi(PQcmdTuples(answer));
                break;
            default:
                if (answer != nullptr) {
                    die("a pipeline");
                }
        }
        PQclear(answer);
    }
    return changed;
}
