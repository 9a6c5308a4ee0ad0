// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/changewriter.h>

#include <platform/vtclient/itemkinds.h>
#include <platform/vtclient/treechange.h>
#include <platform/vtclient/vtlimits.h>

namespace vt {

namespace {

quint64 Code(EChange change) {
    return static_cast<quint64>(change);
}

void WriteChoices(QCborStreamWriter& writer, const std::vector<Choice>& choices) {
    writer.startArray(static_cast<quint64>(choices.size()) * 3);
    for (const Choice& choice : choices) {
        writer.append(choice.text);
        writer.append(choice.number);
        writer.append(choice.key);
    }
    writer.endArray();
}

/// A value that is already followed may be given any name.
QString NameOf(const values::TreeItem& item) {
    return item.GetName().left(vtlimits::MaxNameLength);
}

bool HasLimits(EItemKind kind) {
    const KindOperations* const operations = Operations(kind);
    return operations != nullptr && operations->hasLimits;
}

}  // namespace

void WriteContent(QCborStreamWriter& writer, const Content& content) {
    struct Append {
        QCborStreamWriter& writer;
        void operator()(std::monostate /*nothing*/) const { writer.append(nullptr); }
        void operator()(bool content) const { writer.append(content); }
        void operator()(qint64 content) const { writer.append(content); }
        void operator()(double content) const { writer.append(content); }
        void operator()(const QString& content) const { writer.append(content); }
        void operator()(const QVector<double>& content) const {
            writer.startArray(static_cast<quint64>(content.size()));
            for (const double item : content)
                writer.append(item);
            writer.endArray();
        }
    };
    std::visit(Append{writer}, content);
}

quint64 CountItemElements(EItemKind kind) {
    const KindOperations* const operations = Operations(kind);
    if (operations == nullptr) return 1;
    return 3U + (operations->hasLimits ? 2U : 0U) + (operations->hasChoices ? 1U : 0U);
}

void WriteItem(QCborStreamWriter& writer, const ItemDescription& item) {
    writer.append(static_cast<quint64>(item.kind));
    const KindOperations* const operations = Operations(item.kind);
    if (operations == nullptr) return;
    writer.append(quint64{item.flags});
    WriteContent(writer, item.content);
    if (operations->hasLimits) {
        WriteContent(writer, item.minimum);
        WriteContent(writer, item.maximum);
    }
    if (operations->hasChoices) WriteChoices(writer, item.choices);
}

void WriteItem(QCborStreamWriter& writer, const values::TreeItem& item, EItemKind kind, unsigned flags) {
    writer.append(static_cast<quint64>(kind));
    const KindOperations* const operations = Operations(kind);
    if (operations == nullptr) return;
    const auto& value = static_cast<const values::ValueBase&>(item);
    writer.append(quint64{flags});
    operations->writeContent(value, writer);
    operations->writeLimits(value, writer);
    operations->writeChoices(value, writer);
}

ChangeWriter::ChangeWriter() : m_writer(&m_sink) {}

void ChangeWriter::Changed(quint32 id, const values::ValueBase& value, EItemKind kind) {
    m_writer.append(quint64{id});
    Operations(kind)->writeContent(value, m_writer);
}

void ChangeWriter::Own(quint32 id, int session, const values::ValueBase& value, EItemKind kind) {
    m_writer.startArray(4);
    m_writer.append(Code(EChange::Own));
    m_writer.append(quint64{id});
    m_writer.append(qint64{session});
    Operations(kind)->writeContent(value, m_writer);
    m_writer.endArray();
}

void ChangeWriter::Added(quint32 id, quint32 parent, const values::TreeItem& item, EItemKind kind,
                         unsigned flags) {
    m_writer.startArray(4 + CountItemElements(kind));
    m_writer.append(Code(EChange::Added));
    m_writer.append(quint64{id});
    m_writer.append(quint64{parent});
    m_writer.append(NameOf(item));
    WriteItem(m_writer, item, kind, flags);
    m_writer.endArray();
}

void ChangeWriter::Removed(quint32 id) {
    m_writer.startArray(2);
    m_writer.append(Code(EChange::Removed));
    m_writer.append(quint64{id});
    m_writer.endArray();
}

void ChangeWriter::Described(quint32 id, const values::ValueBase& value, EItemKind kind, unsigned flags) {
    m_writer.startArray(HasLimits(kind) ? 6 : 4);
    m_writer.append(Code(EChange::Described));
    m_writer.append(quint64{id});
    m_writer.append(NameOf(value));
    m_writer.append(quint64{flags});
    Operations(kind)->writeLimits(value, m_writer);
    m_writer.endArray();
}

void ChangeWriter::Items(quint32 id, const values::ValueBase& value, EItemKind kind) {
    m_writer.startArray(4);
    m_writer.append(Code(EChange::Items));
    m_writer.append(quint64{id});
    Operations(kind)->writeContent(value, m_writer);
    Operations(kind)->writeChoices(value, m_writer);
    m_writer.endArray();
}

void ChangeWriter::Write(const TreeChange& change) {
    if (change.change == EChange::Changed) {
        m_writer.append(quint64{change.id});
        WriteContent(m_writer, change.item.content);
        return;
    }
    m_writer.startArray();
    m_writer.append(Code(change.change));
    m_writer.append(quint64{change.id});
    switch (change.change) {
        case EChange::Added:
            m_writer.append(quint64{change.parent});
            m_writer.append(change.name);
            WriteItem(m_writer, change.item);
            break;
        case EChange::Described:
            m_writer.append(change.name);
            m_writer.append(quint64{change.item.flags});
            if (change.item.minimum != Content() || change.item.maximum != Content()) {
                WriteContent(m_writer, change.item.minimum);
                WriteContent(m_writer, change.item.maximum);
            }
            break;
        case EChange::Items:
            WriteContent(m_writer, change.item.content);
            WriteChoices(m_writer, change.item.choices);
            break;
        case EChange::Own:
            m_writer.append(qint64{change.session});
            WriteContent(m_writer, change.item.content);
            break;
        case EChange::Removed:
        case EChange::Changed:
            break;
    }
    m_writer.endArray();
}

}  // namespace vt
