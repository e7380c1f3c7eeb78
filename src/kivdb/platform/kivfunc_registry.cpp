// The registry: the values the suite's programs keep under their key paths.
#include "platform/kivfunc.h"

#include <QSettings>
#include <memory>

namespace kivdb::kivfunc {

namespace {

struct RegistryEntry {
    std::unique_ptr<QSettings> store;
    QString key;
};

RegistryEntry registryEntry(const QString& keyPath, const QString& valueName, RegistryRoot root) {
    // Callers write key paths the registry's way, with "\"; stray separators at the ends are
    // ignored as the registry ignores them.
    QStringList keys = QString(keyPath).replace(QLatin1Char('/'), QLatin1Char('\\')).split(QLatin1Char('\\'), Qt::SkipEmptyParts);
#ifdef Q_OS_WIN
    keys.prepend(root == RegistryRoot::LocalMachine ? QStringLiteral("HKEY_LOCAL_MACHINE") : QStringLiteral("HKEY_CURRENT_USER"));
    return {std::make_unique<QSettings>(keys.join(QLatin1Char('\\')), QSettings::Registry32Format), valueName};
#else
    // The registry ignores case and an INI file does not, so both sides fold to lower case.
    keys << valueName;
    auto scope = root == RegistryRoot::LocalMachine ? QSettings::SystemScope : QSettings::UserScope;
    return {std::make_unique<QSettings>(QSettings::IniFormat, scope, QStringLiteral("kivsuite"), QStringLiteral("registry")),
            keys.join(QLatin1Char('/')).toLower()};
#endif
}

}  // namespace

QString ReadRegistry(const QString& keyPath, const QString& valueName, RegistryRoot root) {
    RegistryEntry entry = registryEntry(keyPath, valueName, root);
    return entry.store->value(entry.key).toString();
}

void WriteRegistry(const QString& keyPath, const QString& valueName, const QString& value,
                   RegistryRoot root) {
    RegistryEntry entry = registryEntry(keyPath, valueName, root);
    entry.store->setValue(entry.key, value);
    entry.store->sync();
}

}  // namespace kivdb::kivfunc
