// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/overview/lastevents.h>

#include <apps/common/event.h>
#include <apps/pages/agetext.h>
#include <apps/pages/severitylook.h>

#include <platform/values/value.h>
#include <platform/values/visit.h>
#include <platform/widgets/valuetext.h>

#include <QtGui/QStandardItemModel>
#include <QtGui/QTextDocument>
#include <QtWidgets/QStyle>

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

LastEvents::LastEvents(QWidget* parent)
    : QListView(parent),
      m_event(*this,
              [](const values::ValueBase& value) { return values::Is<values::Value<QString>>(value); }),
      m_model(new QStandardItemModel(this)) {
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

void LastEvents::Bind(const QString& basePath) {
    m_event.SetPath(basePath + QLatin1String("/Status/Event"));
}

QSize LastEvents::sizeHint() const {
    return minimumSizeHint();
}

QSize LastEvents::minimumSizeHint() const {
    const int line = qMax(fontMetrics().lineSpacing(), iconSize().height()) + 2;
    return QSize(LeastEventCharacters * fontMetrics().averageCharWidth(),
                 LeastSeen * line + 2 * frameWidth());
}

/// What the server said last, before this console came, is an event as well.
void LastEvents::OnBindingChanged(PathBinding& binding, TChangeCode code) {
    const auto* const event = static_cast<const values::Value<QString>*>(binding.GetValue());
    if (code != changecode::ContentChanged && code != PathBinding::Rebound) return;
    if (event == nullptr) return;
    Add(event->GetValue());
}

void LastEvents::Add(const QString& event) {
    const std::optional<Event> told = Event::FromJson(event);
    // The same once more, after the connection was lost, is no second one; a server that is new counts anew.
    if (!told || told->number == m_lastNumber) return;
    m_lastNumber = told->number;
    const ESeverity severity = SeverityOfEvent(told->severity);
    const QString moment = agetext::Moment(told->time.toString(Qt::ISODateWithMs));
    const QString line =
        moment + QStringLiteral("  ") + valuetext::Shortened(told->Translated(), MaxEventLength);
    auto* const item = new QStandardItem(severitylook::Icon(severity, *this), line);
    item->setToolTip(Qt::convertFromPlainText(line, Qt::WhiteSpaceNormal));
    item->setAccessibleText(severitylook::Word(severity) + QLatin1Char(' ') + line);
    m_model->insertRow(0, item);
    if (m_model->rowCount() > Count) m_model->removeRows(Count, m_model->rowCount() - Count);
}
