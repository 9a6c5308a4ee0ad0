// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringRef>

#include <utility>
#include <vector>

/// Splits a text that is shown as HTML into tags and what stands between them, at the places at which the
/// text area's own reader does it: also where that is odd. It reads on whatever comes, and never fails.
class MarkupScanner {
  public:
    enum class EToken { Text, OpeningTag, ClosingTag, Comment, End };
    using Attribute = std::pair<QString, QString>;  ///< name, in lower case, and value

    /// \a html outlives the scanner.
    explicit MarkupScanner(const QString& html) : m_html(html) {}

    /// Goes on to the next one.
    EToken Next();

    /// As it stands: of a text with its entities, of a tag from "<" to ">".
    QStringRef GetSource() const { return m_html.midRef(m_start, m_at - m_start); }
    /// Of a tag, in lower case.
    const QString& GetName() const { return m_name; }
    const std::vector<Attribute>& GetAttributes() const { return m_attributes; }
    /// Whether the opening tag closes itself: "<x/>".
    bool IsClosed() const { return m_isClosed; }

  private:
    bool IsAt(QChar character) const { return m_at < m_html.size() && m_html.at(m_at) == character; }
    void SkipSpace();
    void SkipBehind(QChar character);
    void ReadComment();
    void ReadAttributes();
    QString ReadWord();
    QString ReadQuoted(QChar quote);
    QChar ReadEntity();

    const QString& m_html;
    int m_at = 0;
    int m_start = 0;  ///< of the token
    QString m_name;
    std::vector<Attribute> m_attributes;
    bool m_isClosed = false;
};
