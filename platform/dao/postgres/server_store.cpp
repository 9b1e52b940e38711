#include "platform/dao/postgres/server_store.h"

#include <algorithm>
#include <thread>
#include <utility>

#include "platform/dao/breaking_off.h"
#include "platform/dao/failure.h"
#include "platform/dao/limits.h"
#include "platform/dao/postgres/loss.h"
#include "platform/dao/postgres/quoting.h"
#include "platform/dao/postgres/read_steps.h"
#include "platform/dao/postgres/server_statement.h"
#include "platform/text/order.h"

namespace dao::postgres {
namespace {

// How long a commit whose answer was lost is asked after: within a minute a server notices that a connection
// is dead.
constexpr std::chrono::seconds kToLearn{60};
constexpr std::chrono::milliseconds kNap{100};

constexpr const char* kLockRow = "SELECT pg_advisory_lock($1)";

// Where a transaction goes back to when a statement in it is refused.
constexpr const char* kSound = "SAVEPOINT dao_sound";

std::string levelName(int level) {
    return "dao_level" + std::to_string(level);
}

// One number for a row of a table, for the locks that sessions keep: two rows that share it merely wait for
// each other now and then.
std::int64_t lockNumber(const std::string& table, std::int64_t key) {
    constexpr std::uint32_t kPrime = 16777619;
    std::uint32_t hash = 2166136261U;
    for (const char c : table) {
        hash = (hash ^ static_cast<unsigned char>(c)) * kPrime;
    }
    return static_cast<std::int64_t>(std::uint64_t{hash} << 32 |
                                     (static_cast<std::uint64_t>(key) & 0xFFFFFFFFU));
}

std::string bytesOf(std::string_view name) {
    return alphabet::orderKey(name);
}

}  // namespace

ServerStore::ServerStore(std::shared_ptr<Link> link, Unfinished)
    : self_(std::make_shared<StatementRunner*>(this)), link_(std::move(link)) {}

ServerStore::ServerStore(std::shared_ptr<Link> link) : ServerStore(std::move(link), Unfinished{}) {
    const Result shop = run("SELECT to_regclass('dao.shop') IS NOT NULL");
    if (!shop.boolean(0, 0)) {
        fail(errUnrecognisedFormat, "The database on " + placeText(link_->address()) + " holds no shop.");
    }
    const Result state = run("SELECT whole, order_version, form FROM dao.shop");
    if (state.rows() != 1 || !state.boolean(0, 0)) {
        fail(errUnrecognisedFormat, "The shop on " + placeText(link_->address()) +
                                        " is unfinished: moving it there was broken off.");
    }
    if (state.integer(0, 1) > alphabet::kOrderVersion || state.integer(0, 2) > driver::knownForm()) {
        fail(errNewerForm);
    }
}

ServerStore::~ServerStore() {
    *self_ = nullptr;
    rollback();
}

const sql::Writer& ServerStore::writer() const {
    return sql::postgresWriter();
}

bool ServerStore::isSame() const {
    return begunIn_ && link_->isConnected() && *begunIn_ == link_->session();
}

// What is left of a lost transaction must not be written alone.
Connection& ServerStore::connection() {
    if (begunIn_ && !isSame()) {
        fail(errDiskIo, "The transaction was lost by an earlier error; it can only be rolled back.");
    }
    return link_->connection();
}

// A question asked twice does no harm, whatever came of it the first time.
Result ServerStore::run(const std::string& text, const Parameters& parameters) {
    Result answer{nullptr};
    const bool mayRepeat = beginAhead_ || (!begunIn_ && text.starts_with("SELECT"));
    const auto ask = [&] {
        std::vector<Step> steps = stepsBefore();
        steps.push_back({text, parameters});
        answer = runAll(steps);
    };
    if (!mayRepeat || !withoutLoss(ask)) {
        ask();
    }
    return answer;
}

// What goes to the server in one breath with the next statement: nobody has to wait for it alone.
std::vector<Step> ServerStore::stepsBefore() {
    std::vector<Step> steps;
    if (beginAhead_) {
        begunIn_.reset();
        const int writer = link_->writer().number(connection());
        steps = beginningOfRead(writer);
    }
    for (const std::int64_t number : locks_.wanted) {
        steps.push_back({kLockRow, Parameters().integer8(number)});
    }
    return steps;
}

Result ServerStore::runAll(const std::vector<Step>& steps) {
    Connection& server = connection();
    std::size_t done = 0;
    try {
        std::vector<Result> answers = server.runAll(steps, done);
        if (beginAhead_) {
            keepVersions(answers[1]);
        }
        noteDone(done);
        return std::move(answers.back());
    } catch (const ConnectionLost&) {
        throw;
    } catch (const Error&) {
        noteDone(done);
        restore();
        throw;
    }
}

// The first `done` of the steps that stepsBefore gave, and of whatever came behind them.
void ServerStore::noteDone(std::size_t done) {
    if (done > 0 && std::exchange(beginAhead_, false)) {
        begunIn_ = link_->session();
        done -= std::min<std::size_t>(done, 2);
    }
    if (locks_.session != link_->session()) {
        locks_.held.clear();
        locks_.session = link_->session();
    }
    const auto end =
        locks_.wanted.begin() + static_cast<std::ptrdiff_t>(std::min(done, locks_.wanted.size()));
    locks_.held.insert(locks_.wanted.begin(), end);
    locks_.wanted.erase(locks_.wanted.begin(), end);
}

// The server takes nothing more in a transaction in which it has refused a statement. What had been written
// before is given up only by whoever wrote it.
void ServerStore::restore() noexcept {
    if (!sound_ || !isSame() || connection().transactionState() != TransactionState::kFailed) {
        return;
    }
    const QuietErrors quiet;
    try {
        connection().execute("ROLLBACK TO " + std::string(kSound));
    } catch (const Error&) {
        rollback();
    }
}

void ServerStore::noteWritten() {
    written_ = Written::kRows;
    sound_ = false;
}

void ServerStore::noteQueryWritten() {
    written_ = std::max(written_, Written::kQueries);
    sound_ = false;
}

std::shared_ptr<driver::Statement> ServerStore::prepare(std::string_view text) {
    return std::make_shared<ServerStatement>(self_, std::string(text));
}

// The connection keeps what the server prepared for it.
std::shared_ptr<driver::Statement> ServerStore::cached(const std::string& text) {
    return prepare(text);
}

// Where the connection was lost while nobody used it, nothing had begun yet.
void ServerStore::begin(const std::string& text) {
    const auto start = [&] {
        Connection& server = link_->connection();
        link_->writer().number(server);
        server.execute(text);
    };
    begunIn_.reset();
    if (!withoutLoss(start)) {
        start();
    }
    begunIn_ = link_->session();
    seen_.reset();
    written_ = Written::kNothing;
}

void ServerStore::beginWrite() {
    begin("BEGIN;" + std::string(kSound));
    reading_ = false;
    sound_ = true;
}

// Its first statement begins it.
void ServerStore::beginRead() {
    beginAhead_ = true;
    begunIn_ = link_->session();
    reading_ = true;
    sound_ = false;
    written_ = Written::kNothing;
    seen_.reset();
}

void ServerStore::commit() {
    if (!inTransaction() || connection().transactionState() == TransactionState::kFailed) {
        fail(errDiskIo, "The transaction was lost by an earlier error; nothing of it was written.");
    }
    std::vector<Step> steps;
    if (written_ != Written::kNothing) {
        link_->writer().foreseeRaise(connection());
        steps.push_back(link_->writer().raising(connection(), written_));
    }
    steps.push_back({"COMMIT", {}, false});
    std::size_t done = 0;
    const Unleavable whole;
    if (!withoutLoss([&] { connection().runAll(steps, done); })) {
        needCommitted();
    } else if (written_ != Written::kNothing) {
        link_->writer().settle();
    }
    begunIn_.reset();
    written_ = Written::kNothing;
}

// The server may have written all of it and could not say so any more.
void ServerStore::needCommitted() {
    const std::string where =
        "The server of " + placeText(link_->address()) + " was lost in the middle of a change; ";
    std::optional<bool> committed;
    const auto until = Clock::now() + kToLearn;
    while (written_ != Written::kNothing && !committed && Clock::now() < until) {
        const QuietErrors quiet;
        try {
            committed = link_->writer().wasCommitted(link_->anyConnection());
        } catch (const Error&) {
            // It is not there yet.
        }
        if (!committed) {
            std::this_thread::sleep_for(kNap);
        }
    }
    if (written_ == Written::kNothing || committed == false) {
        fail(errDiskIo, where + "nothing of it was written.");
    }
    if (!committed) {
        fail(errDiskIo, where + "whether it was written is not known: look before doing it again.");
    }
}

void ServerStore::rollback() noexcept {
    const Unleavable whole;
    const bool open = !std::exchange(beginAhead_, false) && inTransaction();
    if (open) {
        const QuietErrors quiet;
        try {
            if (reading_) {
                connection().tell({"ROLLBACK", {}}, TransactionState::kNone);
            } else {
                connection().execute("ROLLBACK");
            }
        } catch (const Error&) {
            // The connection is gone; so is the transaction.
        }
    }
    begunIn_.reset();
    written_ = Written::kNothing;
    seen_.reset();
}

bool ServerStore::inTransaction() const {
    if (beginAhead_) {
        return true;
    }
    if (!isSame()) {
        return false;
    }
    const TransactionState state = link_->connection().transactionState();
    return state == TransactionState::kOpen || state == TransactionState::kFailed;
}

void ServerStore::savepoint(int level) {
    connection().execute("RELEASE " + std::string(kSound) + ";SAVEPOINT " + levelName(level) + ';' + kSound);
    sound_ = true;
}

void ServerStore::release(int level) {
    connection().execute("RELEASE SAVEPOINT " + levelName(level) + ';' + kSound);
    sound_ = true;
}

void ServerStore::rollbackTo(int level) noexcept {
    if (!inTransaction()) {
        return;
    }
    const Unleavable whole;
    const QuietErrors quiet;
    try {
        const std::string name = levelName(level);
        connection().execute("ROLLBACK TO SAVEPOINT " + name + ";RELEASE SAVEPOINT " + name + ';' + kSound);
        sound_ = true;
    } catch (const Error&) {
        rollback();
    }
}

// Whoever locks a row reads it next: both go together.
void ServerStore::lockRow(const std::string& table, std::int64_t key) {
    locks_.wanted.push_back(lockNumber(table, key));
}

// Nobody waits for it; where a transaction has failed the server would not take it without being set right.
void ServerStore::unlockRow(const std::string& table, std::int64_t key) noexcept {
    const std::int64_t number = lockNumber(table, key);
    if (const auto wanted = std::find(locks_.wanted.begin(), locks_.wanted.end(), number);
        wanted != locks_.wanted.end()) {
        locks_.wanted.erase(wanted);
        return;
    }
    const auto held = locks_.held.find(number);
    if (held == locks_.held.end()) {
        return;
    }
    locks_.held.erase(held);
    if (!link_->isConnected() || locks_.session != link_->session()) {
        return;
    }
    const QuietErrors quiet;
    try {
        Connection& server = connection();
        const Step unlock{"SELECT pg_advisory_unlock($1)", Parameters().integer8(number)};
        if (const TransactionState state = server.transactionState(); state != TransactionState::kFailed) {
            server.tell(unlock, state);
        } else {
            run(unlock.text, unlock.parameters);
        }
    } catch (const Error&) {
        // Then the connection is gone, and the lock with it.
    }
}

bool ServerStore::holdRow(const std::string& table, std::int64_t key) {
    const Result found = run("SELECT 1 FROM " + tableName(table) + " WHERE " + keyColumn(described(table)) +
                                 " = $1 FOR NO KEY UPDATE",
                             Parameters().integer8(key));
    sound_ = false;  // going back would let it go
    return found.rows() == 1;
}

ServerStore::Versions ServerStore::versions() {
    if (seen_ && reading_ && inTransaction()) {
        return *seen_;
    }
    if (beginAhead_) {  // they come with what begins the transaction
        const auto ask = [&] { runAll(stepsBefore()); };
        if (!withoutLoss(ask)) {
            ask();
        }
        return seen_.value_or(Versions());
    }
    const Step versions = versionsStep(link_->writer().number(connection()));
    return keepVersions(run(versions.text, versions.parameters));
}

ServerStore::Versions ServerStore::keepVersions(const Result& found) {
    const Versions now{found.integer(0, 0), found.integer(0, 1), found.integer(0, 2), found.integer(0, 3)};
    seen_ = now;
    newestSchema_ = now.schema;
    return now;
}

std::int64_t ServerStore::dataVersion() {
    return versions().data;
}
std::int64_t ServerStore::schemaVersion() {
    return newestSchema_ = versions().schema;
}

// The engine asks for the schema's version before each statement; a look at every row would be too much.
std::pair<std::int64_t, std::int64_t> ServerStore::describedAt() {
    return {newestSchema_, schemaChanges_};
}

// A server that was set back to an earlier day counts its versions anew, but at other moments.
std::string ServerStore::state() {
    return std::string(
        run("SELECT concat_ws(' ', s.identity, s.form, s.schema_version,"
            " (SELECT sum(last_value) FROM pg_sequences WHERE schemaname = 'shop'),"
            " (SELECT md5(string_agg(concat_ws(' ', number, version, extract(epoch FROM changed)), ','"
            " ORDER BY number)) FROM dao.writers WHERE version > 0)) FROM dao.shop AS s")
            .text(0, 0));
}

int ServerStore::form() {
    return static_cast<int>(run("SELECT form FROM dao.shop").integer(0, 0));
}
void ServerStore::setForm(int form) {
    run("UPDATE dao.shop SET form = $1", Parameters().integer4(form));
    noteWritten();
}

// The server counts millions in a moment, and sends them only where a number is missing among them.
KeyList ServerStore::readAllKeys(const std::string& table) {
    const std::string key = keyColumn(described(table));
    const std::string from = " FROM " + tableName(table);
    const Result told =
        run("SELECT found, first, CASE WHEN last::numeric - first = found - 1 THEN NULL ELSE ARRAY(SELECT " +
            key + from + " ORDER BY " + key + ") END FROM (SELECT count(*) AS found, min(" + key +
            ") AS first, max(" + key + ") AS last" + from + ") AS told");
    if (told.isNull(0, 2)) {
        return {told.integer(0, 1), static_cast<std::size_t>(told.integer(0, 0))};
    }
    std::vector<std::int64_t> keys;
    told.appendKeys(0, 2, driver::kNoRow, keys);
    return KeyList(std::move(keys));
}

// The table and the column whose counter it is, as the server's function for that takes them.
Parameters ServerStore::counterOf(const std::string& table) {
    return Parameters().text(tableName(table)).text(keyName(described(table)));
}

std::int64_t ServerStore::raiseCounter(const std::string& table, std::int64_t above) {
    return run("SELECT dao.next_number(pg_get_serial_sequence($1, $2), $3)", counterOf(table).integer8(above))
        .integer(0, 0);
}

std::int64_t ServerStore::highestNumber(const std::string& table) {
    return run("SELECT coalesce(pg_sequence_last_value(pg_get_serial_sequence($1, $2)::regclass), 0)",
               counterOf(table))
        .integer(0, 0);
}

void ServerStore::setHighestNumber(const std::string& table, std::int64_t number) {
    run("SELECT setval(pg_get_serial_sequence($1, $2), $3)", counterOf(table).integer8(number));
}

void ServerStore::bindFields(Parameters& parameters, const sql::TableInfo& table,
                             std::span<const driver::FieldValue> fields) const {
    for (const driver::FieldValue& field : fields) {
        const int index = table.indexOf(field.field);
        bindValue(parameters, *field.value,
                  index < 0 ? dao::Type::Text : table.columns[static_cast<std::size_t>(index)].type);
    }
}

std::int64_t ServerStore::insertRow(const std::string& table, std::span<const driver::FieldValue> fields) {
    const sql::TableInfo& info = described(table);
    std::string names;
    std::string places;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        names += (i == 0 ? "" : ", ") + quotedName(fields[i].field);
        places += (i == 0 ? "$" : ", $") + std::to_string(i + 1);
    }
    Parameters parameters;
    bindFields(parameters, info, fields);
    const Result made =
        run("INSERT INTO " + tableName(table) +
                (fields.empty() ? " DEFAULT VALUES" : " (" + names + ") VALUES (" + places + ")") +
                " RETURNING " + keyColumn(info),
            parameters);
    noteWritten();
    return made.integer(0, 0);
}

