// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/wire/cboroutput.h>
#include <platform/vtclient/wire/content.h>
#include <platform/vtclient/wire/itemkinds.h>

namespace values {
class TreeItem;
class ValueBase;
}  // namespace values

namespace vt {

struct TreeChange;

/// Writes changes in their form on the wire, one after the other, straight from the items they are about.
class ChangeWriter {
  public:
    ChangeWriter() = default;
    ChangeWriter(const ChangeWriter&) = delete;
    ChangeWriter& operator=(const ChangeWriter&) = delete;

    int Size() const { return m_output.Size(); }
    const char* Data() const { return m_output.Data(); }
    /// Takes back what was written beyond \a size, which was the size between two changes.
    void Truncate(int size) { m_output.Truncate(size); }
    /// Drops the first \a size bytes, which are whole changes.
    void RemoveFront(int size) { m_output.RemoveFront(size); }
    QByteArray Take() { return m_output.Take(); }
    void TakeInto(QByteArray* bytes) { m_output.TakeInto(bytes); }
    /// Appends changes that were written before.
    void AppendRaw(const char* data, int size) { m_output.AppendRaw(data, size); }

    void Changed(quint32 id, const values::ValueBase& value, EItemKind kind) {
        Operations(kind)->writeChange(id, value, m_output);
    }
    void Own(quint32 id, int session, const values::ValueBase& value, EItemKind kind);
    void Added(quint32 id, quint32 parent, const values::TreeItem& item, EItemKind kind, unsigned flags);
    void Removed(quint32 id);
    void Described(quint32 id, const values::ValueBase& value, EItemKind kind, unsigned flags);
    void Items(quint32 id, const values::ValueBase& value, EItemKind kind);

    /// Writes \a change as it stands.
    void Write(const TreeChange& change);

  private:
    CborOutput m_output;
};

/// Appends a content as it stands, which need not belong to a value.
void WriteContent(CborOutput& output, const Content& content);
/// Appends what an item is, from its kind on: what \a item says, or what the item itself is.
void WriteItem(CborOutput& output, const ItemDescription& item);
void WriteItem(CborOutput& output, const values::TreeItem& item, EItemKind kind, unsigned flags);
/// How many elements of an array the two above append.
quint64 CountItemElements(EItemKind kind);

}  // namespace vt
