// SPDX-License-Identifier: Apache-2.0
// The demonstration that people are shown comes to its end, and tells what it promises.
#include <devicecontrol/multichannelserver/common/mpxorvhandle.h>

#include <platform/config/cfgcenter.h>

#include <tests/apps/mcconsole/nodisplay.h>
#include <tests/support/programrunner.h>

#include <gmock/gmock.h>

#include <QtCore/QDir>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DemoTest : public testing::Test, protected ProgramRunner {};

/// What a client called \a name calls its MpxORV.
QString MpxOrvOf(const QString& name) {
    const QString before = CfgCenter::GetAppName();
    CfgCenter::SetAppName(name);
    const QString mpxOrv = MpxORVHandle::CreateUniqueMpxORVName();
    CfgCenter::SetAppName(before);
    return mpxOrv;
}

/// All lines that \a pattern matches, with times of day shown as "<time>".
std::vector<std::string> Lines(const QByteArray& text, const char* pattern) {
    static const QRegularExpression time(QStringLiteral("\\b\\d\\d:\\d\\d:\\d\\d\\b"));
    const QRegularExpression wanted(QString::fromUtf8(pattern));
    std::vector<std::string> lines;
    for (const QString& line : QString::fromUtf8(text).split(QLatin1Char('\n')))
        if (wanted.match(line).hasMatch())
            lines.push_back(QString(line).replace(time, QStringLiteral("<time>")).trimmed().toStdString());
    return lines;
}

TEST_F(DemoTest, TellsItsChapters) {
    const std::shared_ptr<void> nobodySees = WithoutDisplay(environment);
    const QTemporaryDir directory;
    const QString pictures = directory.filePath(QStringLiteral("pictures"));
    StartProgram(QStringLiteral(MCDEMO), {QStringLiteral("--pictures"), pictures});
    EXPECT_EQ(WaitForEnd(), 0);
    EXPECT_FALSE(errors.contains("mcdemo: ")) << errors.constData();
    EXPECT_THAT(Lines(output, "^\\d+\\. "),
                ElementsAre("1. A server starts, with a simulated direction finder",
                            "2. Two clients connect; each gets an MpxORV of its own",
                            "3. What the server shows everybody", "4. One becomes job master and tunes",
                            "5. A policy refuses, the operator switches it on, the same request is granted",
                            "6. There is one master at a time",
                            "7. A ground transmitter keys: nobody may use its frequency",
                            "8. The server is killed and restarted; the clients come back by themselves",
                            "9. What the operator's windows show"));
    EXPECT_GE(QDir(pictures).entryList({QStringLiteral("console-*.png")}).size(), 8);
    const std::string alpha = MpxOrvOf(QStringLiteral("alpha")).toStdString();
    EXPECT_THAT(Lines(output, "refused: |done: "),
                ElementsAre("alpha     < done: is master", "alpha     < done: tuned to 121.5 MHz",
                            "bravo     < refused: needs MayBIT", "bravo     < done: built-in test started",
                            "bravo     < refused: " + alpha + " is master since <time>",
                            "alpha     < refused: 121.5 MHz is blanked by ADAM-6051 1, input 3",
                            "alpha     < done: tuned to 121.5 MHz"));
    EXPECT_EQ(Lines(output, "/Status/Event\\t[^{\\s]").size(), 1U) << output.constData();
    EXPECT_THAT(Lines(output, "\\{"), IsEmpty());  // nobody who looks on reads JSON
    EXPECT_EQ(Lines(output, "< connected as ").size(), 4U) << output.constData();
    EXPECT_EQ(Lines(output, "< lost the server").size(), 2U) << output.constData();
}

TEST_F(DemoTest, LeavesItsWindowsOpenWhereThereIsADisplay) {
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    StartProgram(QStringLiteral(MCDEMO), {});
    ASSERT_TRUE(WaitUntil([this] { return output.contains("9. The windows are yours"); }))
        << output.constData();
    EXPECT_EQ(Terminate(), 0);
    EXPECT_FALSE(errors.contains("mcdemo: ")) << errors.constData();
}

}  // namespace
