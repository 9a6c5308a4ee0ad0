// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/wire/content.h>

#include <QtCore/QCborStreamReader>
#include <QtCore/QString>

/// Reads as vt::CborInput does, every element by Qt's reader: what that one is held against.
class QtCborInput {
  public:
    /// \a data stays valid while this is used.
    QtCborInput(const char* data, qint64 size) : m_reader(data, size), m_size(size) {}

    bool HasFailed() const { return !m_error.isEmpty(); }
    const QString& Error() const { return m_error; }
    bool Fail(const char* what);

    /// Enters and leaves an array. Leave fails if elements are left.
    bool Enter();
    bool Leave();
    /// Whether the array that was entered has a further element. False once something is wrong.
    bool HasNext();
    bool IsArray() const { return m_reader.isArray(); }

    bool Unsigned(quint64 maximum, quint64* number);
    bool Id(quint32* id);
    bool Integer(qint64* number);
    bool Boolean(bool* content);
    bool Double(double* number);  ///< an integer will do
    /// A text of at most \a maximum UTF-16 code units.
    bool Text(int maximum, QString* text);
    bool ReadContent(vt::Content* content);
    /// The list of a selection's choices.
    bool Choices(std::vector<vt::Choice>* choices);
    /// What an item is, from its kind on.
    bool Item(vt::ItemDescription* item);

    /// Fails unless the whole input was read.
    bool Finish();

  private:
    bool ListContent(vt::Content* content);
    bool Next();

    QCborStreamReader m_reader;
    qint64 m_size;
    QString m_error;
};
