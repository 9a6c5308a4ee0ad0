// SPDX-License-Identifier: Apache-2.0
#include <tests/soak/faultmatrix.h>

namespace soak {

namespace {

constexpr int ShortDelayMs = 20;

QString AlarmText(EAlarm alarm) {
    switch (alarm) {
        case EAlarm::Always:
            return QStringLiteral("always");
        case EAlarm::Never:
            return QStringLiteral("never");
        case EAlarm::Perhaps:
            break;
    }
    return QStringLiteral("when due");
}

qint64 CountErrors(const FaultRow& row) {
    qint64 sum = 0;
    for (const auto& [text, count] : row.errors)
        sum += count;
    return sum;
}

QString ErrorTexts(const FaultRow& row) {
    QStringList texts;
    for (const auto& [text, count] : row.errors)
        texts += QStringLiteral("%1 (%2)").arg(text).arg(count);
    return texts.isEmpty() ? QStringLiteral("none") : texts.join(QStringLiteral("; "));
}

FaultRow MakeRow(const QString& fault, EAlarm alarm) {
    FaultRow row;
    row.fault = fault;
    row.alarm = alarm;
    return row;
}

}  // namespace

FaultMatrix::FaultMatrix(int responseTimeout) {
    const auto add = [this](const QString& fault, EAlarm alarm) { m_rows.push_back(MakeRow(fault, alarm)); };
    add(QStringLiteral("none"), EAlarm::Never);
    for (const char* const fault : {"reset", "refused", "silence", "half", "transaction", "function",
                                    "length", "garbage", "exception", "duplicate"})
        add(QLatin1String(fault), EAlarm::Always);
    add(QStringLiteral("delay %1").arg(3 * responseTimeout), EAlarm::Always);
    add(QStringLiteral("delay %1").arg(ShortDelayMs), EAlarm::Never);
    add(QStringLiteral("idle %1").arg(responseTimeout / 5), EAlarm::Never);
    add(QStringLiteral("storm 20"), EAlarm::Perhaps);
    add(QStringLiteral("storm 80"), EAlarm::Perhaps);
    add(QStringLiteral("power cut"), EAlarm::Always);
}

qint64 FaultMatrix::Episodes() const {
    qint64 sum = 0;
    for (const FaultRow& row : m_rows)
        sum += row.episodes;
    return sum;
}

qint64 FaultMatrix::Errors() const {
    qint64 sum = 0;
    for (const FaultRow& row : m_rows)
        sum += CountErrors(row);
    return sum;
}

QString FaultMatrix::ToText() const {
    QString text = QStringLiteral(
        "| Fault | Times | Alarm | Reported | Read again at the first attempt | after at most |\n"
        "|---|---|---|---|---|---|\n");
    for (const FaultRow& row : m_rows)
        text += QStringLiteral("| %1 | %2 | %3 | %4 | %5 | %6 ms |\n")
                    .arg(row.fault, QString::number(row.episodes), AlarmText(row.alarm), ErrorTexts(row),
                         QString::number(row.mendedAtOnce), QString::number(row.longestMendingMs));
    return text;
}

}  // namespace soak
