#include "platform/message_sink.h"

#include "platform/kivfunc_gui_test.h"

#include <QMessageBox>
#include <QPushButton>
#include <gtest/gtest.h>
#include <cstdio>
#include <cstdlib>

namespace kivdb {
namespace {

using testing_gui::click;
using testing_gui::guiApplication;
using testing_gui::sendKey;
using testing_gui::whenModal;

// Everything a console sink wrote, read back from a memory stream.
std::string consoleOutput(bool answer, std::vector<bool>* answers) {
    char* buffer = nullptr;
    size_t size = 0;
    std::FILE* out = open_memstream(&buffer, &size);
    ConsoleMessageSink sink(answer, out);
    sink.show(MessageKind::Hint, "明细中序号 3 行，未指定临时单号。");
    sink.show(MessageKind::Warn, "table Po_Recv do not have field PoNo");
    sink.show(MessageKind::Error, "删除数据表%s出错");
    answers->push_back(sink.confirm("序列号的数量应该是5,是否确认退出？"));
    std::fclose(out);
    std::string text(buffer, size);
    std::free(buffer);
    return text;
}

TEST(MessageSink, ConsoleWritesOneLinePerMessageAndAnswersAsPreset) {
    for (bool answer : {false, true}) {
        std::vector<bool> answers;
        EXPECT_EQ(consoleOutput(answer, &answers),
                  "MSG hint: 明细中序号 3 行，未指定临时单号。\n"
                  "MSG warn: table Po_Recv do not have field PoNo\n"
                  "MSG error: 删除数据表%s出错\n"
                  "CONFIRM: 序列号的数量应该是5,是否确认退出？\n");
        EXPECT_EQ(answers, std::vector<bool>{answer});
    }
}

TEST(MessageSink, GuardsNestAndRestore) {
    RecordingMessageSink outer, inner;
    MessageSink* before = &messageSink();
    {
        ScopedMessageSink outerGuard(&outer);
        {
            ScopedMessageSink innerGuard(&inner);
            messageSink().show(MessageKind::Warn, "inner");
        }
        messageSink().show(MessageKind::Error, "outer");
        EXPECT_EQ(setMessageSink(&inner), &outer);
        EXPECT_EQ(setMessageSink(&outer), &inner);
    }
    EXPECT_EQ(&messageSink(), before);
    EXPECT_EQ(inner.messages(), (std::vector<RecordedMessage>{{MessageKind::Warn, "inner"}}));
    EXPECT_EQ(outer.texts(), QStringList{"outer"});
}

TEST(MessageSink, DefaultIsTheConsoleUntilThereIsAGui) {
    if (!QCoreApplication::instance()) EXPECT_NE(dynamic_cast<ConsoleMessageSink*>(&messageSink()), nullptr);
    if (!guiApplication()) GTEST_SKIP() << "a non-GUI application already exists";
    EXPECT_NE(dynamic_cast<WidgetMessageSink*>(&messageSink()), nullptr);
}

TEST(MessageSink, WidgetBoxesCarryChineseCaptions) {
    if (!guiApplication()) GTEST_SKIP() << "a non-GUI application already exists";
    const std::tuple<MessageKind, QString, QMessageBox::Icon> cases[] = {
        {MessageKind::Hint, "提示", QMessageBox::Information},
        {MessageKind::Warn, "警告", QMessageBox::Warning},
        {MessageKind::Error, "错误", QMessageBox::Critical},
    };
    WidgetMessageSink sink;
    for (const auto& [kind, caption, icon] : cases) {
        QString seenCaption, seenText, seenButton;
        QMessageBox::Icon seenIcon = QMessageBox::NoIcon;
        whenModal([&](QWidget* modal) {
            auto* box = qobject_cast<QMessageBox*>(modal);
            ASSERT_NE(box, nullptr);
            seenCaption = box->windowTitle();
            seenText = box->text();
            seenIcon = box->icon();
            seenButton = box->buttons().value(0)->text();
            click(box->buttons().value(0));
        });
        sink.show(kind, "仓库W1在日期2006-03-31之后已经有结存记录");
        EXPECT_EQ(seenCaption, caption);
        EXPECT_EQ(seenIcon, icon);
        EXPECT_EQ(seenText, "仓库W1在日期2006-03-31之后已经有结存记录");
        EXPECT_EQ(seenButton, "确定");
    }
}

TEST(MessageSink, WidgetQuestionSaysYesOnlyWhenYesIsChosen) {
    if (!guiApplication()) GTEST_SKIP() << "a non-GUI application already exists";
    const std::pair<std::function<void(QMessageBox*)>, bool> cases[] = {
        {[](QMessageBox* box) { click(box->buttons().value(0)); }, true},  // 是(&Y)
        {[](QMessageBox* box) { click(box->buttons().value(1)); }, false},  // 否(&N)
        {[](QMessageBox* box) { sendKey(box, Qt::Key_Escape); }, false},
        {[](QMessageBox* box) { sendKey(box, Qt::Key_Return); }, false},
        {[](QMessageBox* box) { box->close(); }, false},
    };
    WidgetMessageSink sink;
    for (const auto& [act, expected] : cases) {
        QString caption;
        QStringList buttons;
        whenModal([&](QWidget* modal) {
            auto* box = qobject_cast<QMessageBox*>(modal);
            caption = box->windowTitle();
            for (auto* b : box->buttons()) buttons << b->text();
            act(box);
        });
        EXPECT_EQ(sink.confirm("单据已过了修改期限，不能修改"), expected);
        EXPECT_EQ(caption, "确认");
        EXPECT_EQ(buttons, (QStringList{"是(&Y)", "否(&N)"}));
    }
}

}  // namespace
}  // namespace kivdb
