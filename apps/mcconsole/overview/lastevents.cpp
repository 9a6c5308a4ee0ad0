// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/overview/lastevents.h>

#include <apps/pages/agetext.h>

#include <platform/widgets/valuetext.h>

#include <QtGui/QStandardItemModel>
#include <QtGui/QTextDocument>
#include <QtWidgets/QStyle>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace {

constexpr int MaxEventLength = 200;  // of what is shown of it
constexpr int LeastEventCharacters = 30;
constexpr int LeastSeen = 2;  // events

}  // namespace

LastEvents::LastEvents(QWidget* parent)
    : QListView(parent), m_model(new QStandardItemModel(this)), m_shown(*this, [this] { ShowWaiting(); }) {
    setObjectName(QStringLiteral("LastEvents"));
    setAccessibleName(tr("Last events"));
    setModel(m_model);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setTextElideMode(Qt::ElideRight);
    setUniformItemSizes(true);
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    setIconSize(QSize(size, size));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);  // where room is short the newest are seen
    setBackgroundRole(QPalette::Base);                   // below the last row that is seen as well
    setAutoFillBackground(true);
}

void LastEvents::Add(const std::vector<Event>& events) {
    const std::size_t count = std::min<std::size_t>(events.size(), Count);
    m_waiting.insert(m_waiting.end(), events.end() - static_cast<std::ptrdiff_t>(count), events.end());
    while (m_waiting.size() > Count)
        m_waiting.pop_front();
    m_shown.Refresh();
}

void LastEvents::ShowWaiting() {
    for (const Event& event : std::exchange(m_waiting, {}))
        AddOne(event);
    LeaveOutHalfRows();
}

void LastEvents::Clear() {
    m_waiting.clear();
    m_model->clear();
}

QSize LastEvents::sizeHint() const {
    return minimumSizeHint();
}

QSize LastEvents::minimumSizeHint() const {
    const int line = qMax(fontMetrics().lineSpacing(), iconSize().height()) + 2;
    return QSize(LeastEventCharacters * fontMetrics().averageCharWidth(),
                 LeastSeen * line + 2 * frameWidth());
}

void LastEvents::AddOne(const Event& event) {
    const EEventLook look = eventlook::Of(event);
    const QString moment = agetext::Moment(event.time);
    const QString line =
        moment + QStringLiteral("  ") + valuetext::Shortened(event.Translated(), MaxEventLength);
    auto* const item = new QStandardItem(m_icons.Of(look), line);
    item->setToolTip(Qt::convertFromPlainText(line, Qt::WhiteSpaceNormal));
    if (look != EEventLook::Told) item->setAccessibleText(eventlook::Word(event) + QLatin1Char(' ') + line);
    m_model->insertRow(0, item);
    if (m_model->rowCount() > Count) m_model->removeRows(Count, m_model->rowCount() - Count);
}

void LastEvents::resizeEvent(QResizeEvent* event) {
    QListView::resizeEvent(event);
    LeaveOutHalfRows();
}

// A line of which the lower half is missing looks like a fault.
void LastEvents::LeaveOutHalfRows() {
    const int row = sizeHintForRow(0);
    const int room = height() - 2 * frameWidth();
    const int spare = row > 0 && room > row && room < m_model->rowCount() * row ? room % row : 0;
    if (viewportMargins().bottom() != spare) setViewportMargins(0, 0, 0, spare);
}
