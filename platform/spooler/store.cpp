// The store in SQLite: opening and checking the file, the prepared statements, and the rows that
// this process remembers.
#include "platform/spooler/store.h"

#include <chrono>
#include <filesystem>
#include <thread>
#include <unistd.h>

#include <fmt/format.h>

#include "platform/kernel/errors.h"
#include "platform/kernel/internal.h"
#include "platform/kernel/names.h"

namespace kvp
{

namespace
{
constexpr int STORE_ID = 0x4B565350; // marks the file as a printer store
constexpr int STORE_VERSION = 1;
constexpr int BUSY_TRIES = 10000; // how often a process asks again while others use the store
constexpr int LARGEST_VALUE = 1 << 20;
constexpr sqlite3_int64 CHANGE_COUNTER = 24; // its offset in the file's header

constexpr const char *TABLES = R"(
    CREATE TABLE printer (
        key TEXT PRIMARY KEY, name TEXT NOT NULL, driver TEXT NOT NULL, server TEXT NOT NULL,
        record BLOB) WITHOUT ROWID;
    CREATE TABLE printer_data (
        printer TEXT NOT NULL REFERENCES printer(key) ON DELETE CASCADE,
        key TEXT NOT NULL, name TEXT NOT NULL, type INTEGER NOT NULL, data BLOB NOT NULL,
        PRIMARY KEY (printer, key)) WITHOUT ROWID;)";

// A change takes about a millisecond, so short waits: SQLite's own handler backs off until a crowd
// of writers mostly sleeps. 1 to 5 ms, so that two who wait do not wake together.
int WaitForOthers(void *, int tries)
{
    const int nMilliseconds = 1 + static_cast<int>((getpid() + tries) % 5);
    std::this_thread::sleep_for(std::chrono::milliseconds(nMilliseconds));
    return tries < BUSY_TRIES;
}
} // namespace

const char *const Store::aSql[SqlCount] = {
    "BEGIN",
    "BEGIN IMMEDIATE",
    "COMMIT",
    "ROLLBACK",
    "SELECT name, driver, server, record FROM printer WHERE key = ?1",
    "SELECT name, driver, server, record IS NOT NULL FROM printer ORDER BY key",
    "INSERT OR IGNORE INTO printer (key, name, driver, server) VALUES (?1, ?2, ?3, ?4)",
    "DELETE FROM printer WHERE key = ?1",
    "UPDATE printer SET record = ?2 WHERE key = ?1",
    "SELECT type, data FROM printer_data WHERE printer = ?1 AND key = ?2",
    R"(INSERT OR REPLACE INTO printer_data (printer, key, name, type, data)
       SELECT key, ?2, ?3, ?4, ?5 FROM printer WHERE key = ?1)",
};

std::string FoldName(std::u16string_view name)
{
    return std::string(FoldedName(ToUtf8(name)).View());
}

// ---- statements and transactions ------------------------------------------------------------

class Store::Statement
{
  public:
    Statement(Store &of, Sql sql) : store(of), pStatement(of.aStatements[sql].get())
    {
        if (pStatement)
            return;
        if (sqlite3_prepare_v3(of.db.get(), aSql[sql], -1, SQLITE_PREPARE_PERSISTENT, &pStatement,
                               nullptr) != SQLITE_OK)
            of.Fail("be read");
        of.aStatements[sql].reset(pStatement);
    }
    ~Statement()
    {
        sqlite3_reset(pStatement);
        sqlite3_clear_bindings(pStatement);
    }
    Statement(const Statement &) = delete;
    Statement &operator=(const Statement &) = delete;

    // What is bound must outlive the statement's use.
    Statement &Bind(int at, const std::string &text)
    {
        sqlite3_bind_text64(pStatement, at, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8);
        return *this;
    }
    Statement &Bind(int at, DWORD number)
    {
        sqlite3_bind_int64(pStatement, at, number);
        return *this;
    }
    Statement &Bind(int at, std::span<const uint8_t> bytes)
    {
        const void *pBytes = bytes.empty() ? "" : static_cast<const void *>(bytes.data());
        sqlite3_bind_blob64(pStatement, at, pBytes, bytes.size(), SQLITE_STATIC);
        return *this;
    }

