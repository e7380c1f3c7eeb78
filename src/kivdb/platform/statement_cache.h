#pragma once
// Prepared statements of one embedded connection kept for reuse, by their SQLite text: a
// statement that runs again is reset and stepped instead of parsed and planned anew. It
// holds at most kCapacity statements and finalizes the least recently used first.
#include <QByteArray>
#include <QHash>

#include <list>
#include <utility>

struct sqlite3_stmt;

namespace kivdb {

class StatementCache {
public:
    static constexpr int kCapacity = 128;

    StatementCache() = default;
    StatementCache(const StatementCache&) = delete;
    StatementCache& operator=(const StatementCache&) = delete;
    ~StatementCache() { clear(); }

    // The statement kept for the text, taken out so that a statement run while it runs (by an
    // embedded procedure) never shares it; null when none is kept. Never throws.
    sqlite3_stmt* take(const QByteArray& sql);
    // Keeps a statement that ran to the end or was reset, its parameters cleared; finalizes
    // the least recently used one past the capacity, or `stmt` when its text is kept already.
    void put(const QByteArray& sql, sqlite3_stmt* stmt);
    // Finalizes every statement kept.
    void clear();
    int size() const { return int(index_.size()); }

private:
    using Entry = std::pair<QByteArray, sqlite3_stmt*>;
    std::list<Entry> recent_;  // most recently used first
    QHash<QByteArray, std::list<Entry>::iterator> index_;
};

}  // namespace kivdb
