#include "platform/procedure_registry.h"

#include <QHash>

namespace kivdb {
namespace {

QHash<QString, EmbeddedProcedure>& registry() {
    static QHash<QString, EmbeddedProcedure> procedures;
    return procedures;
}

// "[dbo].[Name]", "dbo.Name" and "name" all reach the same procedure.
QString registryKey(const QString& name) {
    QString key = name.trimmed().toLower();
    key.remove(QLatin1Char('[')).remove(QLatin1Char(']'));
    if (key.startsWith(QLatin1String("dbo."))) key.remove(0, 4);
    return key;
}

}  // namespace

void registerEmbeddedProcedure(const QString& name, EmbeddedProcedure procedure) {
    registry().insert(registryKey(name), std::move(procedure));
}

void unregisterEmbeddedProcedure(const QString& name) { registry().remove(registryKey(name)); }

EmbeddedProcedure findEmbeddedProcedure(const QString& name) {
    const auto it = registry().constFind(registryKey(name));
    if (it == registry().constEnd() || !*it)
        throw DatabaseError(QStringLiteral("Could not find stored procedure '%1'.").arg(name), ErrorKind::Sql);
    return *it;
}

EmbeddedProcedureRegistration::EmbeddedProcedureRegistration(const QString& name,
                                                             EmbeddedProcedure procedure)
    : name_(name) {
    registerEmbeddedProcedure(name, std::move(procedure));
}

EmbeddedProcedureRegistration::~EmbeddedProcedureRegistration() { unregisterEmbeddedProcedure(name_); }

}  // namespace kivdb
