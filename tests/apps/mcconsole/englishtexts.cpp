// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/mcconsole/englishtexts.h>

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QXmlStreamReader>
#include <QtGui/QTextDocument>

#include <algorithm>

namespace {

/// The text without what marks a key in it.
QString Unmarked(QString text) {
    text.replace(QLatin1String("&&"), QString(QChar(1)));
    text.remove(QLatin1Char('&'));
    return text.replace(QChar(1), QLatin1String("&"));
}

QString Letters(QString text) {
    return text.remove(QRegularExpression(QStringLiteral("%[1-9Ln]|[^A-Za-z]")));
}

QStringList WordsOf(const QString& text) {
    return text.split(QRegularExpression(QStringLiteral("[^\\p{L}]+")), Qt::SkipEmptyParts);
}

/// None of them is a German word, or the name of anything here.
const QRegularExpression& OnlyEnglishWords() {
    static const auto& words = *new QRegularExpression(
        QStringLiteral(
            "\\b(the|is|are|of|by|from|and|with|which|has|have|had|not|to|no|for|this|that|when|while|does|"
            "cannot|can|since|than|other|others|nobody|until|been|were|be|it|its|on|at|as|or|if|"
            "done|refused|ended|tuned|lost|needs|connected|disconnected|Idle|Ready|answer|answers|"
            "input|keyed|frequency|server|error)\\b"),
        QRegularExpression::UseUnicodePropertiesOption);
    return words;
}

}  // namespace

EnglishTexts::EnglishTexts() {
    for (const char* const catalogue : {"MultiChannelServerApps_de.ts", "MultiChannelServerCommon_de.ts"})
        Read(QStringLiteral(TRANSLATIONS "/") + QLatin1String(catalogue));
    CollectWords();
}

void EnglishTexts::Read(const QString& name) {
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    QXmlStreamReader reader(&file);
    QString source;
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement) continue;
        if (reader.name() == QLatin1String("source")) source = reader.readElementText();
        if (reader.name() == QLatin1String("numerusform") ||
            (reader.name() == QLatin1String("translation") &&
             reader.attributes().value(QLatin1String("type")).isEmpty())) {
            const QString text = reader.readElementText(QXmlStreamReader::IncludeChildElements);
            Add(source, text);
        }
    }
    ASSERT_FALSE(reader.hasError()) << reader.errorString().toStdString();
}

void EnglishTexts::Add(QString source, QString translation) {
    source = Unmarked(source);
    translation = Unmarked(translation);
    m_translated.insert(translation);
    if (source != translation && Letters(source).size() >= 3)
        m_messages.push_back({source, PatternOf(source), PatternOf(translation)});
}

QRegularExpression EnglishTexts::PatternOf(const QString& text) {
    QString pattern = QRegularExpression::escape(text);
    pattern.replace(QRegularExpression(QStringLiteral("\\\\%(?:\\d|n)")), QStringLiteral(".+"));
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern),
                              QRegularExpression::DotMatchesEverythingOption);
}

void EnglishTexts::CollectWords() {
    QSet<QString> germanWords;
    for (const QString& translation : m_translated)
        for (const QString& word : WordsOf(translation))
            germanWords.insert(word);
    for (const Message& message : m_messages) {
        const QStringList words = WordsOf(message.source);
        if (words.size() == 1 && words[0].size() >= 4 && !germanWords.contains(words[0]))
            m_englishWords.insert(words[0]);
    }
}

/// Without paths of the tree, addresses, and what is a name here.
QString EnglishTexts::WithoutNames(const QString& text) const {
    static const QRegularExpression paths(QStringLiteral("(/[\\w.-]+)+/?"));
    static const QRegularExpression addresses(QStringLiteral("\\d+\\.\\d+\\.\\d+\\.\\d+(:\\d+)?"));
    QString rest = text;
    rest.remove(QChar(0x200b));  // where long paths may be broken
    for (const QString& name : m_names)
        rest.replace(name, QStringLiteral("\u25a1"));
    return rest.replace(paths, QStringLiteral("\u25a1")).replace(addresses, QStringLiteral("\u25a1"));
}

QString EnglishTexts::Fault(const QString& shown) const {
    QString text = shown;
    if (Qt::mightBeRichText(text)) {
        QTextDocument document;
        document.setHtml(text);
        text = document.toPlainText();
    }
    text = Unmarked(text);
    const QString rest = WithoutNames(text);
    static const QRegularExpression pointed(QStringLiteral("(?<![\\w.])\\d+\\.\\d+(?![\\d.])"));
    if (const auto number = pointed.match(rest); number.hasMatch())
        return QStringLiteral("the number %1").arg(number.captured());
    if (const auto word = OnlyEnglishWords().match(rest); word.hasMatch())
        return QStringLiteral("the word \"%1\"").arg(word.captured());
    for (const QString& word : WordsOf(rest))
        if (m_englishWords.contains(word)) return QStringLiteral("the word \"%1\"").arg(word);
    if (m_translated.contains(text)) return QString();
    for (const Message& message : m_messages)
        if (message.inCode.match(rest).hasMatch() && !message.translated.match(rest).hasMatch())
            return QStringLiteral("as in the code: ") + message.source;
    return QString();
}
