// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <tests/platform/vtclient/anymessage.h>

#include <QtCore/QByteArray>

#include <chrono>
#include <cstdio>
#include <tuple>
#include <type_traits>
#include <variant>

/// Tells what happens, if MCS_FUZZ_TELL is set: for whoever looks into an input that was found.
inline bool IsTelling() {
    static const bool isTelling = qEnvironmentVariableIsSet("MCS_FUZZ_TELL");
    return isTelling;
}

inline void Tell(const QString& what) {
    if (IsTelling()) std::fprintf(stderr, "%s\n", qPrintable(what));
}

inline QString Told(const QString& text) {
    return QLatin1Char('\'') + text.left(100) + QLatin1Char('\'');
}
inline QString Told(const QStringList& texts) {
    return Told(texts.join(QStringLiteral("', '")));
}
inline QString Told(const vt::Content& /*content*/) {
    return QStringLiteral("...");
}
inline QString Told(const vt::ItemDescription& item) {
    return QStringLiteral("of kind %1 ...").arg(static_cast<int>(item.kind));
}
inline QString Told(std::chrono::milliseconds time) {
    return QStringLiteral("%1 ms").arg(time.count());
}
/// Numbers, enumerations and flags.
template <class T>
QString Told(T number) {
    return QString::number(static_cast<quint64>(number));
}

inline void TellMessage(const char* from, const vt::Message& message, const QByteArray& bytes) {
    if (!IsTelling()) return;
    QString fields;
    const auto tell = [&fields](const auto& whichever) {
        const auto tellField = [&](const auto& field) {
            fields += QStringLiteral(" %1 %2,").arg(QLatin1String(field.name), Told(whichever.*field.member));
        };
        std::apply([&](const auto&... field) { (tellField(field), ...); },
                   vt::wire::FieldsOf<std::decay_t<decltype(whichever)>>);
    };
    std::visit(tell, message);
    Tell(QStringLiteral("%1 sends %2:%3 %4 bytes: %5")
             .arg(QLatin1String(from))
             .arg(static_cast<int>(TypeOf(message)))
             .arg(fields)
             .arg(bytes.size())
             .arg(QString::fromLatin1(bytes.left(200).toHex(' '))));
}
