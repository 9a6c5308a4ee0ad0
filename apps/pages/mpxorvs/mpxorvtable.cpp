// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/mpxorvs/mpxorvtable.h>

#include <apps/pages/mpxorvs/mpxorvcells.h>
#include <apps/pages/mpxorvs/mpxorvlamps.h>

#include <platform/app/steadyclock.h>
#include <platform/values/tree.h>

#include <QtGui/QFont>

#include <algorithm>
#include <utility>

namespace {

/// More than this a view and a sorting proxy are told as one, which costs them the same as all rows.
constexpr std::size_t MostRanges = 32;

struct RowRange {
    int first;
    int last;
};

/// \a rows, which rise, as ranges without gaps, or as one with gaps if those were too many.
std::vector<RowRange> RangesOf(const std::vector<int>& rows) {
    std::vector<RowRange> ranges;
    for (const int row : rows) {
        if (!ranges.empty() && ranges.back().last + 1 == row)
            ranges.back().last = row;
        else
            ranges.push_back({row, row});
    }
    if (ranges.size() > MostRanges) ranges = {{rows.front(), rows.back()}};
    return ranges;
}

/// Whether \a ranges hold more rows than the \a count that they were made of.
bool HaveGaps(const std::vector<RowRange>& ranges, std::size_t count) {
    std::size_t held = 0;
    for (const RowRange& range : ranges)
        held += static_cast<std::size_t>(range.last - range.first + 1);
    return held != count;
}

values::Node* NodeAt(const QString& path) {
    return path.isEmpty() ? nullptr : values::Tree::Instance()->FindNode(path);
}

}  // namespace

MpxOrvTable::MpxOrvTable(QObject* parent) : QAbstractTableModel(parent) {
    for (const bool isStatic : {true, false})
        m_sources.push_back({Observation<values::Node>(*this), isStatic});
    m_turn.setSingleShot(true);
    m_turn.setTimerType(Qt::PreciseTimer);
    connect(&m_turn, &QTimer::timeout, this, &MpxOrvTable::Flush);
}

MpxOrvTable::~MpxOrvTable() = default;

void MpxOrvTable::SetPaths(const QString& staticPath, const QString& dynamicPath) {
    for (Source& source : m_sources) {
        values::Node* const node = NodeAt(source.isStatic ? staticPath : dynamicPath);
        if (node != source.node.Get()) DropSource(source);
        source.node.Begin(node);
        source.hasNew = node != nullptr;
    }
    Flush();
}

/// What it showed goes, although the nodes stay.
void MpxOrvTable::DropSource(Source& source) {
    const auto isOfSource = [&](const auto& row) { return row->GetContent().isStatic == source.isStatic; };
    for (const auto& row : m_rows) {
        if (!isOfSource(row)) continue;
        m_byNode.remove(row->GetKey());
        row->Forget();
        m_hasGone = true;
    }
}

void MpxOrvTable::SetOwn(const QString& path) {
    if (path == m_own) return;
    const QString before = std::exchange(m_own, path);
    for (const QString& changed : {before, path}) {
        const int row = FindRow(changed);
        if (row >= 0) Q_EMIT dataChanged(index(row, 0), index(row, mpxorvcells::CountColumns - 1));
    }
}

const MpxOrvContent& MpxOrvTable::GetContent(int row) const {
    return m_rows[static_cast<std::size_t>(row)]->GetContent();
}

int MpxOrvTable::FindRow(const QString& path) const {
    if (path.isEmpty()) return -1;
    const auto found = std::find_if(m_rows.begin(), m_rows.end(),
                                    [&](const auto& row) { return row->GetContent().path == path; });
    return found != m_rows.end() ? static_cast<int>(found - m_rows.begin()) : -1;
}

// What comes from the tree: only noted ---------------------------------------------------------------------

void MpxOrvTable::Update(Observable* source, TChangeCode code) {
    for (Source& known : m_sources) {
        if (known.node.EndIfGoingAway(source, code)) return;  // its rows are told by themselves
        if (!known.node.Is(source) || code != changecode::ChildrenAdded) continue;
        known.hasNew = true;
        FlushSoon();
    }
}

void MpxOrvTable::OnRowChanged(MpxOrvRow& row) {
    if (row.isTold) return;
    row.isTold = true;
    m_changed.push_back(&row);
    FlushSoon();
}

void MpxOrvTable::OnRowGone(MpxOrvRow& row) {
    m_byNode.remove(row.GetKey());
    m_hasGone = true;
    FlushSoon();
}

void MpxOrvTable::FlushSoon() {
    if (m_turn.isActive()) return;
    const auto sinceLast = steadyclock::Now<std::chrono::milliseconds>() - m_lastFlush;
    m_turn.start(sinceLast >= Pause ? std::chrono::milliseconds::zero() : Pause - sinceLast);
}

