#pragma once
// `kivdb init`: a new embedded database with the suite's schema (and the sample company),
// built beside the target and renamed into place, so that a file at the target path is
// always a complete database, whenever the process dies.
#include <QString>

namespace kivdb::cli {

struct InitOptions {
    QString database;   // a file path; URIs and in-memory names are refused
    QString schemaDir;  // empty: the schema built into the library
    bool sample = false;
};

// Throws DatabaseError for a path that cannot become a new database file (exists, a
// directory, a URI, a missing directory), integrity::SchemaError when the scripts are
// missing or fail. Nothing is left at the target on failure, nor beside it unless the
// process is killed outright (SIGKILL); SIGINT, SIGTERM and SIGHUP remove the work file.
void initDatabase(const InitOptions& options);

}  // namespace kivdb::cli
