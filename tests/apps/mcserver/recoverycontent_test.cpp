// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/recoverycontent.h>

#include <tests/support/printing.h>

#include <gtest/gtest.h>

#include <QtCore/QCryptographicHash>

#include <limits>

namespace {

RecoveryContent Some() {
    RecoveryContent content;
    content.configuration = QStringLiteral("/etc/t\u00fcrm/mcserver.ini");
    content.mark = "0123abcd";
    content.time = QDateTime(QDate(2026, 11, 22), QTime(8, 30, 1), Qt::UTC);
    content.modules = {{0,
                        QStringLiteral("ADAM-6051"),
                        QStringLiteral("10.0.0.20"),
                        PollInterval(100),
                        {0.0, 121500000.0, 118100000.25, -5.0, 1e300},
                        {},
                        QStringLiteral("M\u00e4st")},
                       {std::numeric_limits<int>::max(),
                        QStringLiteral("\"a\"\n"),
                        QString(),
                        PollInterval(std::numeric_limits<quint32>::max()),
                        {},
                        {}}};
    return content;
}

/// A file with the sum that belongs to it.
QByteArray Signed(const QByteArray& body) {
    return "mcserver suppression recovery 1 " +
           QCryptographicHash::hash(body, QCryptographicHash::Sha256).toHex() + '\n' + body;
}

TEST(ARecoveryFile, ReadsAsItWasWritten) {
    RecoveryContent read;
    QString defect;
    ASSERT_TRUE(read.FromBytes(Some().ToBytes(), &defect)) << defect.toStdString();
    EXPECT_EQ(read.configuration, Some().configuration);
    EXPECT_EQ(read.mark, Some().mark);
    EXPECT_EQ(read.time, Some().time);
    EXPECT_EQ(read.modules, Some().modules);
}

TEST(ARecoveryFile, IsNotReadIfASingleByteIsAnotherOne) {
    const QByteArray bytes = Some().ToBytes();
    for (int i = 0; i < bytes.size(); ++i) {
        QByteArray damaged = bytes;
        damaged[i] = static_cast<char>(damaged[i] ^ 1);
        RecoveryContent read;
        QString defect;
        EXPECT_FALSE(read.FromBytes(damaged, &defect)) << i;
        EXPECT_FALSE(defect.isEmpty()) << i;
    }
}

TEST(ARecoveryFile, IsNotReadIfItIsShorter) {
    const QByteArray bytes = Some().ToBytes();
    for (int size = 0; size < bytes.size(); ++size) {
        RecoveryContent read;
        QString defect;
        EXPECT_FALSE(read.FromBytes(bytes.left(size), &defect)) << size;
    }
}

struct Damage {
    const char* name;
    const char* body;
    const char* defect;
};

class ADamagedRecoveryFile : public testing::TestWithParam<Damage> {};

TEST_P(ADamagedRecoveryFile, IsRefusedAlthoughItsSumIsRight) {
    RecoveryContent read;
    QString defect;
    EXPECT_FALSE(read.FromBytes(Signed(GetParam().body), &defect));
    EXPECT_EQ(defect, QString::fromLatin1(GetParam().defect));
}

constexpr char NoModule[] = "it has a module that cannot be one";
INSTANTIATE_TEST_SUITE_P(
    All, ADamagedRecoveryFile,
    testing::Values(
        Damage{"Empty", "", "it has no list of modules"}, Damage{"NoList", "{}", "it has no list of modules"},
        Damage{"ModuleIsText", R"({"modules":["a"]})", NoModule},
        Damage{"NegativeIndex", R"({"modules":[{"index":-1,"type":"a","address":"b","pollInterval":1}]})",
               NoModule},
        Damage{"BrokenIndex", R"({"modules":[{"index":1.5,"type":"a","address":"b","pollInterval":1}]})",
               NoModule},
        Damage{"IndexTooLarge", R"({"modules":[{"index":1e10,"type":"a","address":"b","pollInterval":1}]})",
               NoModule},
        Damage{"NoType", R"({"modules":[{"index":1,"address":"b","pollInterval":1}]})", NoModule},
        Damage{"NoAddress", R"({"modules":[{"index":1,"type":"b","pollInterval":1}]})", NoModule},
        Damage{"NegativeInterval", R"({"modules":[{"index":1,"type":"a","address":"b","pollInterval":-1}]})",
               NoModule},
        Damage{"FrequencyIsText",
               R"({"modules":[{"index":1,"type":"a","address":"b","pollInterval":1,"frequencies":["1"]}]})",
               NoModule}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(ARecoveryFile, IsRefusedBeyondItsLimit) {
    RecoveryContent read;
    QString defect;
    EXPECT_FALSE(read.FromBytes(QByteArray(RecoveryContent::MaxBytes + 1, ' '), &defect));
    EXPECT_EQ(defect, QStringLiteral("it is too large"));
}

}  // namespace
