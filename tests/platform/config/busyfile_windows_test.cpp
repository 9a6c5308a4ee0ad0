// SPDX-License-Identifier: Apache-2.0
// What another program has open, as virus scanners do for a moment, may not be read or replaced there.
#include <platform/config/cfgcenter.h>

#include <tests/platform/config/configfixture.h>
#include <tests/support/tracerecorder.h>

#include <gmock/gmock.h>

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFileInfo>

#include <windows.h>

#include <atomic>
#include <thread>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const QString Key = QStringLiteral("k");
const QByteArray Bytes = "[General]\nk=1\n";

/// Somebody who has a file open, and shares it with nobody.
class OtherProgram {
  public:
    explicit OtherProgram(const QString& file)
        : m_handle(CreateFileW(QDir::toNativeSeparators(file).toStdWString().c_str(), GENERIC_READ, 0,
                               nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr)) {
        EXPECT_NE(m_handle, INVALID_HANDLE_VALUE);
    }
    ~OtherProgram() { Close(); }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

    void Close() {
        if (m_handle != INVALID_HANDLE_VALUE) CloseHandle(m_handle);
        m_handle = INVALID_HANDLE_VALUE;
    }

  private:
    HANDLE m_handle;
};

class BusyFile : public ConfigTest {
  protected:
    BusyFile() {
        CfgCenter::Instance().SetPatience(std::chrono::milliseconds(50));
        WriteFile(Bytes);
    }
    ~BusyFile() override { CfgCenter::Instance().SetPatience(std::chrono::seconds(1)); }
};

TEST_F(BusyFile, IsNeitherPutAsideNorReplacedAndIsReadOnceItIsFree) {
    const TraceRecorder traces;
    OtherProgram other(Path());
    const std::unique_ptr<ICfg> root = Root();
    EXPECT_EQ(root->ReadInt(Key, 7), 7);
    ASSERT_EQ(traces.Records().size(), 1U);
    EXPECT_THAT(traces.Messages()[0].toStdString(), HasSubstr("cannot be used"));
    root->WriteInt(QStringLiteral("other"), 2);
    EXPECT_FALSE(root->CommitKey(Key));
    EXPECT_THAT(Names(), ElementsAre(QStringLiteral("app.ini")));
    other.Close();
    EXPECT_EQ(FileBytes(), Bytes);
    EXPECT_TRUE(root->CommitKey(Key));
    EXPECT_EQ(root->ReadInt(Key, 7), 1) << "what the file holds counts for more than a default";
    EXPECT_EQ(FileBytes(), QByteArray("[General]\nk=1\nother=2\n"));
}

TEST_F(BusyFile, KeepsAServerFromStarting) {
    const TraceRecorder traces;
    OtherProgram other(Path());
    QString error;
    EXPECT_FALSE(CfgCenter::Instance().HoldStore(&error));
    EXPECT_THAT(error.toStdString(), HasSubstr("cannot be used"));
    other.Close();
    EXPECT_TRUE(CfgCenter::Instance().HoldStore(&error)) << error.toStdString();
}

TEST_F(BusyFile, ThatIsFreedMeanwhileIsReplaced) {
    CfgCenter::Instance().SetPatience(std::chrono::seconds(30));
    const std::unique_ptr<ICfg> root = Root();
    root->WriteInt(Key, 2);
    OtherProgram other(Path());
    std::atomic<bool> isOver{false};
    // From then on the file is read and replaced.
    std::thread closing([&] {
        while (!QFileInfo::exists(Path(QStringLiteral("app.ini.writer"))) && !isOver)
            std::this_thread::yield();
        other.Close();
    });
    EXPECT_TRUE(root->CommitKey(Key));
    isOver = true;
    closing.join();
    EXPECT_EQ(FileBytes(), QByteArray("[General]\nk=2\n"));
    EXPECT_THAT(Names(), ElementsAre(QStringLiteral("app.ini")));
}

}  // namespace
