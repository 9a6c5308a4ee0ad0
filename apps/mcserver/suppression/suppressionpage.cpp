// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/suppressionpage.h>

#include <apps/mcserver/mpxorv/mpxorvrequests.h>
#include <apps/mcserver/suppression/inputsview.h>
#include <apps/mcserver/suppression/suppressionundo.h>
#include <apps/pages/suppressionview.h>

#include <devicecontrol/multichannelserver/common/gts/gtsdisplay.h>

#include <QtCore/QPointer>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTreeWidget>
#include <QtWidgets/QVBoxLayout>

namespace {

constexpr int ColumnWidth = 130;  // room for an address

/// The display has fixed widths, for small letters: where those of the desktop are larger, they are cut.
void MakeRoom(QWidget& display) {
    for (auto* const button : display.findChildren<QPushButton*>())
        button->setFixedWidth(qMax(button->minimumWidth(), button->sizeHint().width()));
    const auto* const tree = display.findChild<QTreeWidget*>();
    if (tree == nullptr) return;
    for (int column = 1; column < tree->columnCount(); ++column)
        tree->header()->resizeSection(column, qMax(tree->columnWidth(column), ColumnWidth));
}

}  // namespace

SuppressionPage::SuppressionPage(const SuppressionRecovery& recovery, JobControl& jobs, ServerLog& log,
                                 IClock& clock, QWidget* parent)
    : Page(parent) {
    m_display = new GTSDisplay(this, nullptr, Qt::WindowFlags());
    MakeRoom(*m_display);
    constexpr FrequencyRange range{MpxOrvRequests::MinFrequency, MpxOrvRequests::MaxFrequency};
    m_display->SetFrequencyRange(range);
    m_undo = std::make_unique<SuppressionUndo>(*m_display, range);
    connect(m_undo.get(), &SuppressionUndo::Acted, this, &Page::Acted);
    m_duties = std::make_unique<SuppressionDuties>(m_display->GetPlant(), recovery, jobs, log, clock);
    auto* const setUp = new QWidget(this);
    auto* const layout = new QVBoxLayout(setUp);
    layout->addWidget(m_display);
    m_inputs = new InputsView(m_display->GetPlant(), range, this);
    connect(m_inputs, &InputsView::Entered, m_undo.get(), &SuppressionUndo::TakeAsKnown);
    connect(m_inputs, &InputsView::Acted, this,
            [this](const QString& what, const std::function<void()>& undo) {
                Q_EMIT Acted(what, [undo, known = QPointer<SuppressionUndo>(m_undo.get())] {
                    undo();
                    if (known != nullptr) known->TakeAsKnown();
                });
            });
    connect(m_undo.get(), &SuppressionUndo::Acted, m_inputs, &InputsView::ForgetSaid);
    layout->addWidget(m_inputs, 1);
    m_state = new SuppressionView(this);
    auto* const tabs = new QTabWidget(this);
    tabs->setObjectName(QStringLiteral("SuppressionParts"));
    tabs->setDocumentMode(true);
    tabs->addTab(setUp, tr("Set up"));
    tabs->addTab(m_state, tr("What it does"));
    m_undo->TakeAsKnown();  // what was recovered, nobody has entered now
    auto* const whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(tabs);
}

SuppressionPage::~SuppressionPage() {
    m_undo.reset();
    delete m_state;
    m_duties.reset();
    delete m_inputs;
    delete m_display;
}

SuppressionPlant& SuppressionPage::GetPlant() const {
    return m_display->GetPlant();
}

void SuppressionPage::Bind(const QString& basePath, EMCSControlTreeSegments segments) {
    m_state->Bind(basePath, segments);
}
