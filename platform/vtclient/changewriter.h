// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/bytesink.h>
#include <platform/vtclient/connectionexport.h>
#include <platform/vtclient/content.h>

#include <QtCore/QCborStreamWriter>

namespace values {
class TreeItem;
class ValueBase;
}  // namespace values

namespace vt {

struct TreeChange;

/// Writes changes in their form on the wire, one after the other, straight from the items they are about.
class MCS_CONNECTION_EXPORT ChangeWriter {
  public:
    ChangeWriter();
    ChangeWriter(const ChangeWriter&) = delete;
    ChangeWriter& operator=(const ChangeWriter&) = delete;

    int Size() const { return m_sink.Size(); }
    /// Takes back what was written beyond \a size, which was the size between two changes.
    void Truncate(int size) { m_sink.Truncate(size); }
    QByteArray Take() { return m_sink.Take(); }
    /// Appends changes that were written before.
    void AppendRaw(const char* data, int size) { m_sink.Append(data, size); }

    void Changed(quint32 id, const values::ValueBase& value, EItemKind kind);
    void Own(quint32 id, int session, const values::ValueBase& value, EItemKind kind);
    void Added(quint32 id, quint32 parent, const values::TreeItem& item, EItemKind kind, unsigned flags);
    void Removed(quint32 id);
    void Described(quint32 id, const values::ValueBase& value, EItemKind kind, unsigned flags);
    void Items(quint32 id, const values::ValueBase& value, EItemKind kind);

    /// Writes \a change as it stands.
    void Write(const TreeChange& change);

  private:
    ByteSink m_sink;
    QCborStreamWriter m_writer;
};

/// Appends a content as it stands, which need not belong to a value.
void WriteContent(QCborStreamWriter& writer, const Content& content);
/// Appends what an item is, from its kind on: what \a item says, or what the item itself is.
void WriteItem(QCborStreamWriter& writer, const ItemDescription& item);
void WriteItem(QCborStreamWriter& writer, const values::TreeItem& item, EItemKind kind, unsigned flags);
/// How many elements of an array the two above append.
quint64 CountItemElements(EItemKind kind);

}  // namespace vt
