// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/log/stylecost.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>

namespace {

constexpr qint64 Match = 200;          // ns for an element and a rule
constexpr qint64 EmptySheet = 100;     // ns for an element and a sheet, even if that is empty
constexpr qint64 Declaration = 60;     // ns for one that is taken over
constexpr int AttributesPerMatch = 8;  // are looked through in the time of a match

/// The name of the elements that a selector ends with; none if it is not as simple as that.
QString ElementName(const QString& selector) {
    static const QRegularExpression simpleEnd(QStringLiteral(R"((?:^|[\s>+~])([A-Za-z][A-Za-z0-9]*)$)"));
    return simpleEnd.match(selector).captured(1).toLower();
}

}  // namespace

void StyleCost::Add(const QString& sheet) {
    ++m_sheets;
    // A block without an end has one at the end of the sheet.
    const QStringList blocks = sheet.split(QLatin1Char('}'));
    for (const QString& block : blocks) {
        const int body = block.lastIndexOf(QLatin1Char('{'));
        if (body < 0) continue;
        const qint64 declarations = block.midRef(body).count(QLatin1Char(':'));
        const QStringList selectors =
            block.left(body).split(QRegularExpression(QStringLiteral("[,{;]")), Qt::SkipEmptyParts);
        for (const QString& selector : selectors)
            AddSelector(selector.trimmed(), declarations);
    }
}

void StyleCost::AddSelector(const QString& selector, qint64 declarations) {
    // Comments, escapes and what stands in brackets may hide anything.
    const bool isPlain = !selector.contains(QRegularExpression(QStringLiteral(R"([/\\@\[\](:"'])")));
    const QString name = isPlain ? ElementName(selector) : QString();
    Rules& rules = name.isEmpty() ? m_ofAny : m_ofName[name];
    ++rules.rules;
    rules.declarations += declarations;
    if (!isPlain || selector.contains(QRegularExpression(QStringLiteral(R"([\s>+~])")))) ++rules.chains;
}

StyleCost::Share StyleCost::Of(const QString& name, int attributes, int steps) const {
    const Rules own = m_ofName.value(name);
    const qint64 rules = m_ofAny.rules + own.rules;
    const qint64 chains = m_ofAny.chains + own.chains;
    const qint64 declarations = m_ofAny.declarations + own.declarations;
    const qint64 matches = (rules + chains * steps) * (1 + attributes / AttributesPerMatch);
    return {m_sheets * EmptySheet + matches * Match + declarations * Declaration, declarations};
}
