// SPDX-License-Identifier: Apache-2.0
// The frames that docs/protocol.md shows, byte by byte.
#include <tests/platform/vtclient/codecprobe.h>

#include <platform/vtclient/wire/vtlimits.h>

#include <QtCore/QCborArray>
#include <QtCore/QCborValue>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QtEndian>

#include <set>

namespace {

struct ShownFrame {
    QString name;
    QString notation;  ///< as people read it
    QByteArray bytes;

    QByteArray Body() const { return bytes.mid(sizeof(quint32)); }
};

std::vector<ShownFrame> FramesOfThePage() {
    QFile page(QStringLiteral(PROTOCOL_PAGE));
    EXPECT_TRUE(page.open(QIODevice::ReadOnly));
    const QRegularExpression head(QStringLiteral("^    (\\w+) +(\\[\\d+, .*\\])$"));
    const QRegularExpression bytes(QStringLiteral("^      ((?:[0-9a-f]{2} ?)+)$"));
    std::vector<ShownFrame> frames;
    const QStringList lines =
        QString::fromUtf8(page.readAll()).section(QStringLiteral("\n## Bytes\n"), 1).split(QLatin1Char('\n'));
    for (const QString& line : lines) {
        const QRegularExpressionMatch begin = head.match(line);
        const QRegularExpressionMatch more = bytes.match(line);
        if (begin.hasMatch()) frames.push_back({begin.captured(1), begin.captured(2), {}});
        if (more.hasMatch() && !frames.empty())
            frames.back().bytes += QByteArray::fromHex(more.captured(1).toLatin1());
    }
    return frames;
}

TEST(ProtocolBytes, AreThoseOfWholeFrames) {
    for (const ShownFrame& frame : FramesOfThePage()) {
        SCOPED_TRACE(frame.notation.toStdString());
        ASSERT_GT(frame.bytes.size(), int(sizeof(quint32)));
        EXPECT_EQ(qFromBigEndian<quint32>(frame.bytes.constData()), quint32(frame.Body().size()));
        EXPECT_LE(quint32(frame.Body().size()), vtlimits::MaxFrameBeforeWelcome);
    }
}

TEST(ProtocolBytes, SayWhatStandsBesideThem) {
    for (const ShownFrame& frame : FramesOfThePage()) {
        const QCborValue said = QCborValue::fromCbor(frame.Body());
        EXPECT_EQ(said.toDiagnosticNotation(QCborValue::Compact), frame.notation);
    }
}

TEST(ProtocolBytes, AreReadAndWrittenSoByOurs) {
    for (const ShownFrame& frame : FramesOfThePage()) {
        SCOPED_TRACE(frame.notation.toStdString());
        const DecodedMessage decoded = Decode(frame.Body());
        EXPECT_EQ(decoded.error, QString());
        EXPECT_EQ(ToBytes(decoded).toHex(' ').toStdString(), frame.Body().toHex(' ').toStdString());
    }
}

TEST(ProtocolBytes, ShowEveryMessageOfAUsualSession) {
    std::set<QString> names;
    for (const ShownFrame& frame : FramesOfThePage())
        names.insert(frame.name);
    for (const char* const name : {"hello", "welcome", "subscribe", "subscribed", "snapshot", "end", "ack",
                                   "batch", "write", "answer", "ping", "pong", "bye"})
        EXPECT_EQ(names.count(QString::fromLatin1(name)), 1U) << name;
}

}  // namespace
