#include "platform/ui/widget_message_sink.h"

#include "testing/gui.h"

#include <QAbstractButton>
#include <QMessageBox>
#include <gtest/gtest.h>

namespace kivdb {
namespace {

TEST(MessageSink, WidgetBoxesShowChineseCaptionsAndAnswerYesOnlyForYes) {
    if (!testing::guiApplication()) GTEST_SKIP() << "a non-GUI application already exists";
    using Box = QMessageBox;
    auto show = [](MessageKind kind) { return [kind](WidgetMessageSink& s) { s.show(kind, "仓库W1"); return false; }; };
    auto ask = [](WidgetMessageSink& s) { return s.confirm("单据已过了修改期限"); };
    auto press = [](int button) { return [button](Box* b) { testing::click(b->buttons().value(button)); }; };
    auto key = [](int k) { return [k](Box* b) { testing::sendKey(b, k); }; };
    const QStringList yesNo{"是(&Y)", "否(&N)"};
    const std::tuple<std::function<bool(WidgetMessageSink&)>, QString, QStringList, std::function<void(Box*)>, bool> cases[] = {
        {show(MessageKind::Hint), "提示", {"确定"}, press(0), false},
        {show(MessageKind::Warn), "警告", {"确定"}, press(0), false},
        {show(MessageKind::Error), "错误", {"确定"}, key(Qt::Key_Return), false},
        {ask, "确认", yesNo, press(0), true},
        {ask, "确认", yesNo, press(1), false},
        {ask, "确认", yesNo, key(Qt::Key_Escape), false},
        {ask, "确认", yesNo, key(Qt::Key_Return), false},  // no is the default
    };
    WidgetMessageSink sink;
    int row = 0;
    for (const auto& [call, caption, buttons, act, answer] : cases) {
        SCOPED_TRACE(::testing::Message() << "row " << row++);
        QStringList seen;
        testing::whenModal([&](QWidget* modal) {
            auto* box = qobject_cast<Box*>(modal);
            seen << box->windowTitle();
            for (auto* b : box->buttons()) seen << b->text();
            act(box);
        });
        EXPECT_EQ(call(sink), answer);
        EXPECT_EQ(seen, QStringList{caption} + buttons);
    }
}

}  // namespace
}  // namespace kivdb
