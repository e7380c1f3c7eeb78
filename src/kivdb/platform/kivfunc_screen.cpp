// The registry and the placement and look of forms.
#include "platform/kivfunc.h"

#include <QFont>
#include <QScreen>
#include <QSettings>
#include <QWidget>
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

// The suite's forms are drawn in 宋体 9 pt; where that face is missing a Song/Ming face of
// the same style takes its place.
QFont standardFont() {
    QFont font;
    font.setFamilies({QStringLiteral("宋体"), QStringLiteral("新宋体"), QStringLiteral("AR PL UMing CN"),
                      QStringLiteral("AR PL UMing TW"), QStringLiteral("Noto Serif CJK SC")});
    font.setPointSize(9);
    return font;
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

void SetSysScreen(QWidget* form) {
    if (!form) return;
    form->setFont(standardFont());
    if (QScreen* screen = form->screen()) {
        QSize room = screen->availableGeometry().size();
        QSize size = form->size();
        if (size.width() > room.width() || size.height() > room.height())
            form->resize(size.boundedTo(room));
    }
}

void SetFormPOsition(QWidget* form) {
    if (!form || !form->isWindow()) return;  // a widget inside another one is laid out by it
    QWidget* owner = form->parentWidget() ? form->parentWidget()->window() : nullptr;
    QScreen* screen = owner ? owner->screen() : form->screen();
    QRect area = screen ? screen->availableGeometry() : QRect();
    QRect over = owner && owner->isVisible() ? owner->frameGeometry() : area;
    if (over.isEmpty()) return;

    QRect frame = form->frameGeometry();
    frame.moveCenter(over.center());
    if (!area.isEmpty()) {
        // Stay on the screen; a form larger than it keeps its title bar reachable.
        frame.moveLeft(qBound(area.left(), frame.left(), qMax(area.left(), area.right() - frame.width() + 1)));
        frame.moveTop(qBound(area.top(), frame.top(), qMax(area.top(), area.bottom() - frame.height() + 1)));
    }
    form->move(frame.topLeft());
}

}  // namespace kivdb::kivfunc
