#pragma once
#include <QStringList>

namespace kivdb::cli {
// The `call` verb; answers the process exit status.
int runCall(const QStringList& arguments);
}
