#include "platform/message_sink.h"

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

}  // namespace
}  // namespace kivdb
