// The spooler's store: printers and their data in one SQLite file, ROOT/spool.db, or in memory
// for a machine without a root.
//
// Several processes use one file at once. It is kept with a rollback journal, not a write-ahead
// log, because every commit then bumps the change counter in the file's header: four bytes tell
// whether what this process remembers of a printer still holds, at a fraction of the cost of a
// transaction. Writers wait for each other; a change is one transaction.
//
// Everything here throws StoreFailure when the store cannot be used.
#ifndef KV_PLATFORM_SPOOLER_STORE_H
#define KV_PLATFORM_SPOOLER_STORE_H

#include <array>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <sqlite3.h>

#include "platform/host.h"

namespace kvp
{

// A SpoolError with the last error that a spooler call reports for it.
struct StoreFailure : SpoolError {
    StoreFailure(const std::string &what, DWORD code) : SpoolError(what), dwCode(code) {}
    DWORD dwCode;
};

// A printer as the spooler's calls hand it out.
struct PrinterRow {
    std::u16string strName, strDriver, strServer; // server without backslashes; empty: local
    std::vector<uint8_t> record;                  // default settings record; empty: none
};

struct PrinterValue {
    DWORD dwType;
    std::vector<uint8_t> data;
};

// What a name is compared by: printers and values are found without regard to case.
std::string FoldName(std::u16string_view name);

class Store
{
  public:
    explicit Store(const std::string &root);
    Store(const Store &) = delete;
    Store &operator=(const Store &) = delete;

    // The keys below are folded names. Readers of a store that does not exist find nothing and
    // create nothing.
    std::shared_ptr<const PrinterRow> Find(const std::string &key); // null: no such printer
    std::vector<Queue> List();
    std::optional<PrinterValue> Value(const std::string &key, const std::string &valueKey);

    // False when the printer exists already.
    bool Add(const std::string &key, const Queue &queue);
    // The others: false when there is no such printer.
    bool Remove(const std::string &key);
    bool SetRecord(const std::string &key, std::span<const uint8_t> record);
    bool SetValue(const std::string &key, const std::string &valueKey, const std::string &valueName,
                  DWORD type, std::span<const uint8_t> data);

  private:
    struct Closer {
        void operator()(sqlite3 *closed) const { sqlite3_close_v2(closed); }
        void operator()(sqlite3_stmt *statement) const { sqlite3_finalize(statement); }
    };
    enum Sql {
        Begin,
        BeginWrite,
        Commit,
        Rollback,
        FindRow,
        ListRows,
        AddRow,
        RemoveRow,
        SetRowRecord,
        FindValue,
        PutValue,
        SqlCount
    };
    static const char *const aSql[SqlCount];
    class Statement;   // a prepared statement in use; reset when it goes
    class Transaction; // rolled back when it goes without having been committed

    [[noreturn]] void Fail(const char *doing) const;
    void Access() const; // counts an access, which may have been ordered to fail
    void Execute(const char *sql);
    int Number(const char *pragma);

    bool Open(bool create); // false: there is no store, and none was to be created
    bool Connect(bool create);
    bool HasTables(bool create);
    void LeaveLogMode();
    void CreateTables();

    std::optional<uint32_t> Generation() const; // changes with every change to the store
    std::shared_ptr<const PrinterRow> Load(const std::string &key);

    const bool bInMemory;
    const std::string strPath;
    std::mutex lock;
    std::unique_ptr<sqlite3, Closer> db;
    std::array<std::unique_ptr<sqlite3_stmt, Closer>, SqlCount> aStatements;
    // The rows read at this generation of the store.
    std::optional<uint32_t> generation;
    std::unordered_map<std::string, std::shared_ptr<const PrinterRow>> rows;
};

// The store of the machine that the layer plays at present.
std::shared_ptr<Store> CurrentStore();

} // namespace kvp

#endif