    // The next row; false after the last.
    bool Step(const char *doing)
    {
        const int nResult = sqlite3_step(pStatement);
        if (nResult != SQLITE_ROW && nResult != SQLITE_DONE)
            store.Fail(doing);
        return nResult == SQLITE_ROW;
    }
    std::string Text(int column)
    {
        const auto *pText = reinterpret_cast<const char *>(sqlite3_column_text(pStatement, column));
        return pText ? std::string(pText, static_cast<size_t>(Length(column))) : std::string();
    }
    std::vector<uint8_t> Blob(int column)
    {
        const auto *pBytes = static_cast<const uint8_t *>(sqlite3_column_blob(pStatement, column));
        return pBytes ? std::vector<uint8_t>(pBytes, pBytes + Length(column))
                      : std::vector<uint8_t>();
    }
    sqlite3_int64 Int(int column) { return sqlite3_column_int64(pStatement, column); }

  private:
    int Length(int column) { return sqlite3_column_bytes(pStatement, column); }

    Store &store;
    sqlite3_stmt *pStatement;
};

class Store::Transaction
{
  public:
    Transaction(Store &of, Sql begin) : store(of) { Statement(of, begin).Step("be opened"); }
    ~Transaction()
    {
        if (!bDone && !sqlite3_get_autocommit(store.db.get()))
            sqlite3_exec(store.db.get(), aSql[Rollback], nullptr, nullptr, nullptr);
    }
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;

    void End()
    {
        Statement(store, Commit).Step("be written");
        bDone = true;
    }

  private:
    Store &store;
    bool bDone = false;
};

// ---- opening --------------------------------------------------------------------------------

Store::Store(const std::string &root)
    : bInMemory(root.empty()), strPath(bInMemory ? ":memory:" : root + "/spool.db")
{
}

void Store::Fail(const char *doing) const
{
    const int nError = sqlite3_errcode(db.get()) & 0xFF;
    const char *lpszReason = sqlite3_errmsg(db.get());
    if (nError == SQLITE_CORRUPT || nError == SQLITE_NOTADB)
        throw StoreFailure(fmt::format("the printer store {} is damaged ({}): restore it, or "
                                       "remove it and add the printers again",
                                       strPath, lpszReason),
                           ERROR_BADDB);
    if (nError == SQLITE_BUSY || nError == SQLITE_LOCKED)
        throw StoreFailure(fmt::format("the printer store {} is in use by another program: try "
                                       "again when that has ended",
                                       strPath),
                           ERROR_BUSY);
    throw StoreFailure(fmt::format("the printer store {} cannot {} ({}): check that its folder "
                                   "can be written and has room",
                                   strPath, doing, lpszReason),
                       ERROR_GEN_FAILURE);
}

void Store::Access() const
{
    if (ShouldFail(Call::Store))
        throw StoreFailure(fmt::format("the printer store {} cannot be used: a failure of it was "
                                       "asked for",
                                       strPath),
                           ERROR_GEN_FAILURE);
}

void Store::Execute(const char *sql)
{
    if (sqlite3_exec(db.get(), sql, nullptr, nullptr, nullptr) != SQLITE_OK)
        Fail("be set up");
}

int Store::Number(const char *sql)
{
    sqlite3_stmt *pStatement = nullptr;
    if (sqlite3_prepare_v2(db.get(), sql, -1, &pStatement, nullptr) != SQLITE_OK)
        Fail("be read");
    const std::unique_ptr<sqlite3_stmt, Closer> statement(pStatement);
    if (sqlite3_step(pStatement) != SQLITE_ROW)
        Fail("be read");
    return sqlite3_column_int(pStatement, 0);
}

bool Store::Open(bool create)
{
    if (db)
        return true;
    try {
        if (Connect(create) && HasTables(create))
            return true;
    } catch (...) {
        db.reset();
        throw;
    }
    db.reset();
    return false;
}

