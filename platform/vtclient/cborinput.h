// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/connectionexport.h>
#include <platform/vtclient/content.h>

#include <QtCore/QCborStreamReader>
#include <QtCore/QString>

namespace vt {

/// Reads a message element by element and remembers the first thing that was wrong with it. Once something is
/// wrong every further read fails too, so that callers look once, at the end.
class MCS_CONNECTION_EXPORT CborInput {
  public:
    /// \a data stays valid while this is used.
    CborInput(const char* data, qint64 size) : m_reader(data, size), m_size(size) {}

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
    bool ReadContent(Content* content);
    /// The list of a selection's choices.
    bool Choices(std::vector<Choice>* choices);
    /// What an item is, from its kind on.
    bool Item(ItemDescription* item);

    /// Fails unless the whole input was read.
    bool Finish();

  private:
    bool ListContent(Content* content);
    bool Next();

    QCborStreamReader m_reader;
    qint64 m_size;
    QString m_error;
};

}  // namespace vt
