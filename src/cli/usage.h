#pragma once
// The usage texts of the kivdb commands, one row per command.
#include <QString>

namespace kivdb::cli {

struct Command {
    const char* name;
    const char* summary;   // one line for the command list
    const char* synopsis;  // "kivdb sql --db FILE ..."
    const char* details;   // what it does, its options and output
};

const Command* findCommand(const QString& name);  // nullptr when there is no such command
QString generalUsage();                           // every command, and how to learn more
QString synopses();                               // every synopsis, for a usage error
QString commandUsage(const Command& command);     // synopsis and details
QString versionText();

}  // namespace kivdb::cli
