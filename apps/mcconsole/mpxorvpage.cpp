// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/mpxorvpage.h>

#include <apps/mcconsole/tune/tunebar.h>
#include <apps/pages/policypanel.h>

#include <devicecontrol/multichannelserver/common/mcslogdisplay.h>

#include <platform/widgets/vccomboboxclassic.h>
#include <platform/widgets/vclabel.h>
#include <platform/widgets/vcpushbutton.h>

#include <QtCore/QSignalBlocker>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTextEdit>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

namespace {

constexpr int LinesOfAnswers = 7;  // with title and buttons: fewer cut these

}  // namespace

MpxOrvPage::MpxOrvPage(Tuning& tuning, FrequencyBook& book, QWidget* parent)
    : QWidget(parent),
      m_state(new QLabel(this)),
      m_used(new QCheckBox(tr("Use an MpxORV of my own"), this)),
      m_tuneBar(new TuneBar(tuning, book, this)),
      m_status(BuildStatus()),
      m_requests(BuildRequests()),
      m_policyBox(BuildPolicies()),
      m_grid(new QGridLayout) {
    m_state->setObjectName(QStringLiteral("MpxORVState"));
    m_state->setTextFormat(Qt::PlainText);
    m_state->setWordWrap(true);
    m_state->setMinimumWidth(1);  // long words in it do not make the window wider
    m_used->setObjectName(QStringLiteral("UseMpxORV"));
    m_used->setChecked(true);
    // However it is switched: assistive technology toggles without a click, and waits until that returns,
    // which a question in between would hold up.
    connect(m_used, &QCheckBox::toggled, this, &MpxOrvPage::UseRequested, Qt::QueuedConnection);

    auto* const head = new QHBoxLayout;
    head->addWidget(m_state, 1);
    head->addWidget(m_used);
    m_grid->addWidget(m_requests, 0, 0);
    m_grid->addWidget(BuildAnswers(), 1, 0);
    m_grid->setRowStretch(1, 1);
    m_grid->setColumnStretch(0, 1);
    LayOut(false);
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(head);
    layout->addWidget(m_tuneBar);
    layout->addWidget(m_status);
    layout->addLayout(m_grid);
}

/// In a narrow window the policies stand below.
void MpxOrvPage::LayOut(bool isNarrow) {
    m_isNarrow = isNarrow;
    m_grid->removeWidget(m_policyBox);
    if (isNarrow)
        m_grid->addWidget(m_policyBox, 2, 0);
    else
        m_grid->addWidget(m_policyBox, 0, 1, 2, 1);
}

/// That of a narrow page, or it could not become one.
QSize MpxOrvPage::minimumSizeHint() const {
    int width = 0;
    for (const QWidget* const part :
         {static_cast<QWidget*>(m_tuneBar), m_status, m_requests, m_policyBox, static_cast<QWidget*>(m_used)})
        width = std::max(width, part->minimumSizeHint().width());
    const QMargins margins = layout()->contentsMargins();
    return QSize(width + margins.left() + margins.right(), QWidget::minimumSizeHint().height());
}

void MpxOrvPage::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const QMargins margins = layout()->contentsMargins();
    const int wide = m_requests->minimumSizeHint().width() + m_policyBox->minimumSizeHint().width() +
                     m_grid->horizontalSpacing() + margins.left() + margins.right();
    if (m_isNarrow != (width() < wide)) LayOut(!m_isNarrow);
}

QWidget* MpxOrvPage::BuildStatus() {
    auto* const line = new QWidget(this);
    auto* const layout = new QHBoxLayout(line);
    layout->setContentsMargins(0, 0, 0, 0);
    const auto add = [&](const QString& caption, const char* name, int stretch) {
        auto* const label = new VCLabel(line, name);
        label->setAccessibleName(caption);
        if (layout->count() != 0) layout->addSpacing(2 * fontMetrics().averageCharWidth());
        layout->addWidget(new QLabel(caption, line));
        layout->addWidget(label, stretch);
        return label;
    };
    m_mode = add(tr("Operation mode:"), "OperationMode", 0);
    m_type = add(tr("Does:"), "OperationType", 1);  // the longest
    m_isMaster = add(tr("Job master:"), "IsMaster", 0);
    return line;
}

