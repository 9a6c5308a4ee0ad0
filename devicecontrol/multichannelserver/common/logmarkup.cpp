// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/logmarkup.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QSet>

namespace {

// Of 300, each within the one before, some take 80 ms.
constexpr int MaxTags = 100;

// Those that format text. No tables: the time in which they are laid out doubles with each table or cell
// within another, and a cell may ask for any number of rows and columns.
const QSet<QString>& Tags() {
    static const QSet<QString> tags = {
        QStringLiteral("a"),          QStringLiteral("b"),     QStringLiteral("big"),
        QStringLiteral("blockquote"), QStringLiteral("body"),  QStringLiteral("br"),
        QStringLiteral("center"),     QStringLiteral("cite"),  QStringLiteral("code"),
        QStringLiteral("dd"),         QStringLiteral("dfn"),   QStringLiteral("div"),
        QStringLiteral("dl"),         QStringLiteral("dt"),    QStringLiteral("em"),
        QStringLiteral("font"),       QStringLiteral("h1"),    QStringLiteral("h2"),
        QStringLiteral("h3"),         QStringLiteral("h4"),    QStringLiteral("h5"),
        QStringLiteral("h6"),         QStringLiteral("hr"),    QStringLiteral("html"),
        QStringLiteral("i"),          QStringLiteral("kbd"),   QStringLiteral("li"),
        QStringLiteral("nobr"),       QStringLiteral("ol"),    QStringLiteral("p"),
        QStringLiteral("pre"),        QStringLiteral("qt"),    QStringLiteral("s"),
        QStringLiteral("samp"),       QStringLiteral("small"), QStringLiteral("span"),
        QStringLiteral("strong"),     QStringLiteral("sub"),   QStringLiteral("sup"),
        QStringLiteral("tt"),         QStringLiteral("u"),     QStringLiteral("ul"),
        QStringLiteral("var")};
    return tags;
}

// A tag that every reader takes for the same: nothing in a value can be taken for the end of it. Group 1 is
// the name, 2 the attributes.
const QRegularExpression& WellFormedTag() {
    static const QRegularExpression tag(QStringLiteral(
        R"(</?([A-Za-z][A-Za-z0-9]*)((?:\s+[A-Za-z][A-Za-z-]*(?:=(?:"[^"<>]*"|'[^'<>]*'|[^\s"'<>=/]+))?)*)\s*/?>)"));
    return tag;
}

// Resources, numbers that are spelled in a way of their own or out of all proportion (colours may be long),
// and the formats' own language.
const QRegularExpression& Suspicious() {
    static const QRegularExpression suspicious(
        QStringLiteral(R"(url\s*\(|&#|\\|-qt-|(?<![#0-9A-Fa-f])[0-9]{4,})"),
        QRegularExpression::CaseInsensitiveOption);
    return suspicious;
}

}  // namespace

bool logmarkup::IsHarmless(const QString& html) {
    int count = 0;
    for (int at = html.indexOf(QLatin1Char('<')); at >= 0; at = html.indexOf(QLatin1Char('<'), at)) {
        const QRegularExpressionMatch tag = WellFormedTag().match(html, at, QRegularExpression::NormalMatch,
                                                                  QRegularExpression::AnchoredMatchOption);
        if (!tag.hasMatch() || ++count > MaxTags) return false;
        if (!Tags().contains(tag.captured(1).toLower())) return false;
        if (Suspicious().match(tag.captured(2)).hasMatch()) return false;
        at = tag.capturedEnd();
    }
    return true;
}
