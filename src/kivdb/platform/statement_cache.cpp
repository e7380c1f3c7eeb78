#include "platform/statement_cache.h"

#include <sqlite3.h>

namespace kivdb {

sqlite3_stmt* StatementCache::take(const QByteArray& sql) {
    const auto it = index_.constFind(sql);
    if (it == index_.constEnd()) return nullptr;
    sqlite3_stmt* stmt = (*it)->second;
    recent_.erase(*it);
    index_.erase(it);
    return stmt;
}

void StatementCache::put(const QByteArray& sql, sqlite3_stmt* stmt) {
    sqlite3_reset(stmt);
    sqlite3_clear_bindings(stmt);
    if (index_.contains(sql)) {
        sqlite3_finalize(stmt);
        return;
    }
    recent_.emplace_front(sql, stmt);
    index_.insert(sql, recent_.begin());
    if (int(index_.size()) > kCapacity) {
        index_.remove(recent_.back().first);
        sqlite3_finalize(recent_.back().second);
        recent_.pop_back();
    }
}

void StatementCache::clear() {
    for (const Entry& e : recent_) sqlite3_finalize(e.second);
    recent_.clear();
    index_.clear();
}

}  // namespace kivdb