// As many at once as a statement takes values.
void ServerStore::insertRows(const std::string& table, std::span<const std::string_view> fields,
                             const RowBlock& rows) {
    constexpr std::size_t kMostValues = 8000;
    const sql::TableInfo& info = described(table);
    const std::size_t most = std::max<std::size_t>(1, kMostValues / std::max<std::size_t>(1, fields.size()));
    for (std::size_t first = 0; first < rows.rows(); first += most) {
        insertSome(info, fields, rows, first, std::min(most, rows.rows() - first));
    }
    noteWritten();
}

void ServerStore::insertSome(const sql::TableInfo& table, std::span<const std::string_view> fields,
                             const RowBlock& rows, std::size_t first, std::size_t count) {
    std::string text = "INSERT INTO " + tableName(table.name) + " (";
    for (std::size_t i = 0; i < fields.size(); ++i) {
        text += (i == 0 ? "" : ", ") + quotedName(fields[i]);
    }
    Parameters parameters;
    Value value;
    int number = 0;
    for (std::size_t row = first; row < first + count; ++row) {
        text += row == first ? ") VALUES (" : "), (";
        for (std::size_t i = 0; i < fields.size(); ++i) {
            text += (i == 0 ? "$" : ", $") + std::to_string(++number);
            rows.get(row, i, value);
            bindValue(parameters, value, rows.types()[i]);
        }
    }
    run(text + ')', parameters);
}