bool Store::Connect(bool create)
{
    namespace fs = std::filesystem;
    std::error_code error;
    if (!bInMemory && !create && !fs::exists(strPath, error) && !error)
        return false;
    if (!bInMemory && create)
        fs::create_directories(fs::path(strPath).parent_path(), error);
    sqlite3 *pDb = nullptr;
    const int nFlags = SQLITE_OPEN_READWRITE | (create || bInMemory ? SQLITE_OPEN_CREATE : 0);
    const int nResult = sqlite3_open_v2(strPath.c_str(), &pDb, nFlags, nullptr);
    db.reset(pDb);
    if (nResult != SQLITE_OK)
        Fail("be opened");
    sqlite3_busy_handler(pDb, WaitForOthers, nullptr);
    sqlite3_limit(pDb, SQLITE_LIMIT_LENGTH, LARGEST_VALUE);
    Execute("PRAGMA foreign_keys = ON");
    return true;
}

// Tables that another program made are left alone, and so is a store of a later version. An empty
// file is a store that somebody is about to create, or was when he was stopped.
bool Store::HasTables(bool create)
{
    if (Number("SELECT count(*) FROM sqlite_schema") == 0 && Number("PRAGMA application_id") == 0) {
        if (!create && !bInMemory)
            return false;
        CreateTables();
    }
    if (Number("PRAGMA application_id") != STORE_ID)
        throw StoreFailure(fmt::format("{} is not a printer store but another program's file: "
                                       "move it away or use another root",
                                       strPath),
                           ERROR_BADDB);
    if (Number("PRAGMA user_version") != STORE_VERSION)
        throw StoreFailure(fmt::format("the printer store {} was made by another version of this "
                                       "system: use that version, or another root",
                                       strPath),
                           ERROR_BADDB);
    LeaveLogMode();
    return true;
}

// The change counter stands still while the file is in this mode, into which only another program
// can have put it.
void Store::LeaveLogMode()
{
    constexpr const char *IS_LOG = "SELECT journal_mode = 'wal' FROM pragma_journal_mode";
    if (bInMemory || !Number(IS_LOG))
        return;
    Execute("PRAGMA journal_mode = DELETE");
    if (Number(IS_LOG))
        throw StoreFailure(fmt::format("the printer store {} is held open by another program: try "
                                       "again when that has ended",
                                       strPath),
                           ERROR_BUSY);
}

void Store::CreateTables()
{
    Execute("BEGIN IMMEDIATE");
    // Another process may have been faster.
    if (Number("SELECT count(*) FROM sqlite_schema") == 0) {
        Execute(TABLES);
        Execute(fmt::format("PRAGMA application_id = {}; PRAGMA user_version = {}", STORE_ID,
                            STORE_VERSION)
                    .c_str());
    }
    Execute("COMMIT");
}

// ---- reading --------------------------------------------------------------------------------

std::optional<uint32_t> Store::Generation() const
{
    if (bInMemory)
        return static_cast<uint32_t>(sqlite3_total_changes(db.get()));
    // Read through SQLite's own descriptor: closing one of ours would drop its locks.
    sqlite3_file *pFile = nullptr;
    if (sqlite3_file_control(db.get(), "main", SQLITE_FCNTL_FILE_POINTER, &pFile) != SQLITE_OK ||
        !pFile || !pFile->pMethods)
        return std::nullopt;
    uint32_t dwCounter = 0;
    if (pFile->pMethods->xRead(pFile, &dwCounter, sizeof dwCounter, CHANGE_COUNTER) != SQLITE_OK)
        return std::nullopt;
    return dwCounter;
}

std::shared_ptr<const PrinterRow> Store::Find(const std::string &key)
{
    const std::lock_guard guard(lock);
    Access();
    if (!Open(false))
        return nullptr;
    if (generation && Generation() == generation)
        if (const auto row = rows.find(key); row != rows.end())
            return row->second;
    return Load(key);
}

