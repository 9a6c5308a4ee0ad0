// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/overview/lastevents.h>

#include <apps/pages/agetext.h>
#include <apps/pages/severitylook.h>

#include <platform/widgets/valuetext.h>

#include <QtGui/QStandardItemModel>
#include <QtGui/QTextDocument>
#include <QtWidgets/QStyle>

#include <algorithm>

namespace {

constexpr int MaxEventLength = 200;  // of what is shown of it
constexpr int LeastEventCharacters = 30;
constexpr int LeastSeen = 3;  // events

ESeverity SeverityOfEvent(EEventSeverity severity) {
    switch (severity) {
        case EEventSeverity::Alarm:
            return ESeverity::Act;
        case EEventSeverity::Warning:
            return ESeverity::Look;
        case EEventSeverity::Info:
        case EEventSeverity::Notice:
        case EEventSeverity::Count:
            break;
    }
    return ESeverity::Ok;
}

}  // namespace

LastEvents::LastEvents(QWidget* parent) : QListView(parent), m_model(new QStandardItemModel(this)) {
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
}

void LastEvents::Add(const std::vector<Event>& events) {
    const std::size_t count = std::min<std::size_t>(events.size(), Count);
    for (std::size_t i = events.size() - count; i < events.size(); ++i)
        AddOne(events[i]);
}

void LastEvents::Clear() {
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
    const ESeverity severity = SeverityOfEvent(event.severity);
    const QString moment = agetext::Moment(event.time.toString(Qt::ISODateWithMs));
    const QString line =
        moment + QStringLiteral("  ") + valuetext::Shortened(event.Translated(), MaxEventLength);
    auto* const item = new QStandardItem(severitylook::Icon(severity, *this), line);
    item->setToolTip(Qt::convertFromPlainText(line, Qt::WhiteSpaceNormal));
    // What is only told is neither right nor wrong.
    if (severity != ESeverity::Ok)
        item->setAccessibleText(severitylook::Word(severity) + QLatin1Char(' ') + line);
    m_model->insertRow(0, item);
    if (m_model->rowCount() > Count) m_model->removeRows(Count, m_model->rowCount() - Count);
}
