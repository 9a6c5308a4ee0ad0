// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/config/configfixture.h>
#include <tests/support/tracerecorder.h>

#include <gmock/gmock.h>

#include <QtCore/QSettings>
#include <QtCore/QTextCodec>

namespace {

class ForeignFile : public ConfigTest {
  protected:
    static QString Of(const char* key) {
        return Root()->ReadString(QString::fromUtf8(key), QStringLiteral("absent"));
    }
};

TEST_F(ForeignFile, WhatIsWrittenByHandIsReadAsItIsMeant) {
    WriteFile(
        "\xEF\xBB\xBF; a comment\r\n"
        "# another = one\r\n"
        "root = 1\r\n"
        "\r\n"
        "[ S\xC3\xA4tze ]\r\n"
        "  plain key = one, two; three = four\r\n"
        "schl\xC3\xBCssel=\xF0\x9F\x98\x80\r\n"
        "path=C:\\data\\dir\r\n"
        "quoted=\"  a \\\"b\\\" \"  \r\n"
        "nothing=\r\n"
        "[A/B]\r\n"
        "c\\d=1\r\n"
        "[GENERAL]\r\n"
        "late=2\r\n"
        "late=3");
    const TraceRecorder traces;
    EXPECT_EQ(Of("root"), QStringLiteral("1"));
    EXPECT_EQ(Of("Sätze/plain key"), QStringLiteral("one, two; three = four"));
    EXPECT_EQ(Of("Sätze/schlüssel"), QStringLiteral("\U0001F600"));
    EXPECT_EQ(Of("Sätze/path"), QStringLiteral("C:\\data\\dir"));
    EXPECT_EQ(Of("Sätze/quoted"), QStringLiteral("  a \"b\" "));
    EXPECT_EQ(Of("Sätze/nothing"), QString());
    EXPECT_EQ(Of("A/B/c/d"), QStringLiteral("1"));
    EXPECT_EQ(Of("late"), QStringLiteral("3"));
    EXPECT_TRUE(traces.Records().empty());
}

TEST_F(ForeignFile, WhatIsThereOutlivesACommitOfSomethingElse) {
    WriteFile("[S]\nlist=a, b\nother=B\xC3\xBCro\n[general]\nroot=x\n[%General]\nin=y\n");
    const std::unique_ptr<ICfg> root = Root();
    root->WriteInt(QStringLiteral("new"), 1);
    ASSERT_TRUE(root->CommitKey(QStringLiteral("new")));
    EXPECT_EQ(FileBytes(),
              QByteArray(
                  "[General]\nnew=1\nroot=x\n\n[%General]\nin=y\n\n[S]\nlist=\"a, b\"\nother=B\xC3\xBCro\n"));
}

std::unique_ptr<QSettings> Settings(const QString& path) {
    auto settings = std::make_unique<QSettings>(path, QSettings::IniFormat);
    settings->setIniCodec(QTextCodec::codecForName("UTF-8"));
    return settings;
}

// Tools that know QSettings are used on these files.
const QStringList SharedKeys = {QStringLiteral("root"), QStringLiteral("S/a b"), QStringLiteral("S/x/ü/;"),
                                QStringLiteral("General/k"), QStringLiteral("%x/\u0416")};
const QStringList SharedContents = {QString(),
                                    QStringLiteral(" a, b;c=d "),
                                    QStringLiteral("\"q\"\\\n\r\t"),
                                    QStringLiteral("äöü"),
                                    QStringLiteral("@"),
                                    QStringLiteral("\u0001f0"),
                                    QStringLiteral("plain"),
                                    QStringLiteral("100%")};

TEST_F(ForeignFile, WhatQSettingsWroteIsRead) {
    for (const QString& content : SharedContents) {
        const std::unique_ptr<QSettings> settings = Settings(Path());
        for (const QString& key : SharedKeys)
            settings->setValue(key, content + key);
        settings->sync();
        const std::unique_ptr<ICfg> root = Reopened();
        for (const QString& key : SharedKeys)
            EXPECT_EQ(root->ReadString(key, QString()), content + key);
    }
}

TEST_F(ForeignFile, WhatIsWrittenQSettingsReads) {
    for (int i = 0; i < SharedContents.size(); ++i) {
        const std::unique_ptr<ICfg> root = Reopened();
        for (const QString& key : SharedKeys)
            root->WriteString(key, SharedContents[i] + key);
        ASSERT_TRUE(root->CommitKey(QString()));
        // By another name each time, since QSettings remembers files.
        const QString copy = QStringLiteral("copy%1.ini").arg(i);
        WriteFile(FileBytes(), copy);
        const std::unique_ptr<QSettings> settings = Settings(Path(copy));
        for (const QString& key : SharedKeys)
            EXPECT_EQ(settings->value(key).toString(), SharedContents[i] + key);
        EXPECT_EQ(settings->allKeys().size(), SharedKeys.size());
        EXPECT_EQ(settings->status(), QSettings::NoError);
    }
}

}  // namespace
