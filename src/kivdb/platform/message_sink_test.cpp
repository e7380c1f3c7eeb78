#include "platform/message_sink.h"

#include "platform/kivfunc_gui_test.h"

#include <QAbstractButton>
#include <QMessageBox>
#include <gtest/gtest.h>
#include <cstdio>
#include <cstdlib>

namespace kivdb {
namespace {

TEST(MessageSink, ConsoleWritesOneLinePerMessageAndAnswersAsPreset) {
    for (bool answer : {false, true}) {
        SCOPED_TRACE(answer ? "answering yes" : "answering no");
        char* buffer = nullptr;
        size_t size = 0;
        std::FILE* out = open_memstream(&buffer, &size);
        ConsoleMessageSink sink(answer, out);
        sink.show(MessageKind::Hint, "明细中序号 3 行，未指定临时单号。");
        sink.show(MessageKind::Warn, "table Po_Recv do not have field PoNo");
        sink.show(MessageKind::Error, "删除数据表%s出错");
        EXPECT_EQ(sink.confirm("序列号的数量应该是5,是否确认退出？"), answer);
        std::fclose(out);
        EXPECT_EQ(std::string(buffer, size), "MSG hint: 明细中序号 3 行，未指定临时单号。\nMSG warn: table Po_Recv do not have field PoNo\n"
                                             "MSG error: 删除数据表%s出错\nCONFIRM: 序列号的数量应该是5,是否确认退出？\n");
        std::free(buffer);
    }
}

TEST(MessageSink, WidgetBoxesShowChineseCaptionsAndAnswerYesOnlyForYes) {
    if (!testing_gui::guiApplication()) GTEST_SKIP() << "a non-GUI application already exists";
    using Box = QMessageBox;
    auto show = [](MessageKind kind) { return [kind](WidgetMessageSink& s) { s.show(kind, "仓库W1"); return false; }; };
    auto ask = [](WidgetMessageSink& s) { return s.confirm("单据已过了修改期限"); };
    auto press = [](int button) { return [button](Box* b) { testing_gui::click(b->buttons().value(button)); }; };
    auto key = [](int k) { return [k](Box* b) { testing_gui::sendKey(b, k); }; };
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
        testing_gui::whenModal([&](QWidget* modal) {
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
