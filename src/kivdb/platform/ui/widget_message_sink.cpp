#include "platform/ui/widget_message_sink.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

namespace kivdb {
namespace {

struct KindLook {
    QString caption;
    QMessageBox::Icon icon;
};

KindLook lookOf(MessageKind kind) {
    switch (kind) {
    case MessageKind::Hint: return {QStringLiteral("提示"), QMessageBox::Information};
    case MessageKind::Warn: return {QStringLiteral("警告"), QMessageBox::Warning};
    case MessageKind::Error: return {QStringLiteral("错误"), QMessageBox::Critical};
    }
    return {QStringLiteral("错误"), QMessageBox::Critical};
}

}  // namespace

void WidgetMessageSink::show(MessageKind kind, const QString& text) {
    const KindLook look = lookOf(kind);
    QMessageBox box(look.icon, look.caption, text, QMessageBox::NoButton, QApplication::activeWindow());
    box.addButton(QStringLiteral("确定"), QMessageBox::AcceptRole);
    box.exec();
}

bool WidgetMessageSink::confirm(const QString& question) {
    QMessageBox box(QMessageBox::Question, QStringLiteral("确认"), question, QMessageBox::NoButton,
                    QApplication::activeWindow());
    QPushButton* yes = box.addButton(QStringLiteral("是(&Y)"), QMessageBox::YesRole);
    QPushButton* no = box.addButton(QStringLiteral("否(&N)"), QMessageBox::NoRole);
    // A stray Enter or Esc must not approve anything.
    box.setDefaultButton(no);
    box.setEscapeButton(no);
    box.exec();
    return box.clickedButton() == yes;
}

void installWidgetMessageSink() {
    static WidgetMessageSink sink;
    setGuiMessageSink(&sink);
}

}  // namespace kivdb
