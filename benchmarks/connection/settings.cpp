// SPDX-License-Identifier: Apache-2.0
#include "settings.h"

namespace bench {

Settings::Settings(const QStringList& words) {
    for (const QString& word : words) {
        const int equals = word.indexOf(QLatin1Char('='));
        if (equals > 0) m_texts.insert(word.left(equals), word.mid(equals + 1));
    }
}

QStringList Settings::Words() const {
    QStringList words;
    for (auto it = m_texts.cbegin(); it != m_texts.cend(); ++it)
        words << it.key() + QLatin1Char('=') + it.value();
    return words;
}

Settings& Settings::Set(const QString& key, const QString& text) {
    m_texts.insert(key, text);
    return *this;
}

Settings& Settings::Set(const QString& key, double number) {
    return Set(key, QString::number(number, 'g', 12));
}

int Settings::Int(const QString& key, int fallback) const {
    bool isNumber = false;
    const int number = m_texts.value(key).toInt(&isNumber);
    return isNumber ? number : fallback;
}

}  // namespace bench