bool ServerStore::updateRow(const std::string& table, std::int64_t key,
                            std::span<const driver::FieldValue> fields) {
    const sql::TableInfo& info = described(table);
    std::string changes;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        changes += (i == 0 ? "" : ", ") + quotedName(fields[i].field) + " = $" + std::to_string(i + 1);
    }
    Parameters parameters;
    bindFields(parameters, info, fields);
    parameters.integer8(key);
    const Result changed = run("UPDATE " + tableName(table) + " SET " + changes + " WHERE " +
                                   keyColumn(info) + " = $" + std::to_string(fields.size() + 1),
                               parameters);
    noteWritten();
    return changed.affected() != 0;
}

bool ServerStore::deleteRow(const std::string& table, std::int64_t key) {
    const Result gone =
        run("DELETE FROM " + tableName(table) + " WHERE " + keyColumn(described(table)) + " = $1",
            Parameters().integer8(key));
    noteWritten();
    return gone.affected() != 0;
}

// One statement, which is a transaction by itself: compares, writes, and raises the version of this
// workstation where it has written. Whoever waits for the row's last writer compares with what that one left.
bool ServerStore::changeRow(const driver::RowChange& change) {
    const std::string table(change.table);
    const sql::TableInfo& info = described(table);
    Parameters parameters;
    bindFields(parameters, info, change.fields);
    bindFields(parameters, info, change.was);
    std::size_t number = 0;
    std::string text = "WITH changed AS (UPDATE " + tableName(table) + " SET ";
    for (const driver::FieldValue& field : change.fields) {
        text += (number == 0 ? "" : ", ") + quotedName(field.field) + " = $" + std::to_string(number + 1);
        ++number;
    }
    text += " WHERE ";
    for (const driver::FieldValue& field : change.was) {
        text += quotedName(field.field) + " IS NOT DISTINCT FROM $" + std::to_string(++number) + " AND ";
    }
    text += keyColumn(info) + " = $" + std::to_string(number + 1) +
            " RETURNING 1) INSERT INTO dao.writers AS w (number, version, changed, commits, mark, written) "
            "SELECT $" +
            std::to_string(number + 2) + ", 1, clock_timestamp(), 1, $" + std::to_string(number + 3) +
            ", clock_timestamp() FROM changed ON CONFLICT (number) DO UPDATE SET version = w.version + 1,"
            " changed = EXCLUDED.changed, commits = w.commits + 1, mark = EXCLUDED.mark,"
            " written = EXCLUDED.written RETURNING commits";
    WriterRow& writer = link_->writer();
    writer.foreseeRaise(link_->soundConnection());
    parameters.integer8(change.key).integer4(writer.number(connection())).integer8(writer.mark());
    written_ = Written::kRows;
    std::int64_t changed = 1;
    if (!withoutLoss([&] { changed = run(text, parameters).rows(); })) {
        needCommitted();
    } else if (changed != 0) {
        writer.settle();
    }
    written_ = Written::kNothing;
    return changed != 0;
}

