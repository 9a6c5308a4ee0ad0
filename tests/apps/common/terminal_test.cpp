// SPDX-License-Identifier: Apache-2.0
#include <apps/common/terminal.h>

#include <gtest/gtest.h>

#include <mutex>
#include <string>

namespace {

TEST(Terminal, LinesGoWhereTheyAreSent) {
    std::mutex mutex;
    std::string output;
    std::string errors;
    terminal::SendLinesTo([&](terminal::EStream stream, const QByteArray& lines) {
        const std::lock_guard<std::mutex> lock(mutex);
        (stream == terminal::EStream::Output ? output : errors) += lines.toStdString();
    });
    terminal::PutOutput("it runs\n");
    terminal::WriteError("it fails\n");
    terminal::PutOutput("it ends\n");
    terminal::Drain();
    terminal::SendLinesTo({});
    EXPECT_EQ(output, "it runs\nit ends\n");
    EXPECT_EQ(errors, "it fails\n");
}

}  // namespace