std::shared_ptr<const PrinterRow> Store::Load(const std::string &key)
{
    std::shared_ptr<PrinterRow> row;
    Transaction reading(*this, Begin);
    {
        Statement find(*this, FindRow);
        if (find.Bind(1, key).Step("be read"))
            row = std::make_shared<PrinterRow>(PrinterRow{
                ToWide(find.Text(0)), ToWide(find.Text(1)), ToWide(find.Text(2)), find.Blob(3)});
    }
    // Inside the transaction nobody can write, so that the counter belongs to what was read.
    const std::optional<uint32_t> now = Generation();
    reading.End();
    if (now != generation)
        rows.clear();
    generation = now;
    if (row)
        rows[key] = row;
    return row;
}

std::vector<Queue> Store::List()
{
    const std::lock_guard guard(lock);
    Access();
    std::vector<Queue> queues;
    if (!Open(false))
        return queues;
    Statement list(*this, ListRows);
    while (list.Step("be read"))
        queues.push_back({list.Text(0), list.Text(1), list.Text(2), list.Int(3) != 0});
    return queues;
}

std::optional<PrinterValue> Store::Value(const std::string &key, const std::string &valueKey)
{
    const std::lock_guard guard(lock);
    Access();
    if (!Open(false))
        return std::nullopt;
    Statement find(*this, FindValue);
    if (!find.Bind(1, key).Bind(2, valueKey).Step("be read"))
        return std::nullopt;
    return PrinterValue{static_cast<DWORD>(find.Int(0)), find.Blob(1)};
}

// ---- changing -------------------------------------------------------------------------------

bool Store::Add(const std::string &key, const Queue &queue)
{
    const std::lock_guard guard(lock);
    Access();
    Open(true);
    Transaction change(*this, BeginWrite);
    Statement add(*this, AddRow);
    add.Bind(1, key).Bind(2, queue.strName).Bind(3, queue.strDriver).Bind(4, queue.strServer);
    add.Step("be written");
    const bool bAdded = sqlite3_changes(db.get()) != 0;
    change.End();
    return bAdded;
}

bool Store::Remove(const std::string &key)
{
    const std::lock_guard guard(lock);
    Access();
    if (!Open(false))
        return false;
    Transaction change(*this, BeginWrite);
    Statement(*this, RemoveRow).Bind(1, key).Step("be written");
    const bool bRemoved = sqlite3_changes(db.get()) != 0;
    change.End();
    return bRemoved;
}

bool Store::SetRecord(const std::string &key, std::span<const uint8_t> record)
{
    const std::lock_guard guard(lock);
    Access();
    if (!Open(false))
        return false;
    Transaction change(*this, BeginWrite);
    Statement set(*this, SetRowRecord);
    set.Bind(1, key);
    if (!record.empty()) // unbound is null: no record
        set.Bind(2, record);
    set.Step("be written");
    const bool bSet = sqlite3_changes(db.get()) != 0;
    change.End();
    return bSet;
}

bool Store::SetValue(const std::string &key, const std::string &valueKey,
                     const std::string &valueName, DWORD type, std::span<const uint8_t> data)
{
    const std::lock_guard guard(lock);
    Access();
    if (!Open(false))
        return false;
    Transaction change(*this, BeginWrite);
    Statement put(*this, PutValue);
    put.Bind(1, key).Bind(2, valueKey).Bind(3, valueName).Bind(4, type).Bind(5, data);
    put.Step("be written");
    const bool bPut = sqlite3_changes(db.get()) != 0;
    change.End();
    return bPut;
}

// ---- the machine's store --------------------------------------------------------------------

namespace
{
std::mutex g_lock;
std::shared_ptr<Store> g_store; // dropped by every change of the machine
} // namespace

std::shared_ptr<Store> CurrentStore()
{
    const std::string strRoot = CurrentMachine().strRoot; // before the lock: it takes its own
    const std::lock_guard guard(g_lock);
    if (!g_store)
        g_store = std::make_shared<Store>(strRoot);
    return g_store;
}

void ForgetStore()
{
    const std::lock_guard guard(g_lock);
    g_store.reset();
}

} // namespace kvp