// Their texts stay with the server until somebody asks for one.
void ServerStore::refreshQueries() {
    const Versions now = versions();
    if (now.queries == queriesIn_.queries && now.newestQuery == queriesIn_.newestQuery) {
        return;
    }
    const Result found = run("SELECT name, version FROM dao.queries");
    queries_.clear();
    for (int row = 0; row < found.rows(); ++row) {
        const std::string name(found.text(row, 0));
        queries_[bytesOf(name)] = {name, found.integer(row, 1)};
    }
    queriesIn_ = now;
}

std::vector<driver::StoredQueryRow> ServerStore::queries() {
    refreshQueries();
    std::vector<driver::StoredQueryRow> rows;
    rows.reserve(queries_.size());
    for (const auto& [bytes, query] : queries_) {
        rows.push_back({query.name, query.version});
    }
    return rows;
}

std::int64_t ServerStore::queryVersion(std::string_view name) {
    refreshQueries();
    const auto found = queries_.find(bytesOf(name));
    return found == queries_.end() ? 0 : found->second.version;
}

std::optional<std::string> ServerStore::queryText(std::string_view name) {
    const std::string key = bytesOf(name);
    const Result found = run("SELECT sql FROM dao.queries WHERE key = $1", Parameters().bytes(key));
    if (found.rows() == 0) {
        return std::nullopt;
    }
    return std::string(found.text(0, 0));
}

std::int64_t ServerStore::writeQuery(std::string_view name, std::string_view text) {
    const std::string key = bytesOf(name);
    const Result written = run(
        "INSERT INTO dao.queries (key, name, version, sql) VALUES ($1, $2, nextval('dao.query_texts'), $3)"
        " ON CONFLICT (key) DO UPDATE SET version = EXCLUDED.version, sql = EXCLUDED.sql RETURNING version",
        Parameters().bytes(key).text(name).text(text));
    noteQueryWritten();
    return written.integer(0, 0);
}

bool ServerStore::dropQuery(std::string_view name) {
    const std::string key = bytesOf(name);
    const Result gone = run("DELETE FROM dao.queries WHERE key = $1", Parameters().bytes(key));
    noteQueryWritten();
    return gone.affected() != 0;
}

}  // namespace dao::postgres
