// The database is built in a work file beside the target (same directory, so the final
// rename stays on one file system), flushed to disk, and renamed into place only when
// complete, without ever replacing a file that appeared at the target meanwhile.
#include "cli/init_command.h"

#include "integrity/sample_data.h"
#include "integrity/schema_loader.h"
#include "platform/sqlite_connection.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace kivdb::cli {

namespace {

// The work file and its rollback journal, for the signal handler: plain buffers, since
// a handler may only make async-signal-safe calls.
char gWorkPath[4096];
char gJournalPath[4096 + 16];
constexpr int kCleanupSignals[] = {SIGINT, SIGTERM, SIGHUP};

extern "C" void removeWorkFileAndDie(int signal) {
    unlink(gWorkPath);
    unlink(gJournalPath);
    std::signal(signal, SIG_DFL);
    raise(signal);
}

// Removes the work file on a catchable signal while it exists; restores the previous
// handlers when the build is over.
class WorkFileGuard {
public:
    explicit WorkFileGuard(const QString& workPath) {
        const QByteArray path = QFile::encodeName(workPath);
        if (size_t(path.size()) >= sizeof gWorkPath)
            throw DatabaseError(QStringLiteral("path too long: %1").arg(workPath), ErrorKind::Argument);
        std::memcpy(gWorkPath, path.constData(), size_t(path.size()) + 1);
        std::snprintf(gJournalPath, sizeof gJournalPath, "%s-journal", gWorkPath);
        unlinkAll();  // a leftover of a dead process that had our pid
        struct sigaction action = {};
        action.sa_handler = removeWorkFileAndDie;
        sigemptyset(&action.sa_mask);
        for (size_t i = 0; i < std::size(kCleanupSignals); ++i) sigaction(kCleanupSignals[i], &action, &previous_[i]);
    }
    ~WorkFileGuard() {
        unlinkAll();
        for (size_t i = 0; i < std::size(kCleanupSignals); ++i) sigaction(kCleanupSignals[i], &previous_[i], nullptr);
    }
    WorkFileGuard(const WorkFileGuard&) = delete;
    WorkFileGuard& operator=(const WorkFileGuard&) = delete;

private:
    static void unlinkAll() {
        unlink(gWorkPath);
        unlink(gJournalPath);
    }
    struct sigaction previous_[std::size(kCleanupSignals)];
};

// ".erp.kivdb.init-PID": hidden, and telling which process builds it.
QString workFileName(const QString& targetName, qint64 pid) {
    return QStringLiteral(".%1.init-%2").arg(targetName).arg(pid);
}

// Work files of inits that were killed outright (their process is gone).
void removeStaleWorkFiles(const QDir& dir, const QString& targetName) {
    const QRegularExpression workFile(
        QStringLiteral("^\\.%1\\.init-([0-9]+)(-journal)?$").arg(QRegularExpression::escape(targetName)));
    for (const QString& name : dir.entryList(QDir::Files | QDir::Hidden | QDir::System)) {
        const auto match = workFile.match(name);
        if (!match.hasMatch()) continue;
        if (kill(pid_t(match.captured(1).toLongLong()), 0) != 0 && errno == ESRCH) QFile::remove(dir.filePath(name));
    }
}

DatabaseError systemError(const QString& what, const QString& path) {
    return DatabaseError(QStringLiteral("%1 %2: %3").arg(what, path, QString::fromLocal8Bit(std::strerror(errno))));
}

void flushToDisk(const QString& path) {
    const int fd = open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) throw systemError(QStringLiteral("cannot open"), path);
    const int rc = fsync(fd);
    close(fd);
    if (rc != 0) throw systemError(QStringLiteral("cannot flush"), path);
}

// Renames without replacing: fails when the target exists, even if it appeared after the
// checks. File systems without the no-replace rename get a hard link and an unlink, which
// keeps the same guarantee.
void moveIntoPlace(const QString& work, const QString& target) {
    const QByteArray from = QFile::encodeName(work), to = QFile::encodeName(target);
    int rc = renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE);
    if (rc != 0 && (errno == EINVAL || errno == ENOSYS || errno == ENOTSUP)) {
        rc = link(from.constData(), to.constData());
        if (rc == 0) unlink(from.constData());
    }
    if (rc != 0 && errno == EEXIST)
        throw DatabaseError(QStringLiteral("database file already exists: %1").arg(target), ErrorKind::Argument);
    if (rc != 0) throw systemError(QStringLiteral("cannot create"), target);
}

void requireNewFilePath(const QString& path) {
    // SQLite reads these as URIs or in-memory databases, which init cannot deliver as a file.
    static const QRegularExpression notAFile(QStringLiteral("^file:|^:memory:$|mode=memory"),
                                             QRegularExpression::CaseInsensitiveOption);
    if (notAFile.match(path).hasMatch())
        throw DatabaseError(QStringLiteral("--db takes a file path, not a URI or an in-memory database: %1").arg(path),
                            ErrorKind::Argument);
    const QFileInfo info(path);
    if (info.isDir()) throw DatabaseError(QStringLiteral("--db names a directory: %1").arg(path), ErrorKind::Argument);
    // Never touch an existing database: init is for a new one.
    if (info.exists() || info.isSymLink())
        throw DatabaseError(QStringLiteral("database file already exists: %1").arg(path), ErrorKind::Argument);
    if (!info.absoluteDir().exists())
        throw DatabaseError(QStringLiteral("directory not found: %1").arg(info.absolutePath()), ErrorKind::Argument);
}

}  // namespace

void initDatabase(const InitOptions& options) {
    requireNewFilePath(options.database);
    const QString schemaDir = options.schemaDir.isEmpty() ? integrity::defaultSchemaDirectory() : options.schemaDir;
    if (!QFileInfo(schemaDir).isDir())
        throw integrity::SchemaError(QStringLiteral("schema directory not found: %1").arg(schemaDir).toStdString());

    const QFileInfo target(options.database);
    const QDir dir = target.absoluteDir();
    removeStaleWorkFiles(dir, target.fileName());
    const QString work = dir.filePath(workFileName(target.fileName(), getpid()));
    WorkFileGuard guard(work);
    {
        SqliteConnection conn(work, SqliteConnection::OpenMode::CreateIfMissing);
        integrity::applySchema(conn, schemaDir);
        if (options.sample) integrity::applySampleData(conn, schemaDir + QStringLiteral("/sample"));
    }
    flushToDisk(work);
    moveIntoPlace(work, target.absoluteFilePath());
    // The new directory entry reaches the disk too.
    flushToDisk(dir.absolutePath());
}

}  // namespace kivdb::cli
