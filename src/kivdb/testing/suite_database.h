#pragma once
// Test support: a database file built with the suite's table scripts, a fresh copy per
// instance, that tests open with as many connections as they need, as hosts open theirs.
#include "platform/connection.h"

#include <QTemporaryDir>
#include <memory>

namespace kivdb::testing {

class SuiteDatabaseFile {
public:
    // Throws DatabaseError when the schema cannot be built or copied.
    SuiteDatabaseFile();

    QString url() const;  // "sqlite:PATH"
    std::unique_ptr<Connection> connect() const;

private:
    QTemporaryDir dir_;
    QString path_;
};

}  // namespace kivdb::testing