QWidget* MpxOrvPage::BuildRequests() {
    auto* const group = new QGroupBox(tr("Requests"), this);
    auto* const form = new QFormLayout(group);
    m_reportInterval = new VCComboBoxClassic(group, "ReportInterval");
    m_reportInterval->setAccessibleName(tr("Report interval"));
    form->addRow(tr("Report &interval:"), m_reportInterval);
    auto* const buttons = new QGridLayout;
    const auto add = [&](VCPushButton** button, const char* name, const QString& text) {
        *button = new VCPushButton(group, name);
        (*button)->setText(text);
        (*button)->setAccessibleName(QString(text).remove(QLatin1Char('&')));
        const int index = buttons->count();
        buttons->addWidget(*button, index / 2, index % 2);
    };
    add(&m_becomeMaster, "BecomeMaster", tr("Take or give up &mastership"));
    add(&m_restartJob, "RestartJob", tr("&Restart job"));
    add(&m_builtInTest, "BuiltInTest", tr("&Built-in test"));
    add(&m_calibrate, "Calibrate", tr("Ca&librate"));
    form->addRow(buttons);
    return group;
}

QWidget* MpxOrvPage::BuildPolicies() {
    auto* const group = new QGroupBox(tr("Policies"), this);
    auto* const layout = new QVBoxLayout(group);
    layout->setAlignment(Qt::AlignTop);
    m_policies = new PolicyPanel(group, 1);
    layout->addWidget(m_policies);
    return group;
}

QWidget* MpxOrvPage::BuildAnswers() {
    auto* const group = new QGroupBox(tr("Answers"), this);
    auto* const layout = new QVBoxLayout(group);
    m_answers = new MCSLogDisplay(group, "Answers", Qt::WindowFlags());
    m_answers->SetLogMessage_ValuePath(m_shownAnswers.GetPath());
    FollowAnswers();
    // It takes what the rest of the page leaves: what it would like to have would not fit into the window.
    group->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Ignored);
    group->setMinimumHeight(LinesOfAnswers * fontMetrics().lineSpacing());
    layout->addWidget(m_answers);
    return group;
}

/// The display follows its end only while that is seen; the newest answer is what an operator has to see
/// here, also when it came behind another page.
void MpxOrvPage::FollowAnswers() {
    auto* const text = m_answers->findChild<QTextEdit*>();
    text->setLineWrapMode(QTextEdit::WidgetWidth);
    text->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    QScrollBar* const bar = text->verticalScrollBar();
    connect(bar, &QScrollBar::rangeChanged, bar, [bar](int /*least*/, int most) { bar->setValue(most); });
}

void MpxOrvPage::Bind(const QString& path) {
    const auto below = [&](const char* names) {
        return path.isEmpty() ? QString() : path + QLatin1Char('/') + QLatin1String(names);
    };
    m_mode->SetText_ValuePath(below("Status/OperationMode"), true);
    m_type->SetText_ValuePath(below("Status/OperationType"), true);
    m_isMaster->SetText_ValuePath(below("Status/IsMaster"), true);
    m_reportInterval->SetValueSelection_ValuePath(below("Request/DeviceSetting/ReportInterval"));
    m_becomeMaster->Set_ValuePath(below("Request/BecomeMaster"));
    m_restartJob->Set_ValuePath(below("Request/RestartJob"));
    m_builtInTest->Set_ValuePath(below("Request/BuiltInTest"));
    m_calibrate->Set_ValuePath(below("Request/Calibrate"));
    m_policies->SetOwn(path);
    m_policies->Bind(below("Policy"));
    m_shownAnswers.Bind(path);
}

void MpxOrvPage::ShowState(const QString& text) {
    if (m_state->text() != text) m_state->setText(text);
}

void MpxOrvPage::ShowUsed(bool isUsed) {
    const QSignalBlocker blocker(m_used);
    m_used->setChecked(isUsed);
}
