// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace bench {

/// Named numbers and texts as "key=value": the arguments of a child process, and what it finds out.
class Settings {
  public:
    Settings() = default;
    explicit Settings(const QStringList& words);

    QStringList Words() const;
    Settings& Set(const QString& key, const QString& text);
    Settings& Set(const QString& key, double number);
    Settings& Set(const QString& key, int number) { return Set(key, QString::number(number)); }

    bool Has(const QString& key) const { return m_texts.contains(key); }
    QString Text(const QString& key) const { return m_texts.value(key); }
    int Int(const QString& key, int fallback = 0) const;
    double Double(const QString& key) const { return m_texts.value(key).toDouble(); }

  private:
    QMap<QString, QString> m_texts;
};

}  // namespace bench
