#include "platform/ui/slot_guard.h"

#include "platform/message_sink.h"

#include <gtest/gtest.h>
#include <functional>
#include <stdexcept>

namespace kivdb {
namespace {

// A sink that fails as it shows: the failure must not leave the slot either.
class FailingSink : public RecordingMessageSink {
public:
    void show(MessageKind, const QString&) override { throw std::runtime_error("no screen"); }
};

TEST(SlotGuard, AnErrorInASlotShowsAsAMessageAndNeverLeavesIt) {
    struct Case {
        const char* what;
        std::function<void(const QString&)> slot;
        QStringList shown;
    } cases[] = {
        {"a slot that succeeds shows nothing", [](const QString&) {}, {}},
        {"a library error shows its message", [](const QString&) { throw std::runtime_error("仓库W1不存在"); },
         {"MSG error: 仓库W1不存在"}},
        {"any other exception is an unknown error", [](const QString&) { throw 42; }, {"MSG error: unknown error"}},
        {"the slot sees the signal's arguments",
         [](const QString& name) { throw std::invalid_argument(name.toStdString()); }, {"MSG error: 单号"}},
    };
    for (const auto& c : cases) {
        RecordingMessageSink sink;
        ScopedMessageSink installed(&sink);
        QObject sender;
        connectGuarded(&sender, &QObject::objectNameChanged, &sender, c.slot);
        sender.setObjectName(QStringLiteral("单号"));
        EXPECT_EQ(sink.transcript(), c.shown) << c.what;
    }

    FailingSink failing;
    ScopedMessageSink installed(&failing);
    QObject sender;
    connectGuarded(&sender, &QObject::objectNameChanged, &sender, [] { throw std::runtime_error("lost"); });
    EXPECT_NO_THROW(sender.setObjectName(QStringLiteral("x")));
}

}  // namespace
}  // namespace kivdb