// What is told ---------------------------------------------------------------------------------------------

void MpxOrvTable::Flush() {
    m_turn.stop();
    Q_EMIT FlushBegins();
    m_lastFlush = steadyclock::Now<std::chrono::milliseconds>();
    RemoveGone();
    for (Source& source : m_sources)
        if (std::exchange(source.hasNew, false) && source.node) AddNew(source);
    TellChanged();
    CountStale();
    Q_EMIT FlushEnds();
}

void MpxOrvTable::RemoveGone() {
    if (!std::exchange(m_hasGone, false)) return;
    const auto isGone = [](const MpxOrvRow* row) { return row->IsGone(); };
    m_changed.erase(std::remove_if(m_changed.begin(), m_changed.end(), isGone), m_changed.end());
    std::vector<int> gone;
    for (const auto& row : m_rows)
        if (row->IsGone()) gone.push_back(row->index);
    const std::vector<RowRange> ranges = RangesOf(gone);
    if (HaveGaps(ranges, gone.size())) return RemoveAtOnce();
    for (auto range = ranges.rbegin(); range != ranges.rend(); ++range)
        RemoveRange(range->first, range->last);
    NumberRows();
}

void MpxOrvTable::RemoveRange(int first, int last) {
    beginRemoveRows(QModelIndex(), first, last);
    m_rows.erase(m_rows.begin() + first, m_rows.begin() + last + 1);
    endRemoveRows();
}

void MpxOrvTable::RemoveAtOnce() {
    beginResetModel();
    m_rows.erase(std::remove_if(m_rows.begin(), m_rows.end(), [](const auto& row) { return row->IsGone(); }),
                 m_rows.end());
    NumberRows();
    endResetModel();
}

void MpxOrvTable::NumberRows() {
    int number = 0;
    for (const auto& row : m_rows)
        row->index = number++;
}

void MpxOrvTable::AddNew(Source& source) {
    std::vector<values::Node*> added;
    for (values::TreeItem* item = source.node->GetFirstChild(); item != nullptr;
         item = item->GetNextSibling()) {
        if (!item->IsNode()) continue;
        auto* const node = static_cast<values::Node*>(item);
        if (!m_byNode.contains(node)) added.push_back(node);
    }
    if (added.empty()) return;
    const int first = rowCount();
    beginInsertRows(QModelIndex(), first, first + static_cast<int>(added.size()) - 1);
    MpxOrvRow::IListener& listener = *this;
    for (values::Node* const node : added) {
        m_rows.push_back(std::make_unique<MpxOrvRow>(*node, source.isStatic, listener));
        m_byNode.insert(node, m_rows.back().get());
    }
    NumberRows();
    m_changed.reserve(m_rows.size());
    endInsertRows();
}

void MpxOrvTable::TellChanged() {
    std::vector<int> touched;
    for (MpxOrvRow* const row : m_changed) {
        row->isTold = false;
        if (row->Read()) touched.push_back(row->index);
    }
    m_changed.clear();
    std::sort(touched.begin(), touched.end());
    for (const RowRange& range : RangesOf(touched))
        Q_EMIT dataChanged(index(range.first, 0), index(range.last, mpxorvcells::CountColumns - 1));
}

void MpxOrvTable::CountStale() {
    const bool wasStale = IsStale();
    m_countStale = static_cast<int>(std::count_if(m_rows.begin(), m_rows.end(),
                                                  [](const auto& row) { return row->GetContent().isStale; }));
    if (IsStale() != wasStale) Q_EMIT StaleChanged(IsStale());
}

// What views ask -------------------------------------------------------------------------------------------

int MpxOrvTable::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int MpxOrvTable::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : mpxorvcells::CountColumns;
}

QVariant MpxOrvTable::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) return QVariant();
    const MpxOrvContent& content = GetContent(index.row());
    switch (role) {
        case Qt::DisplayRole:
            return mpxorvcells::Text(content, index.column());
        case Qt::ToolTipRole:
            return mpxorvcells::Tip(content, index.column());
        case Qt::DecorationRole:
            if (index.column() != mpxorvcells::State || !content.isComplete) return QVariant();
            return mpxorvlamps::Get(content.state);
        case Qt::FontRole: {
            if (content.path != m_own) return QVariant();
            QFont font;
            font.setBold(true);
            return font;
        }
        case Qt::TextAlignmentRole:
            return int(Qt::AlignVCenter |
                       (index.column() == mpxorvcells::Frequency ? Qt::AlignRight : Qt::AlignLeft));
        case Qt::AccessibleTextRole:
            return mpxorvcells::Title(index.column()) + QLatin1String(": ") +
                   mpxorvcells::Text(content, index.column());
        case PathRole:
            return content.path;
        default:
            return QVariant();
    }
}

QVariant MpxOrvTable::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return QVariant();
    return mpxorvcells::Title(section);
}
