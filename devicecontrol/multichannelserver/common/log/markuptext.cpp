// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/log/markuptext.h>

#include <devicecontrol/multichannelserver/common/log/htmltag.h>
#include <devicecontrol/multichannelserver/common/log/markupscanner.h>

#include <QtCore/QStringList>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>

namespace {

/// Collects the texts between tags, with their entities.
class Collector {
  public:
    QString Collect(const QString& html);

  private:
    void Enter(const QString& name, bool isClosed);
    void Leave(const QString& name);
    void AddText(const QStringRef& text);
    void EndParagraph();

    QString m_text;
    QString m_hiddenBy;  ///< the outermost element that hides what is in it
    int m_preformatted = 0;
};

QString Collector::Collect(const QString& html) {
    MarkupScanner scanner(html);
    for (;;) {
        switch (scanner.Next()) {
            case MarkupScanner::EToken::Text:
                if (m_hiddenBy.isEmpty()) AddText(scanner.GetSource());
                break;
            case MarkupScanner::EToken::OpeningTag:
                Enter(scanner.GetName(), scanner.IsClosed());
                break;
            case MarkupScanner::EToken::ClosingTag:
                Leave(scanner.GetName());
                break;
            case MarkupScanner::EToken::Comment:
                break;
            case MarkupScanner::EToken::End:
                return m_text;
        }
    }
}

void Collector::Enter(const QString& name, bool isClosed) {
    const HtmlTag& tag = HtmlTag::Of(name);
    if (m_hiddenBy.isEmpty() && !isClosed && tag.hasHiddenText) m_hiddenBy = name;
    if (tag.divides) EndParagraph();
    if (tag.kind == HtmlTag::EKind::Preformatted && !isClosed) ++m_preformatted;
    if (tag.kind == HtmlTag::EKind::LineBreak) m_text += QChar(QChar::LineSeparator);
    if (tag.kind == HtmlTag::EKind::Image) m_text += QChar(QChar::ObjectReplacementCharacter);
}

void Collector::Leave(const QString& name) {
    const HtmlTag& tag = HtmlTag::Of(name);
    if (name == m_hiddenBy) m_hiddenBy.clear();
    if (tag.divides) EndParagraph();
    if (tag.kind == HtmlTag::EKind::Preformatted && m_preformatted > 0) --m_preformatted;
}

void Collector::AddText(const QStringRef& text) {
    if (m_preformatted > 0) {
        m_text += text;
        return;
    }
    for (const QChar character : text) {
        if (!character.isSpace() || character == QChar::Nbsp)
            m_text += character;
        else if (!m_text.isEmpty() && !m_text.at(m_text.size() - 1).isSpace())
            m_text += QLatin1Char(' ');
    }
}

void Collector::EndParagraph() {
    if (!m_text.isEmpty() && m_text.at(m_text.size() - 1) == QLatin1Char(' ')) m_text.chop(1);
    if (!m_text.isEmpty() && !m_text.endsWith(QLatin1Char('\n'))) m_text += QLatin1Char('\n');
}

}  // namespace

QString markuptext::Of(const QString& html) {
    // A single element, so what remains to be read are the entities.
    QTextDocument document;
    document.setUndoRedoEnabled(false);
    document.setHtml(
        QStringLiteral("<p style=\"white-space:pre-wrap\">%1</p>").arg(Collector().Collect(html)));
    QStringList paragraphs;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        paragraphs << block.text();
    while (!paragraphs.isEmpty() && paragraphs.last().isEmpty())
        paragraphs.removeLast();
    return paragraphs.join(QLatin1Char('\n'));
}
