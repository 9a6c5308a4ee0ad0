// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/policypanel.h>

#include <apps/common/codedtext.h>
#include <apps/common/policytext.h>
#include <apps/pages/holders.h>
#include <apps/pages/serverkeys.h>

#include <devicecontrol/multichannelserver/common/mcspolicy.h>

#include <platform/values/value.h>

#include <QtWidgets/QGridLayout>

#include <algorithm>

namespace {

constexpr int RowSpacing = 2;  // pixels: a page with all of them is high enough

}  // namespace

PolicyPanel::PolicyPanel(QWidget* parent, int columns)
    : QWidget(parent),
      m_layout(new QGridLayout(this)),
      m_mostColumns(columns),
      m_lock(*this, [](const values::ValueBase&) { return true; }) {
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setVerticalSpacing(RowSpacing);
    for (const QString& name : policytext::Names()) {
        const QString caption = policytext::Caption(name);
        auto* const box = new AskingCheckBox(this, name.toLatin1().constData());
        box->SetText(caption);
        box->setAccessibleName(caption);
        box->SetAsker([this, name, caption](bool isOn) {
            return isOn ? AskingCheckBox::Question() : QuestionBefore(name, caption);
        });
        m_switches.push_back({box, name});
    }
    LayOut(columns);
}

PolicyPanel::~PolicyPanel() = default;

int PolicyPanel::RowsIn(int columns) const {
    return (static_cast<int>(m_switches.size()) + columns - 1) / columns;
}

void PolicyPanel::LayOut(int columns) {
    m_columns = columns;
    const int rows = RowsIn(columns);
    for (int i = 0; i < static_cast<int>(m_switches.size()); ++i) {
        QWidget* const box = m_switches[static_cast<std::size_t>(i)].box;
        m_layout->removeWidget(box);
        m_layout->addWidget(box, i % rows, i / rows);
    }
}

int PolicyPanel::WidthOf(int columns) const {
    const std::size_t rows = static_cast<std::size_t>(RowsIn(columns));
    int width = (columns - 1) * m_layout->horizontalSpacing();
    for (std::size_t first = 0; first < m_switches.size(); first += rows) {
        int widest = 0;
        for (std::size_t i = first; i < std::min(first + rows, m_switches.size()); ++i)
            widest = std::max(widest, m_switches[i].box->minimumSizeHint().width());
        width += widest;
    }
    return width;
}

/// That of one column, or it could not become one.
QSize PolicyPanel::minimumSizeHint() const {
    return QSize(WidthOf(1), QWidget::minimumSizeHint().height());
}

void PolicyPanel::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    int columns = m_mostColumns;
    while (columns > 1 && WidthOf(columns) > width())
        --columns;
    if (columns != m_columns) LayOut(columns);
}

/// Before the right is taken away.
AskingCheckBox::Question PolicyPanel::QuestionBefore(const QString& policy, const QString& caption) const {
    const QString mpxOrv = m_path.section(QLatin1Char('/'), 0, -2);
    const holders::Holder holder = holders::At(mpxOrv);
    const bool endsMaster = policy == MCSPolicy::MAYBEJOBMASTER.GetName();
    const bool endsWatching = policy == MCSPolicy::MAYREADSINGLEFREQFROMMASTERRANGES.GetName();
    QStringList text;
    if (holder.isMaster && endsMaster)
        text = QStringList{tr("%1 is job master%2 and loses that.").arg(holder.name, holder.tunedTo),
                           holders::LossOfWatchers(holders::TreeOf(mpxOrv))};
    else if (holder.isMaster)
        text = QStringList{
            tr("%1 is job master%2 and loses this right: %3.").arg(holder.name, holder.tunedTo, caption)};
    else if (holder.isWatching && endsWatching)
        text = QStringList{tr("%1 reads from the range of the job master (%2) and loses its frequency.")
                               .arg(holder.name, holder.does)};
    text.removeAll(QString());
    return {tr("Take a right away"), text.join(QLatin1Char('\n')), tr("Take away")};
}

void PolicyPanel::Bind(const QString& path) {
    m_path = path;
    for (const Switch& item : m_switches)
        item.box->Set_ValuePath(path.isEmpty() ? QString() : path + QLatin1Char('/') + item.policy);
    ShowLock();
}

void PolicyPanel::SetOwn(const QString& path) {
    m_own = path;
    const QString status = path + QLatin1Char('/') + mcskeys::Status;
    m_lock.SetPath(path.isEmpty() ? QString() : mcskeys::Join(status, serverkeys::PoliciesLocked));
    ShowLock();
}

QString PolicyPanel::GetLock() const {
    const auto* const value = dynamic_cast<const values::Value<QString>*>(m_lock.GetValue());
    if (value == nullptr || value->GetValue().isEmpty() || m_path.isEmpty()) return QString();
    const std::optional<CodedText> reason = CodedText::FromJsonText(value->GetValue());
    const bool isOwn = m_path == m_own + QLatin1Char('/') + mcskeys::Policy;
    // Who is no operator switches nobody's.
    const bool isOfAll = reason && reason->GetCode() == ECode::OnlyOperatorsSwitch;
    if (!isOwn && !isOfAll) return QString();
    return reason ? reason->Translated() : tr("The server does not allow it.");
}

void PolicyPanel::OnBindingChanged(PathBinding& /*binding*/, TChangeCode /*code*/) {
    ShowLock();
}

void PolicyPanel::ShowLock() {
    const QString lock = GetLock();
    for (const Switch& item : m_switches)
        item.box->SetLock(lock);
    Q_EMIT LockChanged();
}
