// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QRegularExpression>
#include <QtCore/QSet>
#include <QtCore/QString>

#include <vector>

/// Tells the texts of a German window that are not German: those of the catalogues as they stand in the code,
/// and what has words that only English has.
class EnglishTexts {
  public:
    /// Reads the catalogues' sources.
    EnglishTexts();

    /// What people and programs are called in this test, in whichever text it stands.
    void Allow(const QString& name) { m_names << name; }
    /// Empty, or what is English about \a text, or which number in it has a decimal point.
    QString Fault(const QString& text) const;
    int Count() const { return static_cast<int>(m_messages.size()); }

  private:
    struct Message {
        QString source;
        QRegularExpression inCode;
        QRegularExpression translated;
    };

    void Read(const QString& file);
    void Add(QString source, QString translation);
    void CollectWords();
    QString WithoutNames(const QString& text) const;
    static QRegularExpression PatternOf(const QString& text);

    QStringList m_names;
    std::vector<Message> m_messages;  ///< that are not the same in both languages
    QSet<QString> m_translated;       ///< as a whole
    QSet<QString> m_englishWords;     ///< single words of the catalogues that no translation holds
};
