// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/overview/lastevents.h>

#include <apps/mcconsole/session/agetext.h>
#include <apps/pages/severitylook.h>

#include <platform/values/value.h>
#include <platform/values/visit.h>
#include <platform/widgets/valuetext.h>

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtGui/QStandardItemModel>
#include <QtGui/QTextDocument>

namespace {

constexpr int MaxEventBytes = 65536;  // of what a server may send as one event
constexpr int MaxEventLength = 200;   // of what is shown of it
constexpr int LeastEventCharacters = 30;

ESeverity SeverityOfEvent(const QString& name) {
    if (name == QLatin1String("alarm")) return ESeverity::Act;
    if (name == QLatin1String("warning")) return ESeverity::Look;
    if (name == QLatin1String("info") || name == QLatin1String("notice")) return ESeverity::Ok;
    return ESeverity::Unknown;
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
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

void LastEvents::Bind(const QString& basePath) {
    m_event.SetPath(basePath + QLatin1String("/Status/Event"));
}

QSize LastEvents::sizeHint() const {
    return minimumSizeHint();
}

QSize LastEvents::minimumSizeHint() const {
    const int line = qMax(fontMetrics().lineSpacing(), iconSize().height()) + 2;
    return QSize(LeastEventCharacters * fontMetrics().averageCharWidth(), Count * line + 2 * frameWidth());
}

/// What the server said last, before this console came, is an event as well.
void LastEvents::OnBindingChanged(PathBinding& binding, TChangeCode code) {
    const auto* const event = static_cast<const values::Value<QString>*>(binding.GetValue());
    if (code != changecode::ContentChanged && code != PathBinding::Rebound) return;
    if (event == nullptr) return;
    Add(event->GetValue());
}

void LastEvents::Add(const QString& event) {
    if (event.isEmpty() || event.size() > MaxEventBytes) return;
    const QJsonObject fields = QJsonDocument::fromJson(event.toUtf8()).object();
    const QString text = fields.value(QLatin1String("text")).toString();
    const double number = fields.value(QLatin1String("n")).toDouble();
    // The same once more, after the connection was lost, is no second one; a server that is new counts anew.
    if (text.isEmpty() || number == m_lastNumber) return;
    m_lastNumber = number;
    const ESeverity severity = SeverityOfEvent(fields.value(QLatin1String("severity")).toString());
    const QString moment = agetext::Moment(fields.value(QLatin1String("time")).toString());
    const QString line = moment + QStringLiteral("  ") + valuetext::Shortened(text, MaxEventLength);
    auto* const item = new QStandardItem(severitylook::Icon(severity, *this), line);
    item->setToolTip(Qt::convertFromPlainText(line, Qt::WhiteSpaceNormal));
    item->setAccessibleText(severitylook::Word(severity) + QLatin1Char(' ') + line);
    m_model->insertRow(0, item);
    if (m_model->rowCount() > Count) m_model->removeRows(Count, m_model->rowCount() - Count);
}
