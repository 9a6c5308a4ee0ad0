// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/wire/changewriter.h>

#include <platform/vtclient/wire/itemkinds.h>
#include <platform/vtclient/wire/treechange.h>
#include <platform/vtclient/wire/vtlimits.h>

namespace vt {

namespace {

quint64 Code(EChange change) {
    return static_cast<quint64>(change);
}

void WriteChoices(CborOutput& output, const std::vector<Choice>& choices) {
    output.Array(static_cast<quint64>(choices.size()) * 3);
    for (const Choice& choice : choices) {
        output.Text(choice.text);
        output.Double(choice.number);
        output.Integer(choice.key);
    }
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

void WriteContent(CborOutput& output, const Content& content) {
    struct Append {
        CborOutput& output;
        void operator()(std::monostate /*nothing*/) const { output.Null(); }
        void operator()(bool content) const { output.Boolean(content); }
        void operator()(qint64 content) const { output.Integer(content); }
        void operator()(double content) const { output.Double(content); }
        void operator()(const QString& content) const { output.Text(content); }
        void operator()(const QVector<double>& content) const {
            output.Array(static_cast<quint64>(content.size()));
            for (const double item : content)
                output.Double(item);
        }
    };
    std::visit(Append{output}, content);
}

quint64 CountItemElements(EItemKind kind) {
    const KindOperations* const operations = Operations(kind);
    if (operations == nullptr) return 1;
    return 3U + (operations->hasLimits ? 2U : 0U) + (operations->hasChoices ? 1U : 0U);
}

void WriteItem(CborOutput& output, const ItemDescription& item) {
    output.Unsigned(static_cast<quint64>(item.kind));
    const KindOperations* const operations = Operations(item.kind);
    if (operations == nullptr) return;
    output.Unsigned(item.flags);
    WriteContent(output, item.content);
    if (operations->hasLimits) {
        WriteContent(output, item.minimum);
        WriteContent(output, item.maximum);
    }
    if (operations->hasChoices) WriteChoices(output, item.choices);
}

void WriteItem(CborOutput& output, const values::TreeItem& item, EItemKind kind, unsigned flags) {
    output.Unsigned(static_cast<quint64>(kind));
    const KindOperations* const operations = Operations(kind);
    if (operations == nullptr) return;
    const auto& value = static_cast<const values::ValueBase&>(item);
    output.Unsigned(flags);
    operations->writeContent(value, output);
    operations->writeLimits(value, output);
    operations->writeChoices(value, output);
}

void ChangeWriter::Own(quint32 id, int session, const values::ValueBase& value, EItemKind kind) {
    m_output.Array(4);
    m_output.Unsigned(Code(EChange::Own));
    m_output.Unsigned(id);
    m_output.Integer(session);
    Operations(kind)->writeContent(value, m_output);
}

void ChangeWriter::Added(quint32 id, quint32 parent, const values::TreeItem& item, EItemKind kind,
                         unsigned flags) {
    m_output.Array(4 + CountItemElements(kind));
    m_output.Unsigned(Code(EChange::Added));
    m_output.Unsigned(id);
    m_output.Unsigned(parent);
    m_output.Text(NameOf(item));
    WriteItem(m_output, item, kind, flags);
}

void ChangeWriter::Removed(quint32 id) {
    m_output.Array(2);
    m_output.Unsigned(Code(EChange::Removed));
    m_output.Unsigned(id);
}

void ChangeWriter::Described(quint32 id, const values::ValueBase& value, EItemKind kind, unsigned flags) {
    m_output.Array(HasLimits(kind) ? 6 : 4);
    m_output.Unsigned(Code(EChange::Described));
    m_output.Unsigned(id);
    m_output.Text(NameOf(value));
    m_output.Unsigned(flags);
    Operations(kind)->writeLimits(value, m_output);
}

void ChangeWriter::Items(quint32 id, const values::ValueBase& value, EItemKind kind) {
    m_output.Array(4);
    m_output.Unsigned(Code(EChange::Items));
    m_output.Unsigned(id);
    Operations(kind)->writeContent(value, m_output);
    Operations(kind)->writeChoices(value, m_output);
}

void ChangeWriter::Write(const TreeChange& change) {
    if (change.change == EChange::Changed) {
        m_output.Unsigned(change.id);
        WriteContent(m_output, change.item.content);
        return;
    }
    m_output.OpenArray();
    m_output.Unsigned(Code(change.change));
    m_output.Unsigned(change.id);
    switch (change.change) {
        case EChange::Added:
            m_output.Unsigned(change.parent);
            m_output.Text(change.name);
            WriteItem(m_output, change.item);
            break;
        case EChange::Described:
            m_output.Text(change.name);
            m_output.Unsigned(change.item.flags);
            if (change.item.minimum != Content() || change.item.maximum != Content()) {
                WriteContent(m_output, change.item.minimum);
                WriteContent(m_output, change.item.maximum);
            }
            break;
        case EChange::Items:
            WriteContent(m_output, change.item.content);
            WriteChoices(m_output, change.item.choices);
            break;
        case EChange::Own:
            m_output.Integer(change.session);
            WriteContent(m_output, change.item.content);
            break;
        case EChange::Removed:
        case EChange::Changed:
            break;
    }
    m_output.CloseArray();
}

}  // namespace vt
