// The placement and look of the suite's forms.
#include "platform/ui/kivfunc_forms.h"

#include <QFont>
#include <QScreen>
#include <QWidget>

namespace kivdb::kivfunc {

namespace {

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
